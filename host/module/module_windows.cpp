#include <windows.h>

#include <system_error>

#include "host/module/module_error.h"
#include "host/module/module_library.h"

namespace flumo::host {

ModuleLibrary::ModuleLibrary(const std::filesystem::path& path) {
    handle_ = LoadLibraryW(std::filesystem::absolute(path).c_str());
    if (!handle_) {
        const auto code = static_cast<int>(GetLastError());
        throw ModuleError(path.string() + ": not a loadable module: " + std::system_category().message(code));
    }
}

ModuleLibrary::~ModuleLibrary() {
    FreeLibrary(static_cast<HMODULE>(handle_));
}

void* ModuleLibrary::symbol(const char* name) const {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(handle_), name));
}

}  // namespace flumo::host
