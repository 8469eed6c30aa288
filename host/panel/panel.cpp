#include "host/panel/panel.h"

#include <cmath>
#include <stdexcept>

#include "host/panel/panel_state.h"

namespace flumo::host {

namespace {

constexpr double kFull16 = 65535.0;

struct SuiteRow {
    std::string_view name;
    int version;
    const void* (*table)();
};

template <auto Suite>
const void* table_of() {
    return &Suite();
}

constexpr SuiteRow kSuites[] = {
    {kDRAWBOT_DrawSuite, kDRAWBOT_DrawSuite_Version1, table_of<draw_suite>},
    {kDRAWBOT_SupplierSuite, kDRAWBOT_SupplierSuite_Version1, table_of<supplier_suite>},
    {kDRAWBOT_SurfaceSuite, kDRAWBOT_SurfaceSuite_Version2, table_of<surface_suite>},
    {kDRAWBOT_PathSuite, kDRAWBOT_PathSuite_Version1, table_of<path_suite>},
    {kPFAppSuite, kPFAppSuiteVersion4, table_of<app_suite>},
    {kPFEffectCustomUISuite, kPFEffectCustomUISuiteVersion1, table_of<custom_ui_suite>},
};

int scaled(int size, double scale) {
    return static_cast<int>(std::ceil(size * scale));
}

/// Cairo holds colour multiplied by alpha.
uint8_t straight(uint32_t channel, uint32_t alpha) {
    return static_cast<uint8_t>(alpha == 0 ? 0 : (channel * 255 + alpha / 2) / alpha);
}

}  // namespace

// The suites are handed out by a panel only, so a call that reaches them has one.
PanelState& state_of(Call& call) {
    return static_cast<Panel*>(call.suites)->state();
}

Panel::Panel(const PanelOptions& options) : options_(options) {
    if (options.width <= 0 || options.height <= 0 || !(options.scale > 0)) {
        throw std::invalid_argument("a panel needs a width, a height and a scale above 0");
    }
    CairoSurface image(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, scaled(options.width, options.scale),
                                                  scaled(options.height, options.scale)));
    const cairo_status_t status = cairo_surface_status(image.get());
    if (status != CAIRO_STATUS_SUCCESS) {
        throw std::invalid_argument(std::string("a panel of this size: ") + cairo_status_to_string(status));
    }
    CairoContext context(cairo_create(image.get()));
    cairo_scale(context.get(), options.scale, options.scale);
    state_.reset(new PanelState{*this, std::move(image), std::move(context), {}});
    clear();
}

Panel::~Panel() = default;

int Panel::image_width() const {
    return cairo_image_surface_get_width(state_->image.get());
}

int Panel::image_height() const {
    return cairo_image_surface_get_height(state_->image.get());
}

void Panel::clear() {
    const PF_App_Color& colour = options_.background;
    cairo_set_source_rgb(state_->cairo.get(), colour.red / kFull16, colour.green / kFull16,
                         colour.blue / kFull16);
    cairo_paint(state_->cairo.get());
}

std::vector<uint8_t> Panel::rgba() const {
    cairo_surface_t* image = state_->image.get();
    cairo_surface_flush(image);
    const uint8_t* data = cairo_image_surface_get_data(image);
    const auto stride = static_cast<size_t>(cairo_image_surface_get_stride(image));
    std::vector<uint8_t> bytes;
    bytes.reserve(static_cast<size_t>(image_width()) * static_cast<size_t>(image_height()) * 4);
    for (int y = 0; y < image_height(); ++y) {
        const auto* row = reinterpret_cast<const uint32_t*>(data + static_cast<size_t>(y) * stride);
        for (int x = 0; x < image_width(); ++x) {
            const uint32_t alpha = row[x] >> 24;
            for (const int shift : {16, 8, 0})
                bytes.push_back(straight((row[x] >> shift) & 255, alpha));
            bytes.push_back(static_cast<uint8_t>(alpha));
        }
    }
    return bytes;
}

void Panel::write_png(const std::filesystem::path& path) const {
    const cairo_status_t status = cairo_surface_write_to_png(state_->image.get(), path.string().c_str());
    if (status != CAIRO_STATUS_SUCCESS) {
        throw std::runtime_error(path.string() + ": cannot be written: " + cairo_status_to_string(status));
    }
}

const void* Panel::find_suite(std::string_view name, int version) {
    for (const SuiteRow& row : kSuites) {
        if (row.name == name && row.version == version) return row.table();
    }
    return nullptr;
}

DRAWBOT_DrawRef Panel::draw_ref() {
    return reinterpret_cast<DRAWBOT_DrawRef>(state_.get());
}

}  // namespace flumo::host
