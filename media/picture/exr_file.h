// OpenEXR through its own library.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>

#include "media/picture/frame_notes.h"
#include "media/picture/picture_writer.h"

namespace flumo::media {

/// Whether the bytes begin as an OpenEXR file does.
bool is_exr(std::span<const uint8_t> bytes);

/// Reads the display window as floats, with alpha as the file has it (by custom premultiplied): channels
/// R, G, B or Y alone, and A, which is 1 where there is none. Throws std::exception.
Picture read_exr(const std::filesystem::path& path);

/// The same with straight alpha.
Picture read_straight_exr(const std::filesystem::path& path);

/// A file of channels R, G, B, A with premultiplied alpha: floats as they are, or rounded to the nearest
/// half; linear light where the notes ask for it. The header says which, names the program, and holds the
/// scene in attributes of at most 200 bytes, since ffmpeg 5.1 does not find its way past longer ones.
std::unique_ptr<PictureWriter> create_exr(const std::filesystem::path& path, const PictureShape& shape,
                                          const FrameNotes& notes);

/// What the header says; no scene in a file of another program. Throws std::exception.
FrameNotes read_exr_notes(const std::filesystem::path& path);

/// Whether it is an OpenEXR file with all its rows.
bool is_whole_exr(const std::filesystem::path& path);

}  // namespace flumo::media
