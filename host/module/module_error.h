// How a file fails to be an effect module.
#pragma once

#include <stdexcept>

namespace flumo::host {

/// A file that is no effect module; the text names the file and what was expected of it.
struct ModuleError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

}  // namespace flumo::host
