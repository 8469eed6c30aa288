// A picture in memory, between files and the host's worlds.
#pragma once

#include <cstddef>
#include <cstdint>
#include <variant>
#include <vector>

namespace flumo::media {

/// Rows from the top, no padding, four samples a pixel: red, green, blue, alpha. Full scale is 255,
/// 65535 or 1.0 by the type of the samples. Alpha is straight unless a function says otherwise.
struct Picture {
    using Samples = std::variant<std::vector<uint8_t>, std::vector<uint16_t>, std::vector<float>>;

    std::size_t width = 0;
    std::size_t height = 0;
    Samples samples;
};

/// Throws std::runtime_error for a size of more than 2^28 pixels, and for one that a file of `file_bytes`
/// bytes cannot hold: a header alone must not make the program take memory. No compression stores more than
/// 2^16 pixels in a byte (PNG: 8256 of one bit).
void require_plausible_size(std::size_t width, std::size_t height, std::size_t file_bytes);

/// The same picture in another sample type: integers scale to the full range and back without loss
/// where the target is the wider one; floats are clamped to 0 to 1 and rounded, NaN becomes 0.
Picture to_8_bit(const Picture& picture);
Picture to_16_bit(const Picture& picture);
Picture to_float(const Picture& picture);

/// From the sRGB transfer curve to linear light (IEC 61966-2-1) in place; the samples must be floats. Colours
/// above 1 follow the same curve, and below 0 its mirror image; alpha stays.
void to_linear_light(Picture& picture);

/// Multiplies colour by alpha in place; the samples must be floats.
void premultiply(Picture& picture);

/// The picture over black, where alpha is of no further use; integer samples are rounded to nearest.
void put_over_black(Picture& picture);

/// Divides colour by alpha in place, leaving black where alpha is 0; the samples must be floats.
void unpremultiply(Picture& picture);

}  // namespace flumo::media
