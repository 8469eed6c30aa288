// `flumo check`.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "cli/terminal/exit_status.h"
#include "cli/terminal/stdout_guard.h"

namespace CLI {
class App;
}

namespace flumo::cli {

struct CheckOptions {
    std::filesystem::path module;
    int level = 5;
    uint64_t seed = 1;
    std::string reproduce;  ///< "CASE" or "CASE:STEP"
    double timeout = 120;   ///< seconds that one case may take
    std::filesystem::path expectation;
    std::filesystem::path resource;
    bool json = false;
    bool notes = false;
    bool list = false;

    // Passed to the processes that this program starts of itself.
    std::string played;  ///< the case to play in this process
    std::string only;    ///< its only step
    std::string after;   ///< the step after which it starts
};

/// Adds the options to `command`; parsing fills `options`, which must outlive it.
void add_check_options(CLI::App& command, CheckOptions& options);

/// Plays the module through the cases, each in a process of its own. Done when nothing was found, otherwise
/// kFrameFailed. Throws Failure for options that make no sense and for a module that is no file.
ExitStatus check(const CheckOptions& options, const StdoutGuard& output);

}  // namespace flumo::cli
