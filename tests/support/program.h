// A program as its caller meets it: what it said, and how it ended.
#pragma once

#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

#include "base/child_process.h"

namespace flumo::test {

struct Said {
    int status;
    std::string output;
    std::string errors;
};

/// Runs it to its end; throws where it cannot be started.
inline Said run_program(const std::vector<std::string>& command) {
    const auto result = run_child(command);
    if (!result) throw std::runtime_error("cannot start " + command.front());
    return {result->status, {result->output.begin(), result->output.end()}, result->errors};
}

inline bool is_one_line(const std::string& text) {
    return std::ranges::count(text, '\n') == 1 && text.ends_with('\n') && text.starts_with("flumo: ");
}

}  // namespace flumo::test
