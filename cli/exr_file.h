// OpenEXR through its own library.
#pragma once

#include <cstdint>
#include <filesystem>
#include <span>

#include "cli/picture.h"

namespace flumo::cli {

/// Whether the bytes begin as an OpenEXR file does.
bool is_exr(std::span<const uint8_t> bytes);

/// Reads the display window as floats, with alpha as the file has it (by custom premultiplied): channels
/// R, G, B or Y alone, and A, which is 1 where there is none. Throws std::exception.
Picture read_exr(const std::filesystem::path& path);

/// Writes float samples as they stand into channels R, G, B, A of 32-bit floats. Throws std::exception.
void write_exr(const std::filesystem::path& path, const Picture& picture);

}  // namespace flumo::cli
