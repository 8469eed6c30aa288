#include "media/picture/exr_file.h"

#include <OpenEXR/ImfChannelList.h>
#include <OpenEXR/ImfFrameBuffer.h>
#include <OpenEXR/ImfHeader.h>
#include <OpenEXR/ImfIO.h>
#include <OpenEXR/ImfInputFile.h>
#include <OpenEXR/ImfOutputFile.h>
#include <OpenEXR/ImfRational.h>
#include <OpenEXR/ImfStandardAttributes.h>
#include <OpenEXR/ImfStringAttribute.h>
#include <OpenEXR/ImfVersion.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

namespace flumo::media {
namespace {

constexpr std::size_t kLongestAttribute = 200;

// As OpenImageIO names it; other readers have the comment.
constexpr const char* kColourSpaceAttribute = "oiio:ColorSpace";
constexpr const char* kDisplay = "sRGB";
constexpr const char* kLinear = "Linear";
constexpr const char* kDisplayComment =
    "Display-referred colour: sRGB transfer curve (not linear light), Rec. 709 primaries, premultiplied "
    "alpha";
constexpr const char* kLinearComment = "Linear light, Rec. 709 primaries, premultiplied alpha";

using ChannelNames = std::array<const char*, 4>;
constexpr ChannelNames kColourNames = {"R", "G", "B", "A"};

template <typename Sample>
constexpr Imf::PixelType pixel_type() {
    return sizeof(Sample) == sizeof(float) ? Imf::FLOAT : Imf::HALF;
}

// Slices of interleaved pixels whose first one lies at the window's top left corner.
template <typename Sample>
Imf::FrameBuffer frame_buffer(Sample* pixels, const Imath::Box2i& window, const ChannelNames& names) {
    constexpr std::size_t kPixelSize = 4 * sizeof(Sample);
    const auto width = static_cast<std::size_t>(window.size().x + 1);
    Imf::FrameBuffer buffer;
    for (std::size_t channel = 0; channel < names.size(); ++channel) {
        const double missing = channel == 3 ? 1.0 : 0.0;
        if (channel > 0 && std::string_view(names[channel]) == names[channel - 1]) continue;
        buffer.insert(names[channel], Imf::Slice::Make(pixel_type<Sample>(), pixels + channel, window,
                                                       kPixelSize, kPixelSize * width, 1, 1, missing));
    }
    return buffer;
}

int64_t pixel_count(const Imath::Box2i& window) {
    return (int64_t{window.max.x} - window.min.x + 1) * (int64_t{window.max.y} - window.min.y + 1);
}

void require_reasonable(const Imath::Box2i& window, std::size_t file_bytes) {
    if (window.isEmpty()) throw std::runtime_error("the picture is empty");
    require_plausible_size(static_cast<std::size_t>(int64_t{window.max.x} - window.min.x + 1),
                           static_cast<std::size_t>(int64_t{window.max.y} - window.min.y + 1), file_bytes);
}

// A file of luminance alone names one channel for all three colours.
ChannelNames channel_names(const Imf::Header& header) {
    const Imf::ChannelList& channels = header.channels();
    if (channels.findChannel("R") || channels.findChannel("G") || channels.findChannel("B")) {
        return kColourNames;
    }
    if (channels.findChannel("RY") || channels.findChannel("BY"))
        throw std::runtime_error("it stores luminance and chroma (Y, RY, BY)");
    if (channels.findChannel("Y")) return {"Y", "Y", "Y", "A"};
    throw std::runtime_error("it has none of the channels R, G, B and Y");
}

std::vector<float> read_window(Imf::InputFile& file, const Imath::Box2i& window) {
    const ChannelNames names = channel_names(file.header());
    std::vector<float> pixels(static_cast<std::size_t>(pixel_count(window)) * 4);
    file.setFrameBuffer(frame_buffer(pixels.data(), window, names));
    file.readPixels(window.min.y, window.max.y);
    if (*names[0] == 'Y') {
        for (std::size_t i = 0; i < pixels.size(); i += 4)
            pixels[i + 1] = pixels[i + 2] = pixels[i];
    }
    return pixels;
}

// The part of `pixels` (which fill `from`) that lies in `to`; the rest of `to` is transparent.
std::vector<float> reframe(const std::vector<float>& pixels, const Imath::Box2i& from,
                           const Imath::Box2i& to) {
    if (from == to) return pixels;
    std::vector<float> framed(static_cast<std::size_t>(pixel_count(to)) * 4);
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

// "flumoScene" alone held the whole scene in files of earlier versions.
std::string scene_attribute(std::size_t piece) {
    char name[32];
    std::snprintf(name, sizeof name, "%s.%03zu", kSceneKey, piece);
    return name;
}

void add_scene(Imf::Header& header, std::string_view scene) {
    for (std::size_t piece = 0; !scene.empty(); ++piece) {
        const std::string_view part = scene.substr(0, kLongestAttribute);
        header.insert(scene_attribute(piece), Imf::StringAttribute(std::string(part)));
        scene.remove_prefix(part.size());
    }
}

std::string string_attribute(const Imf::Header& header, const std::string& name) {
    const auto* attribute = header.findTypedAttribute<Imf::StringAttribute>(name);
    return attribute ? attribute->value() : "";
}

std::string scene_of(const Imf::Header& header) {
    std::string scene = string_attribute(header, kSceneKey);
    for (std::size_t piece = 0;; ++piece) {
        const std::string part = string_attribute(header, scene_attribute(piece));
        if (part.empty()) return scene;
        scene += part;
    }
}

Imf::Header header_of(const PictureShape& shape, const FrameNotes& notes) {
    Imf::Header header(static_cast<int>(shape.width), static_cast<int>(shape.height));
    header.compression() = Imf::ZIP_COMPRESSION;
    const Imf::PixelType type = notes.exr_type == ExrType::kHalf ? Imf::HALF : Imf::FLOAT;
    for (const char* name : kColourNames)
        header.channels().insert(name, Imf::Channel(type));
    if (notes.rate) Imf::addFramesPerSecond(header, Imf::Rational(notes.rate->num, notes.rate->den));
    Imf::addChromaticities(header, Imf::Chromaticities());  // Rec. ITU-R BT.709, as sRGB
    Imf::addComments(header, notes.linear ? kLinearComment : kDisplayComment);
    header.insert(kColourSpaceAttribute, Imf::StringAttribute(notes.linear ? kLinear : kDisplay));
    header.insert("software", Imf::StringAttribute(software_name()));
    add_scene(header, notes.scene);
    return header;
}

// The library's own stream reports no failure when its file closes, although the table of lines and
// the rest of the buffer are written then.
class CheckedStream : public Imf::OStream {
  public:
    explicit CheckedStream(const std::filesystem::path& path)
        : OStream(path.c_str()), file_(std::fopen(path.c_str(), "wb"), std::fclose) {
        if (!file_) fail();
    }

    void write(const char* bytes, int count) override {
        const auto size = static_cast<std::size_t>(count);
        if (std::fwrite(bytes, 1, size, file_.get()) != size) fail();
    }
    uint64_t tellp() override { return static_cast<uint64_t>(std::ftell(file_.get())); }
    void seekp(uint64_t position) override {
        if (std::fseek(file_.get(), static_cast<long>(position), SEEK_SET) != 0) fail();
    }

    /// Once the library is done. Throws for an error that was not reported before.
    void close() {
        if (std::fclose(file_.release()) != 0 && error_ == 0) error_ = errno;
        if (error_ != 0) throw std::runtime_error(std::generic_category().message(error_));
    }

  private:
    [[noreturn]] void fail() {
        error_ = errno;
        throw std::runtime_error(std::generic_category().message(error_));
    }

    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file_;
    int error_ = 0;
};

class ExrWriter : public PictureWriter {
  public:
    ExrWriter(const std::filesystem::path& path, const PictureShape& shape, const FrameNotes& notes)
        : notes_(notes), stream_(path), file_(std::in_place, stream_, header_of(shape, notes)) {}

    void write_rows(Picture rows) override {
        if (!std::holds_alternative<std::vector<float>>(rows.samples)) rows = to_float(rows);
        if (notes_.linear) to_linear_light(rows);
        premultiply(rows);
        const auto& samples = std::get<std::vector<float>>(rows.samples);
        if (notes_.exr_type == ExrType::kFloat) {
            write_samples(samples, rows.height);
        } else {
            write_samples(std::vector<half>(samples.begin(), samples.end()), rows.height);
        }
    }

    void finish() override {
        file_.reset();  // writes the table of rows
        stream_.close();
    }

  private:
    template <typename Sample>
    void write_samples(const std::vector<Sample>& samples, std::size_t rows) {
        Imath::Box2i window = file_->header().dataWindow();
        window.min.y = file_->currentScanLine();
        window.max.y = window.min.y + static_cast<int>(rows) - 1;
        // The library's slices are mutable for the sake of reading; writing does not change them.
        file_->setFrameBuffer(frame_buffer(const_cast<Sample*>(samples.data()), window, kColourNames));
        file_->writePixels(static_cast<int>(rows));
    }

    FrameNotes notes_;
    CheckedStream stream_;
    std::optional<Imf::OutputFile> file_;
};

}  // namespace

bool is_exr(std::span<const uint8_t> bytes) {
    return bytes.size() >= 4 && Imf::isImfMagic(reinterpret_cast<const char*>(bytes.data()));
}

Picture read_exr(const std::filesystem::path& path) {
    Imf::InputFile file(path.c_str());
    const Imath::Box2i data = file.header().dataWindow();
    const Imath::Box2i display = file.header().displayWindow();
    const auto bytes = static_cast<std::size_t>(std::filesystem::file_size(path));
    require_reasonable(data, bytes);
    require_reasonable(display, bytes);
    if (!file.isComplete()) throw std::runtime_error("the file ends too early");
    return {static_cast<std::size_t>(display.size().x + 1), static_cast<std::size_t>(display.size().y + 1),
            reframe(read_window(file, data), data, display)};
}

Picture read_straight_exr(const std::filesystem::path& path) {
    Picture picture = read_exr(path);
    unpremultiply(picture);
    return picture;
}

std::unique_ptr<PictureWriter> create_exr(const std::filesystem::path& path, const PictureShape& shape,
                                          const FrameNotes& notes) {
    return std::make_unique<ExrWriter>(path, shape, notes);
}

FrameNotes read_exr_notes(const std::filesystem::path& path) {
    const Imf::InputFile file(path.c_str());
    const Imf::Header& header = file.header();
    FrameNotes notes;
    const Imf::Channel* const red = header.channels().findChannel("R");
    if (red && red->type == Imf::HALF) notes.exr_type = ExrType::kHalf;
    if (Imf::hasFramesPerSecond(header)) {
        const Imf::Rational rate = Imf::framesPerSecond(header);
        notes.rate = host::FrameRate{rate.n, static_cast<int>(rate.d)};
    }
    notes.linear = string_attribute(header, kColourSpaceAttribute) == kLinear;
    notes.scene = scene_of(header);
    return notes;
}

bool is_whole_exr(const std::filesystem::path& path) try {
    Imf::InputFile file(path.c_str());
    if (!file.isComplete()) return false;
    // The table of rows may name rows that were cut off.
    const char* row = nullptr;
    int size = 0;
    file.rawPixelData(file.header().dataWindow().max.y, row, size);
    return true;
} catch (const std::exception&) {
    return false;
}

}  // namespace flumo::media
