#include "media/picture/png_file.h"

#include <png.h>

#include <array>
#include <cerrno>
#include <csetjmp>
#include <cstdio>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

#include "base/file_contents.h"

namespace flumo::media {
namespace {

constexpr int kSignatureSize = 8;
constexpr const char* kSoftwareKey = "Software";

struct PngError {
    char message[128] = "";
};

void on_error(png_structp png, png_const_charp message) {
    auto* const error = static_cast<PngError*>(png_get_error_ptr(png));
    std::snprintf(error->message, sizeof error->message, "%s", message);
    png_longjmp(png, 1);
}

void on_warning(png_structp, png_const_charp) {}

// libpng reports errors by longjmp. Whatever `body` and its callees own must be freed by others: only plain
// pointers and numbers may live in it.
template <typename Body>
void guarded(png_structp png, const PngError& error, const Body& body) {
    if (setjmp(png_jmpbuf(png)) != 0) throw std::runtime_error(error.message);
    body();
}

struct Reader {
    PngError error;
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, &error, on_error, on_warning);
    png_infop info = png_create_info_struct(png);

    Reader() = default;
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;
    ~Reader() { png_destroy_read_struct(&png, &info, nullptr); }
};

struct Writer {
    PngError error;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, &error, on_error, on_warning);
    png_infop info = png_create_info_struct(png);

    Writer() = default;
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;
    ~Writer() { png_destroy_write_struct(&png, &info); }
};

void take_bytes(png_structp png, png_bytep target, std::size_t count) {
    auto& rest = *static_cast<std::span<const uint8_t>*>(png_get_io_ptr(png));
    if (rest.size() < count) png_error(png, "the file ends too early");
    std::memcpy(target, rest.data(), count);
    rest = rest.subspan(count);
}

// Whatever the file holds, rows come out as four samples of 8 or 16 bits in this machine's order.
void ask_for_rgba(png_structp png, png_infop info) {
    png_set_expand(png);
    png_set_gray_to_rgb(png);
    png_set_add_alpha(png, 0xFFFF, PNG_FILLER_AFTER);
    if (png_get_bit_depth(png, info) == 16) png_set_swap(png);
    png_set_interlace_handling(png);
    png_read_update_info(png, info);
}

void read_header(Reader& reader, std::span<const uint8_t>& rest) {
    guarded(reader.png, reader.error, [&] {
        png_set_read_fn(reader.png, &rest, take_bytes);
        png_read_info(reader.png, reader.info);
        ask_for_rgba(reader.png, reader.info);
    });
}

template <typename Sample>
std::vector<Sample> read_samples(Reader& reader, std::size_t width, std::size_t height) {
    std::vector<Sample> samples(width * height * 4);
    std::vector<png_bytep> rows(height);
    for (std::size_t y = 0; y < height; ++y)
        rows[y] = reinterpret_cast<png_bytep>(&samples[y * width * 4]);
    guarded(reader.png, reader.error, [&] {
        png_read_image(reader.png, rows.data());
        png_read_end(reader.png, nullptr);
    });
    return samples;
}

// Frames of a shot are written while others are drawn, so time counts for more than size. Zlib's lowest level
// after one filter instead of a trial of all five takes a quarter of libpng's usual time or less, 60 ms and
// not 340 for a detailed frame of 1920x1080, and makes files up to half as large again.
void prefer_speed(png_structp png) {
    png_set_compression_level(png, 1);
    png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_SUB);
}

void put_bytes(png_structp png, png_bytep bytes, std::size_t count) {
    auto* const file = static_cast<std::FILE*>(png_get_io_ptr(png));
    char message[128];
    if (std::fwrite(bytes, 1, count, file) != count)
        png_error(png, strerror_r(errno, message, sizeof message));
}

void leave_in_buffer(png_structp) {}

// Uncompressed, and in UTF-8: iTXt.
png_text text_chunk(const char* key, const std::string& text) {
    png_text chunk{};
    chunk.compression = PNG_ITXT_COMPRESSION_NONE;
    chunk.key = const_cast<char*>(key);
    chunk.text = const_cast<char*>(text.c_str());
    chunk.itxt_length = text.size();
    return chunk;
}

