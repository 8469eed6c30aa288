// What a loaded module says about itself in its headers.
#pragma once

#include <windows.h>

#include <set>
#include <string>

namespace flumo::tests {

/// Libraries that the module was linked against, in upper case.
std::set<std::string> imported_libraries(HMODULE module);
/// Names that the module exports, as they stand there.
std::set<std::string> exported_names(HMODULE module);
/// The slot of the module's import table that holds the address of `name`. Throws std::runtime_error when the
/// module does not import it.
ULONGLONG& import_slot(HMODULE module, const std::string& library, const std::string& name);

}  // namespace flumo::tests
