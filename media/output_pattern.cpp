#include "media/output_pattern.h"

#include <cstdlib>

#include "base/failure.h"
#include "base/parse_number.h"
#include "base/text_list.h"

namespace flumo::media {
namespace {

constexpr size_t kMostDigits = 18;

[[noreturn]] void fail(std::string_view pattern, const std::string& why) {
    throw usage_failure("output \"" + std::string(pattern) + "\": " + why);
}

constexpr struct {
    const char* ending;
    OutputKind kind;
} kEndings[] = {{".png", PictureFormat::kPng}, {".exr", PictureFormat::kExr}, {".mp4", VideoFormat::kMp4},
                {".mov", VideoFormat::kMov},   {".mkv", VideoFormat::kMkv},   {".webm", VideoFormat::kWebm},
                {".gif", VideoFormat::kGif}};

OutputKind kind_of(std::string_view pattern) {
    if (pattern == "-") return StandardOutput();
    if (pattern == "/dev/null") return Nowhere();
    const std::string ending = std::filesystem::path(pattern).extension().string();
    for (const auto& row : kEndings) {
        if (equal_ignoring_case(ending, row.ending)) return row.kind;
    }
    fail(pattern,
         "expected a name that ends in .png or .exr, .mp4, .mov, .mkv, .webm or .gif, or a single -");
}

}  // namespace

OutputPattern::OutputPattern(std::string_view text) : text_(text), kind_(kind_of(text)) {
    if (text.find('#') != std::string_view::npos) {
        split_at_hashes(text);
    } else {
        split_at_percent(text);
    }
    if (digits_ > kMostDigits) fail(text, "at most 18 digits");
}

void OutputPattern::split_at_hashes(std::string_view text) {
    const size_t last = text.rfind('#');
    const size_t before = text.find_last_not_of('#', last);
    const size_t first = before == std::string_view::npos ? 0 : before + 1;
    before_ = text.substr(0, first);
    after_ = text.substr(last + 1);
    digits_ = last - first + 1;
    has_number_ = true;
}

void OutputPattern::split_at_percent(std::string_view text) {
    for (size_t i = 0; i < text.size(); ++i) {
        std::string& part = has_number_ ? after_ : before_;
        if (text[i] != '%') {
            part += text[i];
            continue;
        }
        if (text.substr(i, 2) == "%%") {
            part += text[++i];
            continue;
        }
        const size_t end = text.find_first_not_of("0123456789", i + 1);
        const bool is_number = end != std::string_view::npos && text[end] == 'd';
        if (!is_number || has_number_) fail(text, "expected one frame number such as %04d or ####");
        const std::string_view digits = text.substr(i + 1, end - i - 1);
        digits_ = digits.empty() ? 0 : parse_number<size_t>(digits).value_or(kMostDigits + 1);
        has_number_ = true;
        i = end;
    }
}

std::filesystem::path OutputPattern::path_of(int frame) const {
    if (!has_number_) return before_;
    std::string digits = std::to_string(std::labs(frame));
    if (digits.size() < digits_) digits.insert(0, digits_ - digits.size(), '0');
    return before_ + (frame < 0 ? "-" : "") + digits + after_;
}

}  // namespace flumo::media
