// Something that an effect did and should not have done.
#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>

#include "judge/engine/subject.h"

namespace flumo::judge {

struct Finding {
    int level = 0;
    /// Name of the case.
    std::string test;
    std::string step;
    uint64_t seed = 0;
    std::string expected;
    std::string seen;
    /// Worth knowing, but breaks no rule.
    bool is_note = false;

    bool operator==(const Finding&) const = default;
};

/// One line, ended.
std::string line_of(const Finding& finding, const Subject& subject);
nlohmann::ordered_json json_of(const Finding& finding, const Subject& subject);

}  // namespace flumo::judge
