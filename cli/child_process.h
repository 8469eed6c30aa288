// Runs another program and takes what it says.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace flumo::cli {

struct ChildResult {
    int status = 0;               ///< its exit status, 128 + N when signal N ended it
    std::vector<uint8_t> output;  ///< all of its standard output
    std::string errors;           ///< all of its standard error
};

/// Runs the program arguments[0], found by PATH, with no standard input, and waits for its end.
/// Nothing is returned when it cannot be started, as when it is not installed.
std::optional<ChildResult> run_child(const std::vector<std::string>& arguments);

}  // namespace flumo::cli
