// `flumo check` as a process, and what it says as JSON.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace flumo::judge::test {

struct Checked {
    int status = 0;
    std::string errors;
    /// The output; discarded when it was no JSON.
    nlohmann::json report;

    /// What the findings have under that key.
    std::vector<std::string> each(const char* key) const;
    /// "CASE: EXPECTED; SEEN", a line each.
    std::string findings() const;
};

/// Runs `flumo check --json` with these arguments.
Checked flumo_check(std::vector<std::string> arguments);
/// Path of the small effect under the name of a fault, or sound: "Sound".
std::string broken_module(const std::string& fault);

}  // namespace flumo::judge::test
