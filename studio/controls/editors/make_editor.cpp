#include "studio/controls/editors/make_editor.h"

#include "studio/controls/editors/angle_editor.h"
#include "studio/controls/editors/choice_editor.h"
#include "studio/controls/editors/gradient_editor.h"
#include "studio/controls/editors/layer_editor.h"
#include "studio/controls/editors/number_editor.h"

namespace flumo::studio {

std::unique_ptr<ControlEditor> make_editor(const scene::Control& control, host::Host& host) {
    switch (control.kind) {
        case scene::ControlKind::kSlider:
        case scene::ControlKind::kFloatSlider:
            return std::make_unique<NumberEditor>(control);
        case scene::ControlKind::kAngle:
            return std::make_unique<AngleEditor>(control);
        case scene::ControlKind::kPopup:
            return std::make_unique<PopupEditor>(control);
        case scene::ControlKind::kCheckbox:
            return std::make_unique<CheckEditor>(control);
        case scene::ControlKind::kLayer:
            return std::make_unique<LayerEditor>(control);
        case scene::ControlKind::kArbitrary:
            return std::make_unique<GradientEditor>(control, host);
        default:
            return nullptr;
    }
}

}  // namespace flumo::studio
