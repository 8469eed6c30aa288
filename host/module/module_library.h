// The operating system's side of a module; one source file for each system.
#pragma once

#include <filesystem>

namespace flumo::host {

class ModuleLibrary {
  public:
    /// Throws ModuleError.
    explicit ModuleLibrary(const std::filesystem::path& path);
    ~ModuleLibrary();
    ModuleLibrary(const ModuleLibrary&) = delete;
    ModuleLibrary& operator=(const ModuleLibrary&) = delete;

    /// Null when the module does not export the name.
    void* symbol(const char* name) const;

  private:
    void* handle_ = nullptr;
};

}  // namespace flumo::host
