#include "studio/preview/display.h"

#include <algorithm>
#include <cmath>

namespace flumo::studio {
namespace {

// One pixel at 8 bits, alpha straight.
struct Pixel {
    int red, green, blue, alpha;
};

Pixel to_8_bit(const PF_Pixel8& pixel) {
    return {pixel.red, pixel.green, pixel.blue, pixel.alpha};
}

// Full scale is 32768.
int to_8_bit(unsigned value) {
    return static_cast<int>((std::min(value, 32768U) * 255U + 16384U) >> 15U);
}

Pixel to_8_bit(const PF_Pixel16& pixel) {
    return {to_8_bit(unsigned{pixel.red}), to_8_bit(unsigned{pixel.green}), to_8_bit(unsigned{pixel.blue}),
            to_8_bit(unsigned{pixel.alpha})};
}

// NaN becomes 0.
int to_8_bit(float value) {
    constexpr float kHalfStep = 0.5F;
    return value > 0 ? static_cast<int>(std::min(value, 1.0F) * 255.0F + kHalfStep) : 0;
}

Pixel to_8_bit(const PF_PixelFloat& pixel) {
    return {to_8_bit(pixel.red), to_8_bit(pixel.green), to_8_bit(pixel.blue), to_8_bit(pixel.alpha)};
}

QRgb shown(const Pixel& pixel, Channels channels) {
    const auto grey = [](int value) { return qRgb(value, value, value); };
    switch (channels) {
        case Channels::kRgb:
            return qPremultiply(qRgba(pixel.red, pixel.green, pixel.blue, pixel.alpha));
        case Channels::kRed:
            return grey(pixel.red);
        case Channels::kGreen:
            return grey(pixel.green);
        case Channels::kBlue:
            return grey(pixel.blue);
        case Channels::kAlpha:
            return grey(pixel.alpha);
        case Channels::kLuminance:
            return grey((pixel.red * 2126 + pixel.green * 7152 + pixel.blue * 722 + 5000) / 10000);
    }
    return 0;
}

template <class HostPixel>
QImage convert(const host::World& world, Channels channels) {
    QImage image(world.width(), world.height(), QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < world.height(); ++y) {
        auto* to = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (const HostPixel& pixel : world.pixels<HostPixel>(y))
            *to++ = shown(to_8_bit(pixel), channels);
    }
    return image;
}

QString channel_text(float value, host::Depth depth) {
    switch (depth) {
        case host::Depth::k8:
            return QString::number(std::lround(value * 255));
        case host::Depth::k16:
            return QString::number(std::lround(value * 32768));
        case host::Depth::k32:
            return QString::number(double(value), 'f', 4);
    }
    return {};
}

}  // namespace

QImage display_image(const host::World& world, Channels channels) {
    switch (world.depth()) {
        case host::Depth::k8:
            return convert<PF_Pixel8>(world, channels);
        case host::Depth::k16:
            return convert<PF_Pixel16>(world, channels);
        case host::Depth::k32:
            return convert<PF_PixelFloat>(world, channels);
    }
    return {};
}

QString pixel_text(const host::World& world, int x, int y) {
    const host::Rgba rgba = world.rgba(x, y);
    const auto text = [&](std::size_t i) { return channel_text(rgba.at(i), world.depth()); };
    return QStringLiteral("R %1  G %2  B %3  A %4").arg(text(0), text(1), text(2), text(3));
}

}  // namespace flumo::studio
