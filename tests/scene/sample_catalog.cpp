#include "tests/scene/sample_catalog.h"

#include <cstring>

namespace flumo::scene {
namespace {

PF_ParamDef param(PF_ParamType type, const char* name) {
    PF_ParamDef def = {};
    def.param_type = type;
    std::strncpy(def.name, name, sizeof def.name - 1);
    return def;
}

PF_ParamDef popup() {
    PF_ParamDef def = param(PF_Param_POPUP, "Type of it");
    def.flags = PF_ParamFlag_CANNOT_TIME_VARY | PF_ParamFlag_CANNOT_INTERP;
    def.u.pd.num_choices = 3;
    def.u.pd.dephault = 1;
    def.u.pd.u.namesptr = "Fluid|Voronoi|Smoke|Hidden";
    return def;
}

PF_ParamDef float_slider() {
    PF_ParamDef def = param(PF_Param_FLOAT_SLIDER, "Scale of it");
    def.u.fs_d.valid_min = -1000000;
    def.u.fs_d.valid_max = 1000000;
    def.u.fs_d.slider_max = 100;
    def.u.fs_d.dephault = 1.4F;
    def.u.fs_d.display_flags = PF_ValueDisplayFlag_PERCENT;
    return def;
}

PF_ParamDef slider() {
    PF_ParamDef def = param(PF_Param_SLIDER, "Count of it");
    def.u.sd.valid_min = 1;
    def.u.sd.valid_max = 1000;
    return def;
}

ControlCatalog make_catalog() {
    const std::pair<const char*, PF_ParamDef> registered[] = {
        {"OuterBegin", param(PF_Param_GROUP_START, "Outer")},
        {"Type", popup()},
        {"InnerBegin", param(PF_Param_GROUP_START, "Inner")},
        {"Scale", float_slider()},
        {"Count", slider()},
        {"InnerEnd", param(PF_Param_GROUP_END, "")},
        {"OuterEnd", param(PF_Param_GROUP_END, "")},
        {"Evolution", param(PF_Param_ANGLE, "Evolution of it")},
        {"Loop", param(PF_Param_CHECKBOX, "Loop of it")},
        {"Layer", param(PF_Param_LAYER, "Layer of it")},
        {"Gradient", param(PF_Param_ARBITRARY_DATA, "Gradient of it")},
    };
    std::vector<Control> controls;
    for (const auto& [id, definition] : registered) {
        controls.push_back({host::read_control(definition, static_cast<int>(controls.size()) + 1, {}), id});
    }
    return ControlCatalog(std::move(controls));
}

}  // namespace

const ControlCatalog& sample_catalog() {
    static const ControlCatalog catalog = make_catalog();
    return catalog;
}

}  // namespace flumo::scene
