// PNG through libpng.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>

#include "media/picture.h"

namespace flumo::media {

/// Whether the bytes begin as a PNG does.
bool is_png(std::span<const uint8_t> bytes);

/// Decodes a whole PNG of any kind into 8-bit samples, or 16-bit ones where the file has them. Values
/// are taken as they stand, whatever gamma or profile the file names. Throws std::runtime_error.
Picture decode_png(std::span<const uint8_t> bytes);

/// Writes 8- or 16-bit samples with straight alpha, tagged as sRGB. Throws std::runtime_error.
void write_png(const std::filesystem::path& path, const Picture& picture);

}  // namespace flumo::media
