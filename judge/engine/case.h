// One case that an effect is played through.
#pragma once

#include <string_view>

namespace flumo::judge {

class CaseContext;

inline constexpr int kHighestLevel = 5;

struct Case {
    std::string_view name;
    /// 1 entry and registration, 2 controls and state, 3 frames, 4 events and drawing, 5 faults and threads.
    int level;
    void (*play)(CaseContext&);
    /// What it checks, in a line.
    std::string_view about;
};

}  // namespace flumo::judge
