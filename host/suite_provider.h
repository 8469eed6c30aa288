// Suites that a host offers during one call only, such as those of a panel.
#pragma once

#include <string_view>

#include "effect_api/drawbot.h"

namespace flumo::host {

class SuiteProvider {
  public:
    virtual ~SuiteProvider() = default;
    /// The suite's table, or null when this provider does not have it.
    virtual const void* find_suite(std::string_view name, int version) = 0;
    /// What an event's context refers to; null when nothing can be drawn on.
    virtual DRAWBOT_DrawRef draw_ref() = 0;
};

}  // namespace flumo::host