class PngWriter : public PictureWriter {
  public:
    PngWriter(const std::filesystem::path& path, const PictureShape& shape, const FrameNotes& notes)
        : bits_(shape.depth == host::Depth::k8 ? 8 : 16), file_(std::fopen(path.c_str(), "wb"), std::fclose) {
        if (!file_) throw std::runtime_error(std::generic_category().message(errno));
        const std::string software = software_name();
        const std::array texts = {text_chunk(kSoftwareKey, software), text_chunk(kSceneKey, notes.scene)};
        write_header(shape, std::span(texts).first(notes.scene.empty() ? 1 : 2));
    }

    void write_rows(Picture rows) override {
        if (bits_ == 8) {
            if (!std::holds_alternative<std::vector<uint8_t>>(rows.samples)) rows = to_8_bit(rows);
        } else if (!std::holds_alternative<std::vector<uint16_t>>(rows.samples)) {
            rows = to_16_bit(rows);
        }
        std::visit(
            [&](const auto& samples) {
                put_rows(std::as_bytes(std::span(samples)), samples.size() * sizeof samples[0] / rows.height);
            },
            rows.samples);
    }

    void finish() override {
        guarded(writer_.png, writer_.error, [&] { png_write_end(writer_.png, nullptr); });
        // A network folder may tell only at the end that it is full.
        if (std::fclose(file_.release()) != 0)
            throw std::runtime_error(std::generic_category().message(errno));
    }

  private:
    void write_header(const PictureShape& shape, std::span<const png_text> texts) {
        guarded(writer_.png, writer_.error, [&] {
            png_set_write_fn(writer_.png, file_.get(), put_bytes, leave_in_buffer);
            png_set_IHDR(writer_.png, writer_.info, static_cast<png_uint_32>(shape.width),
                         static_cast<png_uint_32>(shape.height), bits_, PNG_COLOR_TYPE_RGB_ALPHA,
                         PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
            prefer_speed(writer_.png);
            png_set_sRGB_gAMA_and_cHRM(writer_.png, writer_.info, PNG_sRGB_INTENT_PERCEPTUAL);
            png_set_text(writer_.png, writer_.info, texts.data(), static_cast<int>(texts.size()));
            png_write_info(writer_.png, writer_.info);
            if (bits_ == 16) png_set_swap(writer_.png);
        });
    }

    void put_rows(std::span<const std::byte> bytes, std::size_t row_bytes) {
        guarded(writer_.png, writer_.error, [&] {
            for (; !bytes.empty(); bytes = bytes.subspan(row_bytes))
                png_write_row(writer_.png, reinterpret_cast<png_const_bytep>(bytes.data()));
        });
    }

    int bits_;
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> file_;
    Writer writer_;
};

}  // namespace

bool is_png(std::span<const uint8_t> bytes) {
    return bytes.size() >= kSignatureSize && png_sig_cmp(bytes.data(), 0, kSignatureSize) == 0;
}

Picture decode_png(std::span<const uint8_t> bytes) {
    Reader reader;
    std::span<const uint8_t> rest = bytes;
    read_header(reader, rest);
    const std::size_t width = png_get_image_width(reader.png, reader.info);
    const std::size_t height = png_get_image_height(reader.png, reader.info);
    require_plausible_size(width, height, bytes.size());
    Picture picture{width, height, {}};
    if (png_get_bit_depth(reader.png, reader.info) == 16) {
        picture.samples = read_samples<uint16_t>(reader, width, height);
    } else {
        picture.samples = read_samples<uint8_t>(reader, width, height);
    }
    return picture;
}

std::unique_ptr<PictureWriter> create_png(const std::filesystem::path& path, const PictureShape& shape,
                                          const FrameNotes& notes) {
    return std::make_unique<PngWriter>(path, shape, notes);
}

FrameNotes read_png_notes(const std::filesystem::path& path) {
    const std::vector<uint8_t> bytes = read_file(path);
    Reader reader;
    std::span<const uint8_t> rest = bytes;
    read_header(reader, rest);
    png_textp texts = nullptr;
    const int count = png_get_text(reader.png, reader.info, &texts, nullptr);
    FrameNotes notes;
    for (const png_text& text : std::span(texts, static_cast<std::size_t>(count))) {
        if (std::string_view(text.key) == kSceneKey) notes.scene = text.text;
    }
    return notes;
}

bool is_whole_png(const std::filesystem::path& path) {
    constexpr std::string_view kEnd("\0\0\0\0IEND\xae\x42\x60\x82", 12);
    return is_png(read_file_start(path, kSignatureSize)) && file_ends_with(path, kEnd);
}

}  // namespace flumo::media
