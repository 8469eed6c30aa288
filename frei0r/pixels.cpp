#include "frei0r/pixels.h"

#include <algorithm>
#include <cstddef>

namespace flumo::frei0r {
namespace {

constexpr std::size_t kPixelBytes = 4;
constexpr uint32_t kFull = 255;

struct Rgba8 {
    uint8_t r, g, b, a;
};
static_assert(sizeof(Rgba8) == kPixelBytes);

Rgba8 rgba_of(const PF_Pixel8& pixel) {
    return {pixel.red, pixel.green, pixel.blue, pixel.alpha};
}

std::size_t width_of(const host::World& world) {
    return static_cast<std::size_t>(world.width());
}

/// One channel of straight colours; the weights are the alphas times 255, and their sum is `whole`.
uint8_t mixed(uint8_t over, uint32_t over_weight, uint8_t below, uint32_t below_weight, uint32_t whole) {
    return static_cast<uint8_t>((over * over_weight + below * below_weight + whole / 2) / whole);
}

Rgba8 over(const Rgba8& top, const Rgba8& below) {
    if (top.a == kFull) return top;
    if (top.a == 0) return below;
    const uint32_t top_weight = top.a * kFull;
    const uint32_t below_weight = below.a * (kFull - top.a);
    const uint32_t whole = top_weight + below_weight;
    return {mixed(top.r, top_weight, below.r, below_weight, whole),
            mixed(top.g, top_weight, below.g, below_weight, whole),
            mixed(top.b, top_weight, below.b, below_weight, whole),
            static_cast<uint8_t>((whole + kFull / 2) / kFull)};
}

}  // namespace

host::Layer layer_of(const uint32_t* frame, int width, int height) {
    auto world = std::make_shared<host::World>(width, height, host::Depth::k8);
    const auto* next = reinterpret_cast<const Rgba8*>(frame);
    for (int y = 0; y < height; ++y) {
        for (PF_Pixel8& pixel : world->pixels<PF_Pixel8>(y)) {
            pixel = {.alpha = next->a, .red = next->r, .green = next->g, .blue = next->b};
            ++next;
        }
    }
    return world;
}

void write_frame(const host::World& world, uint32_t* frame) {
    auto* next = reinterpret_cast<Rgba8*>(frame);
    for (int y = 0; y < world.height(); ++y, next += width_of(world))
        std::ranges::transform(world.pixels<PF_Pixel8>(y), next, rgba_of);
}

void write_over(const host::World& world, const uint32_t* below, uint32_t* frame) {
    const auto* under = reinterpret_cast<const Rgba8*>(below);
    auto* next = reinterpret_cast<Rgba8*>(frame);
    for (int y = 0; y < world.height(); ++y, next += width_of(world), under += width_of(world)) {
        std::ranges::transform(
            world.pixels<PF_Pixel8>(y), std::span(under, width_of(world)), next,
            [](const PF_Pixel8& top, const Rgba8& bottom) { return over(rgba_of(top), bottom); });
    }
}

}  // namespace flumo::frei0r
