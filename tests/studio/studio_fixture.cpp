#include "tests/studio/studio_fixture.h"

#include <dlfcn.h>

namespace flumo::studio::test {

job::Session& session() {
    // At the end of the process libEGL unloads the driver, and what Mesa holds until then would be a leak to
    // a leak checker.
    static void* const driver = dlopen("libEGL_mesa.so.0", RTLD_NOW | RTLD_NODELETE);
    static_cast<void>(driver);
    static job::Session session(FLUMO_MODULE);
    return session;
}

}  // namespace flumo::studio::test
