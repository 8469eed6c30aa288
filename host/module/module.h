// A loaded effect module and what it says about itself.
//
//   Module module("build/release/Flumo.so");
//   std::cout << module.register_plugin().name;
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "effect_api/registration.h"
#include "host/module/module_error.h"

namespace flumo::host {

class ModuleLibrary;

/// What the effect tells its host when it registers.
struct Registration {
    std::string name;
    std::string match_name;
    std::string category;
    std::string entry_point;
    A_long kind = 0;
    A_long api_major = 0;
    A_long api_minor = 0;
    A_long reserved = 0;
};

/// Owns one loaded module; its end unloads it, so it must outlive every Host made with it.
class Module {
  public:
    /// Loads the file. Throws ModuleError when it cannot be loaded or lacks one of the two exports.
    explicit Module(const std::filesystem::path& path);
    /// An effect that is linked into this program; nothing is loaded.
    Module(EffectMainFunction effect_main, PluginDataEntry plugin_data_entry);
    ~Module();
    Module(const Module&) = delete;
    Module& operator=(const Module&) = delete;
    Module(Module&&) noexcept;
    Module& operator=(Module&&) noexcept;

    EffectMainFunction effect_main() const { return effect_main_; }
    /// Runs the registration export. Throws ModuleError when it reports an error or registers nothing.
    Registration register_plugin() const;
    /// Empty for an effect that is linked in.
    const std::filesystem::path& path() const { return path_; }

  private:
    std::unique_ptr<ModuleLibrary> library_;
    std::filesystem::path path_;
    EffectMainFunction effect_main_ = nullptr;
    PluginDataEntry plugin_data_entry_ = nullptr;
};

}  // namespace flumo::host
