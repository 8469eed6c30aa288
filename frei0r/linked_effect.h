// The effect that is part of this file.
#pragma once

#include "host/module/module.h"

namespace flumo::frei0r {

host::Module linked_effect();

}  // namespace flumo::frei0r
