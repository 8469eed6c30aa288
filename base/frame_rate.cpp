#include "base/frame_rate.h"

#include "base/failure.h"
#include "base/parse_number.h"
#include "base/text_list.h"

namespace flumo {
namespace {

constexpr int kLargestPart = 1'000'000;

bool is_part(const std::optional<int>& part) {
    return part && *part >= 1 && *part <= kLargestPart;
}

}  // namespace

host::FrameRate parse_frame_rate(std::string_view text) {
    const size_t mark = text.find('/');
    const auto num = parse_number<int>(text.substr(0, mark));
    const auto den =
        mark == std::string_view::npos ? std::optional(1) : parse_number<int>(text.substr(mark + 1));
    if (!is_part(num) || !is_part(den)) {
        throw usage_failure("frame rate " + in_quotes(text) +
                            ": expected N or N/D, such as 25 or 30000/1001");
    }
    return {*num, *den};
}

std::string frame_rate_text(const host::FrameRate& rate) {
    std::string text = std::to_string(rate.num);
    if (rate.den != 1) text.append("/").append(std::to_string(rate.den));
    return text;
}

}  // namespace flumo
