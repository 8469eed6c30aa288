#include "media/world_picture.h"

#include <algorithm>

namespace flumo::media {
namespace {

constexpr uint32_t kFull16 = 65535;

uint8_t from_host(A_u_char value) {
    return value;
}
float from_host(PF_FpShort value) {
    return value;
}
uint16_t from_host(A_u_short value) {
    const uint32_t scaled = (uint32_t{value} * kFull16 + PF_MAX_CHAN16 / 2) / PF_MAX_CHAN16;
    return static_cast<uint16_t>(std::min(scaled, kFull16));
}

A_u_char to_host(uint8_t value) {
    return value;
}
PF_FpShort to_host(float value) {
    return value;
}
A_u_short to_host(uint16_t value) {
    return static_cast<A_u_short>((uint32_t{value} * PF_MAX_CHAN16 + kFull16 / 2) / kFull16);
}

template <typename Pixel, typename Sample>
Picture read_world(const host::World& world) {
    const auto width = static_cast<std::size_t>(world.width());
    const auto height = static_cast<std::size_t>(world.height());
    std::vector<Sample> samples(width * height * 4);
    Sample* next = samples.data();
    for (int y = 0; y < world.height(); ++y) {
        for (const Pixel& pixel : world.pixels<Pixel>(y)) {
            *next++ = from_host(pixel.red);
            *next++ = from_host(pixel.green);
            *next++ = from_host(pixel.blue);
            *next++ = from_host(pixel.alpha);
        }
    }
    return {width, height, std::move(samples)};
}

template <typename Pixel, typename Sample>
host::World write_world(const Picture& picture, host::Depth depth) {
    host::World world(static_cast<int>(picture.width), static_cast<int>(picture.height), depth);
    const Sample* next = std::get<std::vector<Sample>>(picture.samples).data();
    for (int y = 0; y < world.height(); ++y) {
        for (Pixel& pixel : world.pixels<Pixel>(y)) {
            pixel = {to_host(next[3]), to_host(next[0]), to_host(next[1]), to_host(next[2])};
            next += 4;
        }
    }
    return world;
}

}  // namespace

Picture picture_of(const host::World& world) {
    switch (world.depth()) {
        case host::Depth::k8:
            return read_world<PF_Pixel8, uint8_t>(world);
        case host::Depth::k16:
            return read_world<PF_Pixel16, uint16_t>(world);
        case host::Depth::k32:
            break;
    }
    return read_world<PF_PixelFloat, float>(world);
}

host::World world_of(const Picture& picture, host::Depth depth) {
    switch (depth) {
        case host::Depth::k8:
            return write_world<PF_Pixel8, uint8_t>(to_8_bit(picture), depth);
        case host::Depth::k16:
            return write_world<PF_Pixel16, uint16_t>(to_16_bit(picture), depth);
        case host::Depth::k32:
            break;
    }
    return write_world<PF_PixelFloat, float>(to_float(picture), depth);
}

}  // namespace flumo::media
