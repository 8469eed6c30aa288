#include "cli/exr_file.h"

#include <OpenEXR/ImfChannelList.h>
#include <OpenEXR/ImfFrameBuffer.h>
#include <OpenEXR/ImfHeader.h>
#include <OpenEXR/ImfInputFile.h>
#include <OpenEXR/ImfOutputFile.h>
#include <OpenEXR/ImfVersion.h>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string_view>

namespace flumo::cli {
namespace {

constexpr int64_t kMostPixels = int64_t{1} << 28;
constexpr size_t kPixelSize = 4 * sizeof(float);

using ChannelNames = std::array<const char*, 4>;

// Slices of interleaved float pixels whose first one lies at the window's top left corner.
Imf::FrameBuffer frame_buffer(float* pixels, const Imath::Box2i& window, const ChannelNames& names) {
    const auto width = static_cast<size_t>(window.size().x + 1);
    Imf::FrameBuffer buffer;
    for (size_t channel = 0; channel < names.size(); ++channel) {
        const double missing = channel == 3 ? 1.0 : 0.0;
        if (channel > 0 && std::string_view(names[channel]) == names[channel - 1]) continue;
        buffer.insert(names[channel], Imf::Slice::Make(Imf::FLOAT, pixels + channel, window, kPixelSize,
                                                       kPixelSize * width, 1, 1, missing));
    }
    return buffer;
}

int64_t pixel_count(const Imath::Box2i& window) {
    return (int64_t{window.max.x} - window.min.x + 1) * (int64_t{window.max.y} - window.min.y + 1);
}

void require_reasonable(const Imath::Box2i& window) {
    if (window.isEmpty()) throw std::runtime_error("the picture is empty");
    if (pixel_count(window) > kMostPixels) throw std::runtime_error("the picture is too large");
}

// A file of luminance alone names one channel for all three colours.
ChannelNames channel_names(const Imf::Header& header) {
    const Imf::ChannelList& channels = header.channels();
    if (channels.findChannel("R") || channels.findChannel("G") || channels.findChannel("B")) {
        return {"R", "G", "B", "A"};
    }
    if (channels.findChannel("Y")) return {"Y", "Y", "Y", "A"};
    throw std::runtime_error("it has none of the channels R, G, B and Y");
}

std::vector<float> read_window(Imf::InputFile& file, const Imath::Box2i& window) {
    const ChannelNames names = channel_names(file.header());
    std::vector<float> pixels(static_cast<size_t>(pixel_count(window)) * 4);
    file.setFrameBuffer(frame_buffer(pixels.data(), window, names));
    file.readPixels(window.min.y, window.max.y);
    if (*names[0] == 'Y') {
        for (size_t i = 0; i < pixels.size(); i += 4)
            pixels[i + 1] = pixels[i + 2] = pixels[i];
    }
    return pixels;
}

// The part of `pixels` (which fill `from`) that lies in `to`; the rest of `to` is transparent.
std::vector<float> reframe(const std::vector<float>& pixels, const Imath::Box2i& from,
                           const Imath::Box2i& to) {
    if (from == to) return pixels;
    std::vector<float> framed(static_cast<size_t>(pixel_count(to)) * 4);
    const int left = std::max(from.min.x, to.min.x);
    const int right = std::min(from.max.x, to.max.x);
    const auto offset = [](const Imath::Box2i& window, int x, int y) {
        return (int64_t{y - window.min.y} * (window.size().x + 1) + (x - window.min.x)) * 4;
    };
    for (int y = std::max(from.min.y, to.min.y); y <= std::min(from.max.y, to.max.y) && left <= right; ++y) {
        std::copy_n(pixels.begin() + offset(from, left, y), int64_t{right - left + 1} * 4,
                    framed.begin() + offset(to, left, y));
    }
    return framed;
}

}  // namespace

bool is_exr(std::span<const uint8_t> bytes) {
    return bytes.size() >= 4 && Imf::isImfMagic(reinterpret_cast<const char*>(bytes.data()));
}

Picture read_exr(const std::filesystem::path& path) {
    Imf::InputFile file(path.c_str());
    const Imath::Box2i data = file.header().dataWindow();
    const Imath::Box2i display = file.header().displayWindow();
    require_reasonable(data);
    require_reasonable(display);
    return {static_cast<size_t>(display.size().x + 1), static_cast<size_t>(display.size().y + 1),
            reframe(read_window(file, data), data, display)};
}

void write_exr(const std::filesystem::path& path, const Picture& picture) {
    const auto& samples = std::get<std::vector<float>>(picture.samples);
    Imf::Header header(static_cast<int>(picture.width), static_cast<int>(picture.height));
    header.compression() = Imf::ZIP_COMPRESSION;
    const ChannelNames names = {"R", "G", "B", "A"};
    for (const char* name : names)
        header.channels().insert(name, Imf::Channel(Imf::FLOAT));
    Imf::OutputFile file(path.c_str(), header);
    // The library's slices are mutable for the sake of reading; writing leaves them alone.
    file.setFrameBuffer(frame_buffer(const_cast<float*>(samples.data()), header.dataWindow(), names));
    file.writePixels(static_cast<int>(picture.height));
}

}  // namespace flumo::cli
