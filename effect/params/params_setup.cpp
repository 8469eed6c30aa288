#include "effect/params/params_setup.h"

#include <memory>

#include "effect/gradient/callbacks/gradient_callbacks.h"
#include "effect/gradient/value/gradient_lock.h"
#include "effect/identity/effect_strings.h"
#include "effect/params/param_ids.h"
#include "effect/suites/errors.h"
#include "effect/suites/suite_handler.h"
#include "effect_api/event.h"

namespace flumo {
namespace {

/// Size of a gradient editor in the panel, pixels.
constexpr A_short kEditorWidth = 150;
constexpr A_short kEditorHeight = 50;

void FillGroupStart(PF_ParamDef& def) {
    def.flags = PF_ParamFlag_START_COLLAPSED;
}

void FillLayer(PF_ParamDef& def) {
    def.u.ld.dephault = PF_LayerDefault_NONE;
}

void FillAngle(PF_ParamDef& def) {
    def.u.ad.value = 0;
    def.u.ad.dephault = 0;
}

void FillCheckbox(const Control& control, PF_ParamDef& def) {
    def.u.bd.value = static_cast<PF_ParamValue>(control.defaultValue);
    def.u.bd.dephault = static_cast<PF_Boolean>(control.defaultValue);
    def.u.bd.u.nameptr = GetStringPtr(control.nameRow + 1);
}

void FillPopup(const Control& control, PF_ParamDef& def) {
    def.flags = PF_ParamFlag_CANNOT_TIME_VARY | PF_ParamFlag_CANNOT_INTERP;
    def.u.pd.value = static_cast<PF_ParamValue>(control.defaultValue);
    def.u.pd.dephault = static_cast<A_short>(control.defaultValue);
    def.u.pd.num_choices = control.choiceCount;
    def.u.pd.u.namesptr = GetStringPtr(control.choicesRow);
}

void FillSlider(const Control& control, PF_ParamDef& def) {
    PF_SliderDef& slider = def.u.sd;
    slider.value = static_cast<PF_ParamValue>(control.defaultValue);
    slider.valid_min = static_cast<PF_ParamValue>(control.valid.min);
    slider.valid_max = static_cast<PF_ParamValue>(control.valid.max);
    slider.slider_min = static_cast<PF_ParamValue>(control.slider.min);
    slider.slider_max = static_cast<PF_ParamValue>(control.slider.max);
    slider.dephault = static_cast<PF_ParamValue>(control.defaultValue);
}

void FillFloatSlider(const Control& control, PF_ParamDef& def) {
    PF_FloatSliderDef& slider = def.u.fs_d;
    slider.value = control.defaultValue;
    slider.valid_min = control.valid.min;
    slider.valid_max = control.valid.max;
    slider.slider_min = control.slider.min;
    slider.slider_max = control.slider.max;
    slider.dephault = control.defaultValue;
    slider.precision = PF_Precision_TENTHS;
    slider.display_flags = static_cast<PF_ValueDisplayFlags>(control.display);
    slider.curve_tolerance = 0.05F;
}

/// All but the default value, which is a handle of its own.
void FillGradient(const Control& control, PF_ParamDef& def) {
    def.ui_flags = PF_PUI_CONTROL | PF_PUI_DONT_ERASE_CONTROL;
    def.ui_width = kEditorWidth;
    def.ui_height = kEditorHeight;
    def.u.arb_d.id = static_cast<A_short>(control.diskId);
    def.u.arb_d.refconPV = GradientRefcon();
}

/// What a kind of control needs beside name, type and disk id.
void FillKind(const Control& control, PF_ParamDef& def) {
    switch (control.kind) {
        case ControlKind::GroupStart:
            return FillGroupStart(def);
        case ControlKind::GroupEnd:
            return;
        case ControlKind::Layer:
            return FillLayer(def);
        case ControlKind::Angle:
            return FillAngle(def);
        case ControlKind::Checkbox:
            return FillCheckbox(control, def);
        case ControlKind::Popup:
            return FillPopup(control, def);
        case ControlKind::Slider:
            return FillSlider(control, def);
        case ControlKind::FloatSlider:
            return FillFloatSlider(control, def);
        case ControlKind::Gradient:
            return FillGradient(control, def);
    }
}

/// Describes a control in `def`. A group's end sets id and type alone and is declared with the name, the
/// flags and the value of the control before it: the host reads nothing else of it.
void Describe(const Control& control, PF_InData* in_data, PF_ParamDef& def) {
    if (control.kind != ControlKind::GroupEnd) {
        def = PF_ParamDef();
        in_data->utils->ansi.strcpy(def.name, GetStringPtr(control.nameRow));
    }
    def.uu.id = ParamDiskIdOf(control.section);
    def.param_type = static_cast<PF_ParamType>(control.kind);
    FillKind(control, def);
}

/// Makes the values that the gradient controls start with, and remembers the first failure, so that the
/// declaration goes on without them.
class DefaultGradients {
  public:
    DefaultGradients(PF_InData* in_data, AEGP_SuiteHandler& suites) : in_data_(in_data), suites_(suites) {}

    /// A new handle, which becomes the host's when it is declared; null after a failure of this or an earlier
    /// gradient.
    GradientHandle Make(Section section) {
        GradientHandle made = nullptr;
        if (err_ != PF_Err_NONE) return made;
        err_ = CommandResult([&] {
            const PF_Err err = GradientNew(in_data_, &made);
            if (err == PF_Err_NONE && section == Section::Gradient) BlackenFirstStop(made);
            return err;
        });
        return made;
    }

    PF_Err Error() const { return err_; }

  private:
    /// The lock is kept until the end of the declaration.
    void BlackenFirstStop(GradientHandle gradient) {
        lock_ = std::make_unique<GradientLock>(suites_.HandleSuite(), gradient);
        GradientStop& first = lock_->Stops().begin()->second;
        first.r = first.g = first.b = 0.0F;
    }

    PF_InData* in_data_;
    AEGP_SuiteHandler& suites_;
    std::unique_ptr<GradientLock> lock_;
    PF_Err err_ = PF_Err_NONE;
};

PF_Err RegisterEditors(PF_InData* in_data) {
    PF_CustomUIInfo info{};
    info.events = PF_CustomEFlag_EFFECT;
    return in_data->inter.register_ui(in_data->effect_ref, &info);
}

}  // namespace

PF_Err ParamsSetup(PF_InData* in_data, PF_OutData* out_data) {
    AEGP_SuiteHandler suites(in_data->pica_basicP);
    DefaultGradients gradients(in_data, suites);
    PF_ParamDef def{};
    out_data->num_params = 1;
    for (const Control& control : kControls) {
        const bool isGradient = control.kind == ControlKind::Gradient;
        const GradientHandle made = isGradient ? gradients.Make(control.section) : nullptr;
        Describe(control, in_data, def);
        if (isGradient) def.u.arb_d.dephault = made;
        ++out_data->num_params;
        const PF_Err err = in_data->inter.add_param(in_data->effect_ref, -1, &def);
        if (err != PF_Err_NONE) return err;
    }
    return gradients.Error() != PF_Err_NONE ? gradients.Error() : RegisterEditors(in_data);
}

}  // namespace flumo
