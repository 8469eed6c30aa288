// File names with a place for a frame number.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace flumo::media {

/// A file name with a place for the frame number, as renderers write it: `####` is the number padded to that
/// many digits, and `%d` and `%04d` are printf's. The last run of two or more `#` is the place; a single one
/// is only where neither a letter nor a digit stands beside it (`shot.#.png`, but not `take#3.png`), and only
/// in the file's own name. `%%` is a percent sign, `%#` is a `#` that is no place, and in a name with `%04d`
/// so is every `#`, and `##` is one of them. The minus sign of a negative frame stands before the padded
/// digits.
class NumberedName {
  public:
    /// Throws Failure (usage) with what was expected for two places, more than 18 digits, and in a name
    /// without `#` for a percent sign that is followed by something else.
    explicit NumberedName(std::string_view text);

    /// Whether different frames get different names.
    bool has_number() const { return has_number_; }

    std::filesystem::path path_of(int frame) const;

    /// The name around the number.
    const std::string& before() const { return before_; }
    const std::string& after() const { return after_; }

  private:
    std::string before_;
    std::string after_;
    std::size_t digits_ = 0;
    bool has_number_ = false;
};

}  // namespace flumo::media
