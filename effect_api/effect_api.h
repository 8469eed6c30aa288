// Everything of the host interface that the effect or a host for it needs.
#pragma once

#include "effect_api/arbitrary.h"
#include "effect_api/commands.h"
#include "effect_api/drawbot.h"
#include "effect_api/effect.h"
#include "effect_api/event.h"
#include "effect_api/registration.h"
#include "effect_api/smart.h"
#include "effect_api/suites.h"
