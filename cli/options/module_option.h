// The module that a command loads.
#pragma once

#include <filesystem>
#include <string>

#include "base/failure.h"

namespace flumo::cli {

/// What was given for --module or MODULE. An empty text, such as that of an unset variable of a shell, is a
/// usage error: it must not stand for the default module. Throws Failure.
inline std::filesystem::path parse_module(const std::string& text) {
    if (text.empty()) throw usage_failure("module '': expected a file");
    return text;
}

}  // namespace flumo::cli
