// `flumo completion`.
#pragma once

#include <string>
#include <string_view>

namespace CLI {
class App;
}

namespace flumo::cli {

/// A script for `shell` (bash, zsh or fish) that completes the commands and options of `app` and the ids
/// of the controls. Throws Failure (usage) for another shell.
std::string completion_script(const CLI::App& app, std::string_view shell);

}  // namespace flumo::cli
