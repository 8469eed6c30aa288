// Commands and options that do not exist.
#pragma once

#include <optional>
#include <span>
#include <string>

#include "base/failure.h"

namespace CLI {
class App;
}

namespace flumo::cli {

/// A word of the command line that names no command or option of `app`.
struct UnknownWord {
    std::size_t position = 0;  ///< of the word in the command line
    Failure failure;           ///< (usage) with the nearest name as a suggestion
};

/// The first such word of `words`, the command line without the program's name.
std::optional<UnknownWord> find_unknown_word(const CLI::App& app, std::span<const std::string> words);

}  // namespace flumo::cli
