#include "job/parts.h"

#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <stdexcept>

namespace flumo::job {
namespace {

constexpr int kWidth = 2048;
constexpr int kBandsOfWidth = 4;
// The effect draws at twice the size, which textures of 16384 pixels hold.
constexpr int kLargestWholeSide = 8192;
constexpr int64_t kMostWholePixels = int64_t{1} << 25;
// Two targets of four floats, one of them at twice the size, the pixels read back, and the host's two worlds.
constexpr int64_t kBytesOfPixel = 128;
// The last pass reads one pixel beside each at most.
constexpr int kMargin = 2;

int64_t half_of_memory() {
    return int64_t{sysconf(_SC_PHYS_PAGES)} * sysconf(_SC_PAGESIZE) / 2;
}

// Rows or columns of a part with its margins; the length is the same for all parts.
struct Stretch {
    int begin;
    int end;
};

Stretch with_margin(int begin, int length, int side) {
    const int wanted = std::min(length + 2 * kMargin, side);
    const int first = std::clamp(begin - kMargin, 0, side - wanted);
    return {first, first + wanted};
}

// Copies the columns from `x` on of the rows from `y` on that the part covers.
void paste(const host::World& part, host::World& band, int x, int y, int width) {
    const std::size_t pixel = host::pixel_size(part.depth());
    const auto skipped = static_cast<std::size_t>(x - part.shape().origin_x) * pixel;
    const auto bytes = static_cast<std::size_t>(width) * pixel;
    for (int row = 0; row < band.height(); ++row) {
        const auto source = part.row(y + row - part.shape().origin_y).subspan(skipped, bytes);
        std::ranges::copy(source, band.row(row).begin() +
                                      static_cast<std::ptrdiff_t>(x) * static_cast<std::ptrdiff_t>(pixel));
    }
}

}  // namespace

std::optional<int> part_width(const FrameSize& frame, std::optional<int> asked) {
    if (asked) return std::max(frame.width, frame.height) > *asked ? asked : std::nullopt;
    const int64_t pixels = int64_t{frame.width} * frame.height;
    const bool fits = std::max(frame.width, frame.height) <= kLargestWholeSide &&
                      pixels <= kMostWholePixels && pixels * kBytesOfPixel <= half_of_memory();
    return fits ? std::nullopt : std::optional(kWidth);
}

void render_in_parts(host::Instance& instance, const host::FrameRequest& request, const FrameSize& frame,
                     int part_width, const std::function<void(const host::World&)>& take) {
    host::FrameRequest asked = request;
    asked.row_padding = 0;  // the input, as large as the frame, then takes no memory: it is only read
    host::World part;
    host::World band;
    const int band_height = std::max(part_width / kBandsOfWidth, 1);
    for (int y = 0; y < frame.height; y += band_height) {
        const int height = std::min(band_height, frame.height - y);
        const Stretch rows = with_margin(y, band_height, frame.height);
        band.reshape({.width = frame.width, .height = height, .depth = request.depth, .origin_y = y});
        for (int x = 0; x < frame.width; x += part_width) {
            const Stretch columns = with_margin(x, part_width, frame.width);
            asked.region = PF_LRect{columns.begin, rows.begin, columns.end, rows.end};
            instance.render(asked, part);
            if (part.width() != columns.end - columns.begin || part.height() != rows.end - rows.begin)
                throw std::runtime_error("the effect left a part of it empty");
            paste(part, band, x, y, std::min(part_width, frame.width - x));
        }
        take(band);
    }
}

}  // namespace flumo::job
