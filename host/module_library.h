// The operating system's side of a module; one source file for each system.
#pragma once

#include "host/module.h"

namespace flumo::host {

class Module::Library {
  public:
    /// Throws ModuleError.
    explicit Library(const std::filesystem::path& path);
    ~Library();
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    /// Null when the module does not export the name.
    void* symbol(const char* name) const;

  private:
    void* handle_ = nullptr;
};

}  // namespace flumo::host
