#include "media/picture/picture.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <string>
#include <type_traits>

namespace flumo::media {
namespace {

template <typename Sample>
constexpr double full_scale() {
    if constexpr (std::is_floating_point_v<Sample>) return 1.0;
    return double(std::numeric_limits<Sample>::max());
}

template <typename Sample>
Sample nearest(double value) {
    if constexpr (std::is_integral_v<Sample>) return static_cast<Sample>(std::lround(value));
    return static_cast<Sample>(value);
}

template <typename To, typename From>
To convert_sample(From value) {
    if constexpr (std::is_same_v<To, From>) return value;
    const double unit = double(value) / full_scale<From>();
    if constexpr (std::is_floating_point_v<To>) return static_cast<To>(unit);
    // The comparison is false for NaN, which so becomes 0.
    const double clamped = unit > 0.0 ? std::min(unit, 1.0) : 0.0;
    return static_cast<To>(std::lround(clamped * full_scale<To>()));
}

template <typename To>
Picture convert(const Picture& picture) {
    std::vector<To> converted;
    std::visit(
        [&converted](const auto& samples) {
            using From = typename std::decay_t<decltype(samples)>::value_type;
            converted.resize(samples.size());
            std::ranges::transform(samples, converted.begin(), convert_sample<To, From>);
        },
        picture.samples);
    return {picture.width, picture.height, std::move(converted)};
}

template <typename Change>
void change_colours(Picture& picture, Change change) {
    auto& samples = std::get<std::vector<float>>(picture.samples);
    for (std::size_t i = 0; i + 3 < samples.size(); i += 4) {
        for (std::size_t channel = i; channel < i + 3; ++channel) {
            samples[channel] = change(samples[channel], samples[i + 3]);
        }
    }
}

}  // namespace

void require_plausible_size(std::size_t width, std::size_t height, std::size_t file_bytes) {
    constexpr std::size_t kMostPixels = std::size_t{1} << 28;
    constexpr std::size_t kMostPixelsInAByte = std::size_t{1} << 16;
    if (width > kMostPixels || height > kMostPixels || width * height > kMostPixels)
        throw std::runtime_error("the picture is too large");
    if (width * height / kMostPixelsInAByte > file_bytes)
        throw std::runtime_error("its header promises " + std::to_string(width) + "x" +
                                 std::to_string(height) + " pixels, which " + std::to_string(file_bytes) +
                                 " bytes cannot hold");
}

Picture to_8_bit(const Picture& picture) {
    return convert<uint8_t>(picture);
}
Picture to_16_bit(const Picture& picture) {
    return convert<uint16_t>(picture);
}
Picture to_float(const Picture& picture) {
    return convert<float>(picture);
}

void to_linear_light(Picture& picture) {
    change_colours(picture, [](float colour, float) {
        const double size = std::abs(double(colour));
        const double light = size <= 0.04045 ? size / 12.92 : std::pow((size + 0.055) / 1.055, 2.4);
        return static_cast<float>(std::copysign(light, double(colour)));
    });
}

void premultiply(Picture& picture) {
    change_colours(picture, [](float colour, float alpha) { return colour * alpha; });
}

void put_over_black(Picture& picture) {
    std::visit(
        [](auto& samples) {
            using Sample = typename std::decay_t<decltype(samples)>::value_type;
            constexpr double kFull = full_scale<Sample>();
            for (std::size_t i = 0; i + 3 < samples.size(); i += 4) {
                for (std::size_t channel = i; channel < i + 3; ++channel) {
                    samples[channel] = nearest<Sample>(samples[channel] * (samples[i + 3] / kFull));
                }
                samples[i + 3] = static_cast<Sample>(kFull);
            }
        },
        picture.samples);
}

void unpremultiply(Picture& picture) {
    change_colours(picture, [](float colour, float alpha) { return alpha == 0.0F ? 0.0F : colour / alpha; });
}

}  // namespace flumo::media
