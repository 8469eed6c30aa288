// Stands between the effect and its GL driver: counts the objects that are alive, and fails chosen calls. It
// works by name: this program's own EGL functions come before the library's, and its function of addresses
// hands out counting versions of the GL functions. So it sees the loaded module as it is.
#pragma once

#include <cstdint>

namespace flumo::test {

/// What is made under a name and must be deleted.
enum class GlObject {
    kTexture,
    kFramebuffer,
    kRenderbuffer,
    kVertexArray,
    kBuffer,
    kProgram,
    kContext,
    kCount
};

/// Calls of the driver that can fail.
enum class GlPoint {
    kInitialize,
    kChooseConfig,
    kCreateContext,
    kMakeCurrent,
    kCompile,
    kLink,
    kFramebufferStatus,
    kMapBuffer,
    kCount,
};

/// All functions are for any thread, but only one test at a time plans failures.
namespace gl_spy {

const char* name(GlPoint point);
/// Made and not deleted, over all contexts of the process; every kind.
int64_t alive();
int64_t alive(GlObject kind);
/// Calls since the last plan.
int64_t calls(GlPoint point);

/// Call number `nth` of this kind from now on, counted from 0, fails.
void fail(GlPoint point, int64_t nth);
/// All calls of this kind from now on fail.
void fail_every(GlPoint point);
/// Nothing fails, and counting starts anew.
void clear();

/// The driver calls its renderer so from now on; null gives back its own name.
void rename_renderer(const char* name);

}  // namespace gl_spy

}  // namespace flumo::test
