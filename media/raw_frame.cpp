#include "media/raw_frame.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstring>

#include "base/failure.h"
#include "base/text_list.h"

namespace flumo::media {
namespace {

static_assert(std::endian::native == std::endian::little);

constexpr std::string_view kFrameMark = "FRAME\n";

std::vector<std::byte> bytes_of(const Picture& picture) {
    return std::visit(
        [](const auto& samples) {
            const auto bytes = std::as_bytes(std::span(samples));
            return std::vector<std::byte>(bytes.begin(), bytes.end());
        },
        picture.samples);
}

std::byte rounded(float value) {
    return static_cast<std::byte>(std::lround(value));
}

// ITU-R BT.709, 8 bits, limited range: luma 16 to 235, chroma 16 to 240. Colours are 0 to 255.
std::array<std::byte, 3> bt709(float r, float g, float b) {
    const float luma = 0.2126F * r + 0.7152F * g + 0.0722F * b;
    return {rounded(16 + luma * 219 / 255), rounded(128 + (b - luma) / 1.8556F * 224 / 255),
            rounded(128 + (r - luma) / 1.5748F * 224 / 255)};
}

std::vector<std::byte> y4m_frame(Picture picture) {
    put_over_black(picture);
    const auto& samples = std::get<std::vector<uint8_t>>(picture.samples);
    const std::size_t plane = picture.width * picture.height;
    std::vector<std::byte> bytes(kFrameMark.size() + plane * 3);
    std::memcpy(bytes.data(), kFrameMark.data(), kFrameMark.size());
    std::byte* const out = bytes.data() + kFrameMark.size();
    for (std::size_t i = 0; i < plane; ++i) {
        const auto yuv = bt709(samples[i * 4], samples[i * 4 + 1], samples[i * 4 + 2]);
        for (std::size_t channel = 0; channel < yuv.size(); ++channel)
            out[channel * plane + i] = yuv[channel];
    }
    return bytes;
}

}  // namespace

RawFormat parse_raw_format(std::string_view text) {
    if (text == "rgba") return RawFormat::kRgba;
    if (text == "rgba64le") return RawFormat::kRgba64;
    if (text == "rgbaf32") return RawFormat::kRgbaFloat;
    if (text == "y4m") return RawFormat::kY4m;
    throw usage_failure("raw " + in_quotes(text) + ": expected rgba, rgba64le, rgbaf32 or y4m");
}

std::string raw_header(RawFormat format, const FrameSize& size, const host::FrameRate& rate) {
    if (format != RawFormat::kY4m) return "";
    return "YUV4MPEG2 W" + std::to_string(size.width) + " H" + std::to_string(size.height) + " F" +
           std::to_string(rate.num) + ":" + std::to_string(rate.den) + " Ip A1:1 C444 XCOLORRANGE=LIMITED\n";
}

std::vector<std::byte> raw_frame(RawFormat format, const Picture& picture) {
    switch (format) {
        case RawFormat::kRgba:
            return bytes_of(to_8_bit(picture));
        case RawFormat::kRgba64:
            return bytes_of(to_16_bit(picture));
        case RawFormat::kRgbaFloat:
            return bytes_of(to_float(picture));
        case RawFormat::kY4m:
            break;
    }
    return y4m_frame(to_8_bit(picture));
}

}  // namespace flumo::media
