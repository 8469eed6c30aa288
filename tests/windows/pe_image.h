// The import table of a loaded module.
#pragma once

#include <windows.h>

#include <string>

namespace flumo::tests {

/// The slot that holds the address of `name`, whatever library it is imported from. Throws std::runtime_error
/// when the module does not import it.
ULONGLONG& import_slot(HMODULE module, const std::string& name);

}  // namespace flumo::tests
