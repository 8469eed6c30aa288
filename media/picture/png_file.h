// PNG through libpng.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>

#include "media/picture/frame_notes.h"
#include "media/picture/picture_writer.h"

namespace flumo::media {

/// Whether the bytes begin as a PNG does.
bool is_png(std::span<const uint8_t> bytes);

/// Decodes a whole PNG of any kind into 8-bit samples, or 16-bit ones where the file has them. Values
/// are taken as they stand, whatever gamma or profile the file names. Throws std::runtime_error.
Picture decode_png(std::span<const uint8_t> bytes);

/// A file of 8-bit samples, or 16-bit ones for deeper pictures, with straight alpha and tagged as sRGB.
/// Floats are clamped. `software` and the scene, if there is one, stand in it as texts.
std::unique_ptr<PictureWriter> create_png(const std::filesystem::path& path, const PictureShape& shape,
                                          const FrameNotes& notes);

/// The scene in its texts, if there is one. Throws std::runtime_error.
FrameNotes read_png_notes(const std::filesystem::path& path);

/// Whether the file begins and ends as a PNG does.
bool is_whole_png(const std::filesystem::path& path);

}  // namespace flumo::media
