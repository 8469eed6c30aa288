// The module under test as a host on Windows has it: loaded, with its platform calls redirected.
#pragma once

#include <windows.h>

#include "host/module/module.h"
#include "tests/windows/platform_spy.h"

namespace flumo::tests {

/// One in a process: a second load meets the window classes of the first, and its set-up is refused.
class WindowsModule {
  public:
    WindowsModule() { spy::install(GetModuleHandleA("Flumo.aex")); }

    const host::Module& module() const { return module_; }

  private:
    host::Module module_{FLUMO_MODULE};
};

}  // namespace flumo::tests
