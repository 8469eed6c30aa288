#include "base/frame_rate.h"

#include <cmath>
#include <cstdlib>
#include <numeric>

#include "base/failure.h"
#include "base/parse_number.h"
#include "base/text_list.h"

namespace flumo {
namespace {

constexpr int kLargestPart = 1'000'000;

bool is_part(const std::optional<int>& part) {
    return part && *part >= 1 && *part <= kLargestPart;
}

// The fraction that a decimal number such as 23.976 or 12.5 stands for; nothing where there is none.
std::string as_fraction(std::string_view text) {
    constexpr int kThousand = 1000;
    const auto decimal = parse_number<double>(text);
    if (!decimal || !(*decimal >= 1) || *decimal > kThousand) return "";
    // Video of 30000/1001 frames per second is called 29.97.
    const auto whole = static_cast<int>(std::lround(*decimal * 1.001));
    if (std::abs(whole / 1.001 - *decimal) < 0.006 && std::lround(*decimal) == whole)
        return std::to_string(whole * kThousand) + "/1001";
    const auto num = static_cast<int>(std::lround(*decimal * kThousand));
    const int common = std::gcd(num, kThousand);
    return std::to_string(num / common) + "/" + std::to_string(kThousand / common);
}

}  // namespace

host::FrameRate parse_frame_rate(std::string_view text) {
    const std::size_t mark = text.find('/');
    const auto num = parse_number<int>(text.substr(0, mark));
    const auto den =
        mark == std::string_view::npos ? std::optional(1) : parse_number<int>(text.substr(mark + 1));
    if (!is_part(num) || !is_part(den)) {
        const std::string fraction = as_fraction(text);
        throw usage_failure("frame rate " + in_quotes(text) +
                            ": expected N or N/D, such as 25 or 30000/1001" +
                            (fraction.empty() ? "" : "; did you mean " + fraction + "?"));
    }
    return {*num, *den};
}

std::string frame_rate_text(const host::FrameRate& rate) {
    std::string text = std::to_string(rate.num);
    if (rate.den != 1) text.append("/").append(std::to_string(rate.den));
    return text;
}

}  // namespace flumo
