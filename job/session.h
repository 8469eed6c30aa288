// The effect, loaded and set up, with its controls by id.
#pragma once

#include <filesystem>

#include "host/host.h"
#include "host/module/module.h"
#include "scene/control.h"

namespace flumo::job {

/// Where the effect lies: `given`, or Flumo.so beside this program, or ../lib/flumo/Flumo.so from there.
std::filesystem::path module_path(const std::filesystem::path& given);

/// What a session is for. Controls can be listed and gradients edited without OpenGL; frames need it.
enum class Use { kRendering, kControlsAlone };

/// Instances and arbitrary values must be gone before the session ends.
class Session {
  public:
    /// Loads the module, which stays loaded until the process ends, and runs global set-up (for rendering
    /// only) and parameter set-up. Throws Failure: (unreadable input) for a module that is none, (no OpenGL)
    /// when global set-up fails.
    explicit Session(const std::filesystem::path& given_module, Use use = Use::kRendering);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    host::Host& host() { return host_; }
    const host::Module& module() const { return module_; }
    const scene::ControlCatalog& catalog() const { return catalog_; }

  private:
    host::Module module_;
    host::Host host_;
    scene::ControlCatalog catalog_;
};

}  // namespace flumo::job
