// The editor that a control gets.
#pragma once

#include <memory>

#include "studio/controls/editors/control_editor.h"

namespace flumo::host {
class Host;
}

namespace flumo::studio {

/// The editor for the control's kind; null for a group mark. Gradients are edited by the effect that `host`
/// has set up, which must outlive the editor.
std::unique_ptr<ControlEditor> make_editor(const scene::Control& control, host::Host& host);

}  // namespace flumo::studio
