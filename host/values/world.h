// The host's images. Alpha is the first channel; rows are padded, and the padding as well as the memory
// before and after the pixels carries guard bytes, so that a write past a row can be found afterwards.
#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <span>
#include <vector>

#include "effect_api/world.h"

namespace flumo::host {

/// Bits per channel.
enum class Depth { k8 = 8, k16 = 16, k32 = 32 };

size_t pixel_size(Depth depth);
PF_PixelFormat pixel_format(Depth depth);

/// Red, green, blue, alpha; full scale is 1 at every depth.
using Rgba = std::array<float, 4>;

struct WorldShape {
    int width = 0;
    int height = 0;
    Depth depth = Depth::k8;
    /// Unused pixels after each row.
    int row_padding = 0;
    /// Left and top in layer pixels at the current resolution.
    int origin_x = 0;
    int origin_y = 0;
    /// The last row is the first in memory, so that the record has negative row bytes.
    bool bottom_up = false;
    /// Bits of the record's flags (PF_WorldFlag_...) besides those that the depth sets.
    A_long extra_flags = 0;
    bool operator==(const WorldShape&) const = default;
};

/// Owns the pixels of one image. Movable; copies share nothing. Concurrent reads are safe.
class World {
  public:
    World() = default;
    /// Transparent black. Throws std::invalid_argument for a negative size or padding.
    explicit World(const WorldShape& shape);
    World(int width, int height, Depth depth)
        : World(WorldShape{.width = width, .height = height, .depth = depth}) {}
    World(const World& other);
    World& operator=(const World& other);
    World(World&& other) noexcept;
    World& operator=(World&& other) noexcept;
    ~World() = default;

    /// Makes this world fit the shape. Keeps memory and pixels when only the origin differs,
    /// otherwise the pixels are transparent black.
    void reshape(const WorldShape& shape);

    int width() const { return shape_.width; }
    int height() const { return shape_.height; }
    Depth depth() const { return shape_.depth; }
    const WorldShape& shape() const { return shape_; }
    size_t rowbytes() const;

    /// The record that an effect is given; `data` points at this world's pixels.
    PF_EffectWorld& record() { return record_; }
    const PF_EffectWorld& record() const { return record_; }

    /// The pixels of row y without the padding.
    std::span<std::byte> row(int y);
    std::span<const std::byte> row(int y) const;
    /// Row y as pixels; Pixel is PF_Pixel8, PF_Pixel16 or PF_PixelFloat and fits the depth.
    template <class Pixel>
    std::span<Pixel> pixels(int y) {
        auto bytes = row(y);
        return {reinterpret_cast<Pixel*>(bytes.data()), bytes.size() / sizeof(Pixel)};
    }
    template <class Pixel>
    std::span<const Pixel> pixels(int y) const {
        auto bytes = row(y);
        return {reinterpret_cast<const Pixel*>(bytes.data()), bytes.size() / sizeof(Pixel)};
    }

    Rgba rgba(int x, int y) const;
    /// Rounds to nearest; 8 bits clamp to 0 to 1, 16 bits to 0 to 65535 / 32768.
    void set_rgba(int x, int y, const Rgba& colour);
    /// Row y as width x 4 floats in red, green, blue, alpha order.
    void read_row(int y, std::span<float> rgba) const;

    /// Sets every byte of every pixel, not of the padding.
    void fill_bytes(std::byte value);
    /// Whether padding and surroundings hold what the constructor put there.
    bool guards_intact() const;
    /// Same size, depth and pixels; padding and origin do not count.
    bool same_picture(const World& other) const;

  private:
    void allocate();
    void write_record();
    std::byte* row_start(int y) const;

    WorldShape shape_;
    PF_EffectWorld record_{};
    std::unique_ptr<std::byte[], void (*)(std::byte*)> memory_{nullptr, nullptr};
    size_t memory_size_ = 0;
};

/// Depth of a world whose record the host made, also of a copy of the record; throws
/// std::invalid_argument for any other record.
Depth record_depth(const PF_EffectWorld& record);

}  // namespace flumo::host
