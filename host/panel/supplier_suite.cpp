// Makes and releases pens, brushes, paths and images, and says which images it takes.
#include <algorithm>
#include <array>

#include "host/callbacks/answer.h"
#include "host/callbacks/refuse.h"
#include "host/panel/panel.h"
#include "host/panel/panel_state.h"

namespace flumo::host {

namespace {

/// The places of the channels in a pixel of four bytes.
struct LayoutRow {
    DRAWBOT_PixelLayout layout;
    int red, green, blue, alpha;
    bool opaque;
    bool premultiplied;
};

constexpr LayoutRow kLayouts[] = {
    {kDRAWBOT_PixelLayout_32RGB, 1, 2, 3, 0, true, false},
    {kDRAWBOT_PixelLayout_32BGR, 2, 1, 0, 3, true, false},
    {kDRAWBOT_PixelLayout_32ARGB_Straight, 1, 2, 3, 0, false, false},
    {kDRAWBOT_PixelLayout_32ARGB_Premul, 1, 2, 3, 0, false, true},
    {kDRAWBOT_PixelLayout_32BGRA_Straight, 2, 1, 0, 3, false, false},
    {kDRAWBOT_PixelLayout_32BGRA_Premul, 2, 1, 0, 3, false, true},
};

uint32_t cairo_pixel(const uint8_t* pixel, const LayoutRow& row) {
    const uint32_t alpha = row.opaque ? 255 : pixel[row.alpha];
    const auto channel = [&](int place) -> uint32_t {
        const uint32_t value = pixel[place];
        return row.opaque || row.premultiplied ? value : (value * alpha + 127) / 255;
    };
    return alpha << 24 | channel(row.red) << 16 | channel(row.green) << 8 | channel(row.blue);
}

CairoSurface image_from(const uint8_t* data, int width, int height, int rowbytes, const LayoutRow& row) {
    CairoSurface surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height));
    uint8_t* target = cairo_image_surface_get_data(surface.get());
    if (!target) return nullptr;
    const int stride = cairo_image_surface_get_stride(surface.get());
    for (int y = 0; y < height; ++y) {
        const uint8_t* in = data + std::ptrdiff_t{y} * rowbytes;
        auto* out = reinterpret_cast<uint32_t*>(target + std::ptrdiff_t{y} * stride);
        for (std::ptrdiff_t x = 0; x < width; ++x)
            out[x] = cairo_pixel(in + 4 * x, row);
    }
    cairo_surface_mark_dirty(surface.get());
    return surface;
}

template <class Reference>
PF_Err make_object(Callback which, DRAWBOT_SupplierRef supplier, Reference* out, auto&& content) {
    return answer(
        which,
        [&](Call& call) -> PF_Err {
            if (!is_state(call, supplier)) return PF_Err_BAD_CALLBACK_PARAM;
            *out = static_cast<Reference>(add_object(call, {content()}));
            return PF_Err_NONE;
        },
        [&] { *out = nullptr; });
}

SPErr new_pen(DRAWBOT_SupplierRef supplier, const DRAWBOT_ColorRGBA* colour, float size,
              DRAWBOT_PenRef* out) {
    return make_object(Callback::kDrawbotNewPen, supplier, out, [&] { return Pen{*colour, size}; });
}

SPErr new_brush(DRAWBOT_SupplierRef supplier, const DRAWBOT_ColorRGBA* colour, DRAWBOT_BrushRef* out) {
    return make_object(Callback::kDrawbotNewBrush, supplier, out, [&] { return Brush{*colour}; });
}

SPErr new_path(DRAWBOT_SupplierRef supplier, DRAWBOT_PathRef* out) {
    return make_object(Callback::kDrawbotNewPath, supplier, out, [] { return Path{}; });
}

SPErr new_image(DRAWBOT_SupplierRef supplier, int width, int height, int rowbytes, DRAWBOT_PixelLayout layout,
                const void* data, DRAWBOT_ImageRef* out) {
    return answer(
        Callback::kDrawbotNewImage,
        [&](Call& call) -> PF_Err {
            const auto* row = std::ranges::find(kLayouts, layout, &LayoutRow::layout);
            if (!is_state(call, supplier)) return PF_Err_BAD_CALLBACK_PARAM;
            if (row == std::end(kLayouts) || width < 1 || height < 1 || rowbytes < 4 * width || !data) {
                return misused(call, MisuseKind::kWrongArgument,
                               "made an image of a size or layout that there is not");
            }
            CairoSurface surface =
                image_from(static_cast<const uint8_t*>(data), width, height, rowbytes, *row);
            if (!surface) return PF_Err_OUT_OF_MEMORY;
            *out = static_cast<DRAWBOT_ImageRef>(add_object(call, {Image{std::move(surface)}}));
            return PF_Err_NONE;
        },
        [&] { *out = nullptr; });
}

template <PixelLayout Layout>
SPErr takes_layout(DRAWBOT_SupplierRef supplier, DRAWBOT_Boolean* out) {
    return answer(
        Callback::kDrawbotPixelLayout,
        [&](Call& call) -> PF_Err {
            if (!is_state(call, supplier)) return PF_Err_BAD_CALLBACK_PARAM;
            *out = state_of(call).panel.options().layout == Layout;
            return PF_Err_NONE;
        },
        [&] { *out = false; });
}

SPErr retain_object(DRAWBOT_ObjectRef reference) {
    return answer(Callback::kDrawbotRetain, [&](Call& call) -> PF_Err {
        DrawingObject* object = find_object(call, reference);
        if (!object) return PF_Err_BAD_CALLBACK_PARAM;
        ++object->references;
        return PF_Err_NONE;
    });
}

SPErr release_object(DRAWBOT_ObjectRef reference) {
    return answer(Callback::kDrawbotRelease, [&](Call& call) -> PF_Err {
        DrawingObject* object = find_object(call, reference);
        if (!object) return PF_Err_BAD_CALLBACK_PARAM;
        if (--object->references > 0) return PF_Err_NONE;
        state_of(call).objects.erase(reference);
        call.host.accounting().take_back(Lent::kDrawbotObject);
        return PF_Err_NONE;
    });
}

DRAWBOT_SupplierSuite1 filled_suite() {
    DRAWBOT_SupplierSuite1 suite{};
    refuse(suite.SupportsText, suite.GetDefaultFontSize, suite.NewDefaultFont);
    suite.NewPen = new_pen;
    suite.NewBrush = new_brush;
    suite.NewPath = new_path;
    suite.NewImageFromBuffer = new_image;
    suite.SupportsPixelLayoutBGRA = suite.PrefersPixelLayoutBGRA = takes_layout<PixelLayout::kBgra>;
    suite.SupportsPixelLayoutARGB = suite.PrefersPixelLayoutARGB = takes_layout<PixelLayout::kArgb>;
    suite.RetainObject = retain_object;
    suite.ReleaseObject = release_object;
    return suite;
}

}  // namespace

const DRAWBOT_SupplierSuite1& supplier_suite() {
    static const DRAWBOT_SupplierSuite1 suite = filled_suite();
    return suite;
}

}  // namespace flumo::host
