#include "tests/faults/gl_spy.h"

#include <EGL/egl.h>
#include <GL/gl.h>
#include <GL/glx.h>
#include <dlfcn.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <string_view>

namespace flumo::test {
namespace {

constexpr auto kPoints = static_cast<size_t>(GlPoint::kCount);
constexpr auto kObjects = static_cast<size_t>(GlObject::kCount);
constexpr int64_t kNone = -1;
constexpr int64_t kEvery = -2;

std::array<std::atomic<int64_t>, kObjects> living{};
std::array<std::atomic<int64_t>, kPoints> counted{};
std::atomic<GlPoint> failing{GlPoint::kCount};
std::atomic<int64_t> failing_call{kNone};

void count(GlObject kind, int64_t change) {
    living[static_cast<size_t>(kind)] += change;
}

/// Counts one call; whether it is to fail.
bool fails(GlPoint point) {
    const int64_t nth = counted[static_cast<size_t>(point)]++;
    return point == failing && (failing_call == kEvery || failing_call == nth);
}

/// The function that this program's own one of the same name hides.
template <class Function>
Function hidden(const char* name) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

using Address = void (*)();

/// The driver's own glGen... and glDelete... of one kind, and what the effect gets in their place.
template <GlObject kKind>
struct Names {
    using Gen = void (*)(GLsizei, GLuint*);
    using Delete = void (*)(GLsizei, const GLuint*);
    static inline std::atomic<Gen> driver_gen;
    static inline std::atomic<Delete> driver_delete;

    static void gen(GLsizei n, GLuint* names) {
        driver_gen.load()(n, names);
        count(kKind, n);
    }
    static void erase(GLsizei n, const GLuint* names) {
        driver_delete.load()(n, names);
        count(kKind, -(n - std::count(names, names + n, 0U)));
    }
    static Address take_gen(Address driver) {
        driver_gen = reinterpret_cast<Gen>(driver);
        return reinterpret_cast<Address>(&gen);
    }
    static Address take_delete(Address driver) {
        driver_delete = reinterpret_cast<Delete>(driver);
        return reinterpret_cast<Address>(&erase);
    }
};

/// glGetShaderiv or glGetProgramiv whose answer about one status can be "failed".
template <GlPoint kPoint, GLenum kStatus>
struct StatusQuery {
    using Query = void (*)(GLuint, GLenum, GLint*);
    static inline std::atomic<Query> driver;

    static void query(GLuint object, GLenum what, GLint* answer) {
        driver.load()(object, what, answer);
        if (what == kStatus && fails(kPoint)) *answer = 0;
    }
    static Address take(Address address) {
        driver = reinterpret_cast<Query>(address);
        return reinterpret_cast<Address>(&query);
    }
};

std::atomic<GLenum (*)(GLenum)> driver_status;
std::atomic<void* (*)(GLenum, GLenum)> driver_map;

GLenum framebuffer_status(GLenum target) {
    return fails(GlPoint::kFramebufferStatus) ? GLenum{GL_FRAMEBUFFER_UNSUPPORTED}
                                              : driver_status.load()(target);
}

void* map_buffer(GLenum target, GLenum access) {
    return fails(GlPoint::kMapBuffer) ? nullptr : driver_map.load()(target, access);
}

std::atomic<GLuint (*)()> driver_create_program;
std::atomic<void (*)(GLuint)> driver_delete_program;
std::atomic<const GLubyte* (*)(GLenum)> driver_string;
std::atomic<const char*> renderer_name;

GLuint create_program() {
    count(GlObject::kProgram, 1);
    return driver_create_program.load()();
}

void delete_program(GLuint program) {
    count(GlObject::kProgram, program != 0 ? -1 : 0);
    driver_delete_program.load()(program);
}

const GLubyte* get_string(GLenum what) {
    const char* const name = renderer_name;
    return what == GL_RENDERER && name != nullptr ? reinterpret_cast<const GLubyte*>(name)
                                                  : driver_string.load()(what);
}

/// Hands out `replacement` and keeps the driver's own function.
template <auto& kDriver, auto kReplacement>
Address take(Address driver) {
    kDriver = reinterpret_cast<decltype(kDriver.load())>(driver);
    return reinterpret_cast<Address>(kReplacement);
}

struct Hook {
    std::string_view name;
    Address (*take)(Address driver);
};

constexpr Hook kHooks[] = {
    {"glGenTextures", Names<GlObject::kTexture>::take_gen},
    {"glDeleteTextures", Names<GlObject::kTexture>::take_delete},
    {"glGenFramebuffers", Names<GlObject::kFramebuffer>::take_gen},
    {"glDeleteFramebuffers", Names<GlObject::kFramebuffer>::take_delete},
    {"glGenRenderbuffers", Names<GlObject::kRenderbuffer>::take_gen},
    {"glDeleteRenderbuffers", Names<GlObject::kRenderbuffer>::take_delete},
    {"glGenVertexArrays", Names<GlObject::kVertexArray>::take_gen},
    {"glDeleteVertexArrays", Names<GlObject::kVertexArray>::take_delete},
    {"glGenBuffers", Names<GlObject::kBuffer>::take_gen},
    {"glDeleteBuffers", Names<GlObject::kBuffer>::take_delete},
    {"glGetShaderiv", StatusQuery<GlPoint::kCompile, GL_COMPILE_STATUS>::take},
    {"glGetProgramiv", StatusQuery<GlPoint::kLink, GL_LINK_STATUS>::take},
    {"glCheckFramebufferStatus", take<driver_status, framebuffer_status>},
    {"glMapBuffer", take<driver_map, map_buffer>},
    {"glCreateProgram", take<driver_create_program, create_program>},
    {"glDeleteProgram", take<driver_delete_program, delete_program>},
    {"glGetString", take<driver_string, get_string>},
};

}  // namespace

namespace gl_spy {

const char* name(GlPoint point) {
    constexpr const char* names[] = {
        "eglInitialize",     "eglChooseConfig", "eglCreateContext",         "eglMakeCurrent",
        "GL_COMPILE_STATUS", "GL_LINK_STATUS",  "glCheckFramebufferStatus", "glMapBuffer"};
    static_assert(std::size(names) == kPoints);
    return names[static_cast<size_t>(point)];
}

int64_t alive() {
    int64_t sum = 0;
    for (const auto& kind : living)
        sum += kind;
    return sum;
}

int64_t alive(GlObject kind) {
    return living[static_cast<size_t>(kind)];
}

int64_t calls(GlPoint point) {
    return counted[static_cast<size_t>(point)];
}

void fail(GlPoint point, int64_t nth) {
    clear();
    failing = point;
    failing_call = nth;
}

void fail_every(GlPoint point) {
    fail(point, kEvery);
}

void clear() {
    failing_call = kNone;
    std::ranges::fill(counted, 0);
}

void rename_renderer(const char* name) {
    renderer_name = name;
}

}  // namespace gl_spy

}  // namespace flumo::test

