#include <dlfcn.h>

#include "host/module/module_error.h"
#include "host/module/module_library.h"

namespace flumo::host {

ModuleLibrary::ModuleLibrary(const std::filesystem::path& path) {
    // An absolute path keeps the loader from searching its own folders.
    handle_ = dlopen(std::filesystem::absolute(path).c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!handle_) throw ModuleError(path.string() + ": not a loadable module: " + dlerror());
}

ModuleLibrary::~ModuleLibrary() {
    dlclose(handle_);
}

void* ModuleLibrary::symbol(const char* name) const {
    return dlsym(handle_, name);
}

}  // namespace flumo::host
