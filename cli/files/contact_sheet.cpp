#include "cli/files/contact_sheet.h"

#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>
#include <stdexcept>

namespace flumo::cli {
namespace {

using media::Picture;

constexpr double kMargin = 16;
constexpr double kGap = 12;
constexpr double kLineHeight = 17;
constexpr double kFontSize = 13;
constexpr double kCheck = 8;

using Surface = std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)>;
using Context = std::unique_ptr<cairo_t, decltype(&cairo_destroy)>;

Surface new_surface(int width, int height) {
    Surface surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height), cairo_surface_destroy);
    const cairo_status_t status = cairo_surface_status(surface.get());
    if (status != CAIRO_STATUS_SUCCESS) throw std::runtime_error(cairo_status_to_string(status));
    return surface;
}

// Cairo's pixels are native words of premultiplied alpha, red, green and blue.
Surface surface_of(const Picture& picture) {
    const Picture bytes = media::to_8_bit(picture);
    const auto& samples = std::get<std::vector<uint8_t>>(bytes.samples);
    Surface surface = new_surface(static_cast<int>(bytes.width), static_cast<int>(bytes.height));
    const auto stride = static_cast<std::size_t>(cairo_image_surface_get_stride(surface.get()));
    unsigned char* const rows = cairo_image_surface_get_data(surface.get());
    for (std::size_t y = 0; y < bytes.height; ++y) {
        auto* const row = reinterpret_cast<uint32_t*>(rows + y * stride);
        for (std::size_t x = 0; x < bytes.width; ++x) {
            const uint8_t* const pixel = &samples[(y * bytes.width + x) * 4];
            const uint32_t alpha = pixel[3];
            const auto scaled = [alpha](uint32_t channel) { return (channel * alpha + 127) / 255; };
            row[x] = alpha << 24 | scaled(pixel[0]) << 16 | scaled(pixel[1]) << 8 | scaled(pixel[2]);
        }
    }
    cairo_surface_mark_dirty(surface.get());
    return surface;
}

struct Box {
    double x;
    double y;
    double width;
    double height;
};

void draw_checks(cairo_t* context, const Box& box) {
    cairo_save(context);
    cairo_rectangle(context, box.x, box.y, box.width, box.height);
    cairo_clip(context);
    cairo_set_source_rgb(context, 0.22, 0.22, 0.22);
    cairo_paint(context);
    cairo_set_source_rgb(context, 0.30, 0.30, 0.30);
    for (double y = 0; y < box.height; y += kCheck) {
        for (double x = std::fmod(y, 2 * kCheck); x < box.width; x += 2 * kCheck)
            cairo_rectangle(context, box.x + x, box.y + y, kCheck, kCheck);
    }
    cairo_fill(context);
    cairo_restore(context);
}

// As large as the box holds, in its middle.
void draw_picture(cairo_t* context, const Picture& picture, const Box& box) {
    const Surface surface = surface_of(picture);
    const auto width = static_cast<double>(picture.width);
    const auto height = static_cast<double>(picture.height);
    const double scale = std::min(box.width / width, box.height / height);
    cairo_save(context);
    cairo_translate(context, box.x + (box.width - width * scale) / 2,
                    box.y + (box.height - height * scale) / 2);
    cairo_scale(context, scale, scale);
    cairo_set_source_surface(context, surface.get(), 0, 0);
    cairo_pattern_set_filter(cairo_get_source(context), CAIRO_FILTER_GOOD);
    cairo_paint(context);
    cairo_restore(context);
}

// Cut to the width of its cell.
void draw_line(cairo_t* context, const std::string& text, double x, double y, double width) {
    cairo_save(context);
    cairo_rectangle(context, x, y - kLineHeight, width, 2 * kLineHeight);
    cairo_clip(context);
    cairo_move_to(context, x, y);
    cairo_show_text(context, text.c_str());
    cairo_restore(context);
}

void draw_label(cairo_t* context, const std::vector<std::string>& lines, std::size_t most, const Box& box) {
    double y = box.y + box.height;
    for (std::size_t i = 0; i < std::min(lines.size(), most); ++i) {
        const bool is_title = i == 0;
        cairo_select_font_face(context, "sans-serif", CAIRO_FONT_SLANT_NORMAL,
                               is_title ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
        cairo_set_font_size(context, kFontSize);
        const double grey = is_title ? 0.95 : 0.72;
        cairo_set_source_rgb(context, grey, grey, grey);
        y += kLineHeight;
        draw_line(context, lines[i], box.x, y, box.width);
    }
}

Picture picture_of(const Surface& surface, std::size_t width, std::size_t height) {
    cairo_surface_flush(surface.get());
    const auto stride = static_cast<std::size_t>(cairo_image_surface_get_stride(surface.get()));
    const unsigned char* const rows = cairo_image_surface_get_data(surface.get());
    std::vector<uint8_t> samples;
    samples.reserve(width * height * 4);
    for (std::size_t y = 0; y < height; ++y) {
        const auto* const row = reinterpret_cast<const uint32_t*>(rows + y * stride);
        for (std::size_t x = 0; x < width; ++x) {
            for (const int shift : {16, 8, 0})
                samples.push_back(static_cast<uint8_t>(row[x] >> shift));
            samples.push_back(255);
        }
    }
    return {width, height, std::move(samples)};
}

}  // namespace

std::size_t usual_columns(std::size_t cells) {
    return std::max<std::size_t>(static_cast<std::size_t>(std::lround(std::sqrt(double(cells)))), 1) +
           (cells > 6 ? 1 : 0);
}

media::Picture contact_sheet(std::span<const SheetCell> cells, const SheetLayout& layout) {
    if (cells.empty()) throw std::runtime_error("a contact sheet needs pictures");
    const Picture& first = cells.front().picture;
    const auto cell_width = static_cast<double>(layout.cell_width);
    const double cell_height = std::max(
        std::round(cell_width * double(first.height) / double(std::max<std::size_t>(first.width, 1))), 1.0);
    std::size_t lines = 0;
    for (const SheetCell& cell : cells)
        lines = std::max(lines, std::min(cell.lines.size(), layout.most_lines));
    const double row_height = cell_height + double(lines) * kLineHeight + kGap + 6;
    const std::size_t columns = std::clamp<std::size_t>(layout.columns, 1, cells.size());
    const std::size_t rows = (cells.size() + columns - 1) / columns;
    const auto width = static_cast<std::size_t>(2 * kMargin + double(columns) * (cell_width + kGap) - kGap);
    const auto height = static_cast<std::size_t>(2 * kMargin + double(rows) * row_height - kGap);

    const Surface surface = new_surface(static_cast<int>(width), static_cast<int>(height));
    const Context context(cairo_create(surface.get()), cairo_destroy);
    cairo_set_source_rgb(context.get(), 0.11, 0.11, 0.11);
    cairo_paint(context.get());
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const std::size_t row = i / columns;
        const Box box{kMargin + double(i % columns) * (cell_width + kGap), kMargin + double(row) * row_height,
                      cell_width, cell_height};
        draw_checks(context.get(), box);
        draw_picture(context.get(), cells[i].picture, box);
        draw_label(context.get(), cells[i].lines, layout.most_lines, box);
    }
    const cairo_status_t status = cairo_status(context.get());
    if (status != CAIRO_STATUS_SUCCESS) throw std::runtime_error(cairo_status_to_string(status));
    return picture_of(surface, width, height);
}

}  // namespace flumo::cli
