// A small set of controls, one of each kind, for tests that need no effect.
#pragma once

#include "scene/control.h"

namespace flumo::scene {

/// Type (popup of 3 with a fourth name that it does not declare), Scale (float slider), Count (slider),
/// Evolution (angle), Loop (checkbox), Layer, Gradient, and group marks around some.
const ControlCatalog& sample_catalog();

}  // namespace flumo::scene