using namespace flumo::test;

// The names that other libraries of this process find before the driver's.
extern "C" {
#pragma GCC visibility push(default)

EGLBoolean eglInitialize(EGLDisplay display, EGLint* major, EGLint* minor) {
    static const auto driver = hidden<decltype(&eglInitialize)>("eglInitialize");
    return fails(GlPoint::kInitialize) ? EGL_FALSE : driver(display, major, minor);
}

EGLBoolean eglChooseConfig(EGLDisplay display, const EGLint* wanted, EGLConfig* configs, EGLint size,
                           EGLint* found) {
    static const auto driver = hidden<decltype(&eglChooseConfig)>("eglChooseConfig");
    return fails(GlPoint::kChooseConfig) ? EGL_FALSE : driver(display, wanted, configs, size, found);
}

EGLContext eglCreateContext(EGLDisplay display, EGLConfig config, EGLContext share, const EGLint* wanted) {
    static const auto driver = hidden<decltype(&eglCreateContext)>("eglCreateContext");
    if (fails(GlPoint::kCreateContext)) return EGL_NO_CONTEXT;
    const EGLContext context = driver(display, config, share, wanted);
    count(GlObject::kContext, context != EGL_NO_CONTEXT ? 1 : 0);
    return context;
}

EGLBoolean eglDestroyContext(EGLDisplay display, EGLContext context) {
    static const auto driver = hidden<decltype(&eglDestroyContext)>("eglDestroyContext");
    const EGLBoolean done = driver(display, context);
    count(GlObject::kContext, done ? -1 : 0);
    return done;
}

// Letting go of a context never fails: a caller's own could not be given back otherwise.
EGLBoolean eglMakeCurrent(EGLDisplay display, EGLSurface draw, EGLSurface read, EGLContext context) {
    static const auto driver = hidden<decltype(&eglMakeCurrent)>("eglMakeCurrent");
    const bool is_headless = context != EGL_NO_CONTEXT && draw == EGL_NO_SURFACE;
    return is_headless && fails(GlPoint::kMakeCurrent) ? EGL_FALSE : driver(display, draw, read, context);
}

__GLXextFuncPtr glXGetProcAddress(const GLubyte* name) {
    static const auto driver = hidden<decltype(&glXGetProcAddress)>("glXGetProcAddress");
    const Address address = driver(name);
    const auto* hook =
        std::ranges::find(kHooks, std::string_view(reinterpret_cast<const char*>(name)), &Hook::name);
    return hook != std::end(kHooks) ? hook->take(address) : address;
}

#pragma GCC visibility pop
}
