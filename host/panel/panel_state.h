// What the drawing suites share: the image and the objects that the effect has made.
#pragma once

#include <cairo.h>

#include <memory>
#include <string>
#include <unordered_map>
#include <variant>
#include <vector>

#include "effect_api/suites.h"
#include "host/call.h"

namespace flumo::host {

class Panel;

struct CairoDelete {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    void operator()(cairo_t* context) const { cairo_destroy(context); }
};
using CairoSurface = std::unique_ptr<cairo_surface_t, CairoDelete>;
using CairoContext = std::unique_ptr<cairo_t, CairoDelete>;

struct Pen {
    DRAWBOT_ColorRGBA colour;
    double size;
};
struct Brush {
    DRAWBOT_ColorRGBA colour;
};
struct Path {
    std::vector<cairo_path_data_t> data;
};
struct Image {
    CairoSurface surface;
};

/// An object that the effect made and must release.
struct DrawingObject {
    std::variant<Pen, Brush, Path, Image> content;
    int references = 1;
};

/// The draw, supplier and surface references that the effect gets all point at this.
struct PanelState {
    Panel& panel;
    CairoSurface image;
    CairoContext cairo;
    std::unordered_map<const void*, std::unique_ptr<DrawingObject>> objects;
};

/// The state that the running call draws on.
PanelState& state_of(Call& call);

/// Whether a reference is the running call's; otherwise notes a misuse.
bool is_state(Call& call, const void* reference);

/// Puts an object into the state and counts it; gives the effect's reference to it.
void* add_object(Call& call, DrawingObject object);
/// The object if it lives, otherwise null with a misuse noted.
DrawingObject* find_object(Call& call, const void* reference);
/// As find_object(), for one kind.
template <class Content>
Content* find_content(Call& call, const void* reference) {
    DrawingObject* object = find_object(call, reference);
    return object ? std::get_if<Content>(&object->content) : nullptr;
}

const DRAWBOT_DrawbotSuite1& draw_suite();
const DRAWBOT_SupplierSuite1& supplier_suite();
const DRAWBOT_SurfaceSuite2& surface_suite();
const DRAWBOT_PathSuite1& path_suite();
const PFAppSuite4& app_suite();
const PF_EffectCustomUISuite1& custom_ui_suite();

}  // namespace flumo::host
