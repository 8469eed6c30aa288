#include "media/output_pattern.h"

#include <vector>

#include "base/failure.h"
#include "base/text_list.h"

namespace flumo::media {
namespace {

[[noreturn]] void fail(std::string_view pattern, const std::string& why) {
    throw usage_failure("output \"" + std::string(pattern) + "\": " + why);
}

NumberedName name_of(std::string_view pattern) try {
    return NumberedName(pattern);
} catch (const Failure& failure) {
    fail(pattern, failure.what());
}

template <typename Rows>
void add_endings(std::vector<std::string>& endings, const Rows& rows) {
    for (const auto* row : rows)
        endings.push_back(row->ending);
}

OutputKind kind_of(std::string_view pattern) {
    if (pattern == "-") return StandardOutput();
    if (pattern == "/dev/null") return Nowhere();
    const std::string ending = std::filesystem::path(pattern).extension().string();
    for (const auto* row : picture_formats()) {
        if (equal_ignoring_case(ending, row->ending)) return row->format;
    }
    for (const auto* row : video_formats()) {
        if (equal_ignoring_case(ending, row->ending)) return row->format;
    }
    std::vector<std::string> endings;
    add_endings(endings, picture_formats());
    add_endings(endings, video_formats());
    fail(pattern, "expected a name that ends in one of " + join(endings) + ", or a single -");
}

}  // namespace

OutputPattern::OutputPattern(std::string_view text)
    : text_(text), kind_(kind_of(text)), name_(name_of(text)) {}

}  // namespace flumo::media
