// The formats of single pictures that the program writes, and reads by itself.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>

#include "media/picture/frame_notes.h"
#include "media/picture/picture_writer.h"

namespace flumo::media {

enum class PictureFormat { kPng, kExr };

/// Everything that the program knows about a format. The functions throw std::exception.
struct PictureFormatRow {
    PictureFormat format;
    const char* name;
    const char* ending;
    host::Depth usual_depth;  ///< what a frame is rendered at when the user asks for no depth
    bool takes_linear;        ///< whether FrameNotes::linear may be set

    /// Whether a file that begins with these bytes (8 are enough) is of this format.
    bool (*matches)(std::span<const uint8_t> start);
    /// With straight alpha.
    Picture (*read)(const std::filesystem::path& path);
    FrameNotes (*read_notes)(const std::filesystem::path& path);
    /// Whether the file is complete; false as well for a file of another format and an empty one.
    bool (*is_whole)(const std::filesystem::path& path);
    std::unique_ptr<PictureWriter> (*create)(const std::filesystem::path& path, const PictureShape& shape,
                                             const FrameNotes& notes);
};

/// The compiler names a format without a row.
const PictureFormatRow& row_of(PictureFormat format);

/// The rows of all formats.
std::span<const PictureFormatRow* const> picture_formats();

}  // namespace flumo::media
