// Where frames go.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <variant>

#include "media/numbered_name.h"
#include "media/picture/picture_format.h"
#include "media/video_format.h"

namespace flumo::media {

/// Frames on standard output.
struct StandardOutput {};
/// Frames are rendered and dropped, which tells what a shot costs without its files.
struct Nowhere {};

/// What an output is, told by its ending.
using OutputKind = std::variant<PictureFormat, VideoFormat, StandardOutput, Nowhere>;

/// Where frames go: a name with or without a frame number (numbered_name.h), whose ending tells the format.
class OutputPattern {
  public:
    /// Throws Failure (usage) for an ending that is unknown, also in an empty text, and as NumberedName. "-"
    /// is standard output, "/dev/null" is nowhere.
    explicit OutputPattern(std::string_view text);

    /// As it was written.
    const std::string& text() const { return text_; }

    /// Whether different frames get different names.
    bool has_frame_number() const { return name_.has_number(); }

    const OutputKind& kind() const { return kind_; }
    bool is_pictures() const { return std::holds_alternative<PictureFormat>(kind_); }
    bool is_exr() const { return is_pictures() && std::get<PictureFormat>(kind_) == PictureFormat::kExr; }
    bool is_standard_output() const { return std::holds_alternative<StandardOutput>(kind_); }
    bool is_video() const { return std::holds_alternative<VideoFormat>(kind_); }
    /// All frames one after the other in one place.
    bool is_stream() const { return is_video() || is_standard_output(); }

    std::filesystem::path path_of(int frame) const { return name_.path_of(frame); }

  private:
    std::string text_;
    OutputKind kind_;
    NumberedName name_;
};

}  // namespace flumo::media
