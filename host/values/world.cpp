#include "host/values/world.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <stdexcept>

namespace flumo::host {

namespace {

constexpr std::byte kGuard{0xA5};
/// Guard bytes before the first and after the last row.
constexpr size_t kMargin = 64;
constexpr float kFull16 = 32768.0f;

// Only the host knows the depth of a world; it is in reserved fields so that copies of the record,
// such as the one inside a checked-out control, keep it.
void* depth_mark() {
    static const char mark = 0;
    return const_cast<char*>(&mark);
}

size_t unpadded_row(const WorldShape& shape) {
    return static_cast<size_t>(shape.width) * pixel_size(shape.depth);
}

/// Channels of one pixel in the order of memory: alpha, red, green, blue.
void read_pixel(const std::byte* pixel, Depth depth, float* rgba) {
    float argb[4];
    if (depth == Depth::k32) {
        std::memcpy(argb, pixel, sizeof argb);
    } else if (depth == Depth::k16) {
        A_u_short channels[4];
        std::memcpy(channels, pixel, sizeof channels);
        for (int i = 0; i < 4; ++i)
            argb[i] = static_cast<float>(channels[i]) / kFull16;
    } else {
        for (int i = 0; i < 4; ++i)
            argb[i] = static_cast<float>(std::to_integer<int>(pixel[i])) / 255.0f;
    }
    rgba[0] = argb[1];
    rgba[1] = argb[2];
    rgba[2] = argb[3];
    rgba[3] = argb[0];
}

template <class Channel>
Channel quantised(float value, float full) {
    const float most = std::numeric_limits<Channel>::max();
    const float scaled = std::round(value * full);
    return scaled > 0 ? static_cast<Channel>(std::min(scaled, most)) : Channel{0};
}

void write_pixel(std::byte* pixel, Depth depth, const float* rgba) {
    const float argb[4] = {rgba[3], rgba[0], rgba[1], rgba[2]};
    if (depth == Depth::k32) {
        std::memcpy(pixel, argb, sizeof argb);
    } else if (depth == Depth::k16) {
        A_u_short channels[4];
        for (int i = 0; i < 4; ++i)
            channels[i] = quantised<A_u_short>(argb[i], kFull16);
        std::memcpy(pixel, channels, sizeof channels);
    } else {
        for (int i = 0; i < 4; ++i)
            pixel[i] = std::byte{quantised<uint8_t>(argb[i], 255.0f)};
    }
}

}  // namespace

size_t pixel_size(Depth depth) {
    return static_cast<size_t>(depth) / 2;
}

PF_PixelFormat pixel_format(Depth depth) {
    if (depth == Depth::k8) return PF_PixelFormat_ARGB32;
    return depth == Depth::k16 ? PF_PixelFormat_ARGB64 : PF_PixelFormat_ARGB128;
}

World::World(const WorldShape& shape) : shape_(shape) {
    allocate();
}

World::World(const World& other) : World(other.shape_) {
    if (memory_) std::memcpy(memory_.get(), other.memory_.get(), memory_size_);
}

World& World::operator=(const World& other) {
    if (this != &other) *this = World(other);
    return *this;
}

World::World(World&& other) noexcept {
    *this = std::move(other);
}

World& World::operator=(World&& other) noexcept {
    std::swap(shape_, other.shape_);
    std::swap(record_, other.record_);
    std::swap(memory_, other.memory_);
    std::swap(memory_size_, other.memory_size_);
    return *this;
}

void World::reshape(const WorldShape& shape) {
    WorldShape moved = shape_;
    moved.origin_x = shape.origin_x;
    moved.origin_y = shape.origin_y;
    shape_ = shape;
    if (moved == shape && memory_) {
        write_record();
    } else {
        allocate();
    }
}

size_t World::rowbytes() const {
    return static_cast<size_t>(shape_.width + shape_.row_padding) * pixel_size(shape_.depth);
}

void World::allocate() {
    if (shape_.width < 0 || shape_.height < 0 || shape_.row_padding < 0) {
        throw std::invalid_argument("a world needs a size and a row padding of at least 0");
    }
    if (rowbytes() > static_cast<size_t>(std::numeric_limits<A_long>::max())) {
        throw std::invalid_argument("a world's row must fit into 2 GiB");
    }
    memory_size_ = rowbytes() * static_cast<size_t>(shape_.height) + 2 * kMargin;
    memory_.reset();
    // calloc does not touch pages: a world that is never written uses no memory.
    memory_ = {static_cast<std::byte*>(std::calloc(memory_size_, 1)), [](std::byte* p) { std::free(p); }};
    if (!memory_) throw std::bad_alloc();
    std::fill_n(memory_.get(), kMargin, kGuard);
    std::fill_n(memory_.get() + memory_size_ - kMargin, kMargin, kGuard);
    const size_t used = unpadded_row(shape_);
    if (shape_.row_padding > 0) {
        for (int y = 0; y < shape_.height; ++y) {
            std::fill_n(row_start(y) + used, rowbytes() - used, kGuard);
        }
    }
    write_record();
}

void World::write_record() {
    record_ = {};
    record_.reserved0 = depth_mark();
    record_.reserved_long1 = static_cast<A_long>(shape_.depth);
    record_.world_flags =
        PF_WorldFlag_WRITEABLE | (shape_.depth == Depth::k16 ? PF_WorldFlag_DEEP : 0) | shape_.extra_flags;
    record_.data = reinterpret_cast<PF_PixelPtr>(row_start(0));
    record_.rowbytes = static_cast<A_long>(rowbytes()) * (shape_.bottom_up ? -1 : 1);
    record_.width = shape_.width;
    record_.height = shape_.height;
    record_.extent_hint = {0, 0, shape_.width, shape_.height};
    record_.pix_aspect_ratio = {1, 1};
    record_.origin_x = shape_.origin_x;
    record_.origin_y = shape_.origin_y;
}

std::byte* World::row_start(int y) const {
    const int in_memory = shape_.bottom_up ? std::max(shape_.height, 1) - 1 - y : y;
    return memory_.get() + kMargin + static_cast<size_t>(in_memory) * rowbytes();
}

std::span<std::byte> World::row(int y) {
    if (y < 0 || y >= shape_.height) throw std::out_of_range("a row outside the world");
    return {row_start(y), unpadded_row(shape_)};
}

std::span<const std::byte> World::row(int y) const {
    return const_cast<World*>(this)->row(y);
}

Rgba World::rgba(int x, int y) const {
    Rgba colour;
    read_pixel(row(y).subspan(static_cast<size_t>(x) * pixel_size(shape_.depth)).data(), shape_.depth,
               colour.data());
    return colour;
}

void World::set_rgba(int x, int y, const Rgba& colour) {
    write_pixel(row(y).subspan(static_cast<size_t>(x) * pixel_size(shape_.depth)).data(), shape_.depth,
                colour.data());
}

void World::read_row(int y, std::span<float> rgba) const {
    const auto bytes = row(y);
    const size_t step = pixel_size(shape_.depth);
    for (size_t x = 0; x < static_cast<size_t>(shape_.width); ++x) {
        read_pixel(bytes.data() + x * step, shape_.depth, rgba.subspan(4 * x, 4).data());
    }
}

void World::fill_bytes(std::byte value) {
    for (int y = 0; y < shape_.height; ++y)
        std::ranges::fill(row(y), value);
}

bool World::guards_intact() const {
    if (!memory_) return true;
    const auto intact = [](const std::byte* from, size_t count) {
        return std::all_of(from, from + count, [](std::byte b) { return b == kGuard; });
    };
    if (!intact(memory_.get(), kMargin) || !intact(memory_.get() + memory_size_ - kMargin, kMargin))
        return false;
    for (int y = 0; y < shape_.height; ++y) {
        const auto pixels = row(y);
        if (!intact(pixels.data() + pixels.size(), rowbytes() - pixels.size())) return false;
    }
    return true;
}

bool World::same_picture(const World& other) const {
    if (width() != other.width() || height() != other.height() || depth() != other.depth()) return false;
    for (int y = 0; y < height(); ++y) {
        if (!std::ranges::equal(row(y), other.row(y))) return false;
    }
    return true;
}

Depth record_depth(const PF_EffectWorld& record) {
    if (record.reserved0 != depth_mark()) throw std::invalid_argument("not a world of this host");
    return static_cast<Depth>(record.reserved_long1);
}

}  // namespace flumo::host
