// Where a frame's picture goes.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace flumo::cli {

enum class PictureFormat { kPng, kExr };

/// A file name with a place for the frame number, as renderers write it: a run of `#` is the number
/// padded to that many digits (the last run counts), `%d` and `%04d` are printf's, `%%` is a percent
/// sign beside them. The minus sign of a negative frame stands before the padded digits.
class OutputPattern {
  public:
    /// Throws Failure (usage) for an empty text, an ending that is not .png or .exr, or a percent
    /// sign that is followed by something else.
    explicit OutputPattern(std::string_view text);

    /// As it was written.
    const std::string& text() const { return text_; }

    /// Whether different frames get different names.
    bool has_frame_number() const { return has_number_; }

    PictureFormat format() const { return format_; }

    std::filesystem::path path_of(int frame) const;

  private:
    void split_at_hashes(std::string_view text);
    void split_at_percent(std::string_view text);

    std::string text_;
    std::string before_;
    std::string after_;
    size_t digits_ = 0;
    bool has_number_ = false;
    PictureFormat format_ = PictureFormat::kPng;
};

}  // namespace flumo::cli
