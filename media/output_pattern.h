// Where frames go.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <variant>

namespace flumo::media {

enum class PictureFormat { kPng, kExr };
enum class VideoFormat { kMp4, kMov, kMkv, kWebm, kGif };
/// Frames on standard output.
struct StandardOutput {};
/// Frames are rendered and dropped, which tells what a shot costs without its files.
struct Nowhere {};

/// What an output is, told by its ending.
using OutputKind = std::variant<PictureFormat, VideoFormat, StandardOutput, Nowhere>;

/// A file name with a place for the frame number, as renderers write it: a run of `#` is the number
/// padded to that many digits (the last run counts), `%d` and `%04d` are printf's, `%%` is a percent
/// sign beside them. The minus sign of a negative frame stands before the padded digits.
class OutputPattern {
  public:
    /// Throws Failure (usage) for an empty text, an ending that is unknown, or a percent sign that is
    /// followed by something else. "-" is standard output, "/dev/null" is nowhere.
    explicit OutputPattern(std::string_view text);

    /// As it was written.
    const std::string& text() const { return text_; }

    /// Whether different frames get different names.
    bool has_frame_number() const { return has_number_; }

    const OutputKind& kind() const { return kind_; }
    bool is_pictures() const { return std::holds_alternative<PictureFormat>(kind_); }
    bool is_exr() const { return is_pictures() && std::get<PictureFormat>(kind_) == PictureFormat::kExr; }
    bool is_standard_output() const { return std::holds_alternative<StandardOutput>(kind_); }
    bool is_video() const { return std::holds_alternative<VideoFormat>(kind_); }
    /// One frame behind the other in one place.
    bool is_stream() const { return is_video() || is_standard_output(); }

    std::filesystem::path path_of(int frame) const;

  private:
    void split_at_hashes(std::string_view text);
    void split_at_percent(std::string_view text);

    std::string text_;
    std::string before_;
    std::string after_;
    size_t digits_ = 0;
    bool has_number_ = false;
    OutputKind kind_;
};

}  // namespace flumo::media
