#include "base/resolution.h"

#include <cstdint>
#include <optional>

#include "base/failure.h"
#include "base/parse_number.h"
#include "base/text_list.h"

namespace flumo {
namespace {

constexpr int kLargestPart = 1000;

struct Named {
    std::string_view name;
    Resolution resolution;
};

constexpr Named kNames[] = {{"full", {1, 1}}, {"half", {1, 2}}, {"third", {1, 3}}, {"quarter", {1, 4}}};

}  // namespace

Resolution parse_resolution(std::string_view text) {
    for (const Named& row : kNames) {
        if (text == row.name) return row.resolution;
    }
    const std::size_t mark = text.find('/');
    const auto num = parse_number<int>(text.substr(0, mark));
    const auto den =
        mark == std::string_view::npos ? std::optional(1) : parse_number<int>(text.substr(mark + 1));
    if (!num || !den || *num < 1 || *den < *num || *den > kLargestPart) {
        throw usage_failure("resolution " + in_quotes(text) +
                            ": expected full, half, third, quarter or N/D up to 1, such as 2/3");
    }
    return {*num, *den};
}

std::string resolution_text(const Resolution& resolution) {
    for (const Named& row : kNames) {
        if (resolution == row.resolution) return std::string(row.name);
    }
    return std::to_string(resolution.num) + "/" + std::to_string(resolution.den);
}

FrameSize reduced(const FrameSize& size, const Resolution& resolution) {
    const auto side = [&](int pixels) {
        return static_cast<int>((int64_t{pixels} * resolution.num + resolution.den - 1) / resolution.den);
    };
    return {side(size.width), side(size.height)};
}

}  // namespace flumo
