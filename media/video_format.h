// The kinds of video that the program ffmpeg writes for this one.
#pragma once

#include <filesystem>
#include <span>
#include <string>
#include <vector>

#include "host/values/world.h"

namespace flumo::media {

enum class VideoFormat { kMp4, kMov, kMkv, kWebm, kGif };

struct VideoFormatRow {
    VideoFormat format;
    const char* ending;
    host::Depth usual_depth;  ///< what a frame is rendered at when the user asks for no depth
    bool has_alpha;           ///< otherwise frames are put over black
    bool has_notes;           ///< whether texts such as the scene can be stored
    /// Filters, encoder and muxer as words of an ffmpeg command. Frames are tagged with their colour space
    /// before they are encoded, because ffmpeg trusts the frame headers of ProRes more than the container.
    std::vector<std::string> (*encoder)();
    /// Whether the file is complete; false as well for a file of another format and an empty one.
    bool (*is_whole)(const std::filesystem::path& path);
};

/// The compiler names a format without a row.
const VideoFormatRow& row_of(VideoFormat format);

/// The rows of all formats.
std::span<const VideoFormatRow* const> video_formats();

/// The scene in the texts of a video that this program wrote, empty where there is none. Runs ffprobe. Throws
/// std::runtime_error for a file that ffprobe cannot read.
std::string read_video_scene(const std::filesystem::path& path);

}  // namespace flumo::media
