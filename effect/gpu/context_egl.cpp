// Contexts through EGL, without a display server and without a surface.
#define EGL_NO_X11
#include <EGL/egl.h>
#include <EGL/eglext.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

#include "effect/gpu/gl/fault.h"
#include "effect/gpu/platform_context.h"

namespace flumo {

namespace {

bool HasExtension(const char* list, std::string_view name) {
    std::string_view rest = list != nullptr ? list : "";
    while (!rest.empty()) {
        const size_t end = rest.find(' ');
        if (rest.substr(0, end) == name) return true;
        rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    }
    return false;
}

template <typename Function>
Function Extension(const char* name) {
    return reinterpret_cast<Function>(eglGetProcAddress(name));
}

bool IsSoftware(EGLDeviceEXT device) {
    const auto query = Extension<PFNEGLQUERYDEVICESTRINGEXTPROC>("eglQueryDeviceStringEXT");
    return query != nullptr && HasExtension(query(device, EGL_EXTENSIONS), "EGL_MESA_device_software");
}

/// All devices of the machine, software rasterisers last.
std::vector<EGLDeviceEXT> Devices() {
    const auto query = Extension<PFNEGLQUERYDEVICESEXTPROC>("eglQueryDevicesEXT");
    EGLint count = 0;
    if (query == nullptr || query(0, nullptr, &count) != EGL_TRUE || count <= 0) return {};
    std::vector<EGLDeviceEXT> devices(static_cast<size_t>(count));
    if (query(count, devices.data(), &count) != EGL_TRUE) return {};
    devices.resize(static_cast<size_t>(count));
    std::stable_partition(devices.begin(), devices.end(), [](EGLDeviceEXT it) { return !IsSoftware(it); });
    return devices;
}

/// Displays that need no window system, preferred ones first.
std::vector<EGLDisplay> CandidateDisplays() {
    std::vector<EGLDisplay> displays;
    const char* client = eglQueryString(EGL_NO_DISPLAY, EGL_EXTENSIONS);
    const auto open = Extension<PFNEGLGETPLATFORMDISPLAYEXTPROC>("eglGetPlatformDisplayEXT");
    const bool enumerates =
        HasExtension(client, "EGL_EXT_device_enumeration") || HasExtension(client, "EGL_EXT_device_base");
    if (open != nullptr && enumerates && HasExtension(client, "EGL_EXT_platform_device")) {
        for (EGLDeviceEXT device : Devices()) {
            displays.push_back(open(EGL_PLATFORM_DEVICE_EXT, device, nullptr));
        }
    }
    if (open != nullptr && HasExtension(client, "EGL_MESA_platform_surfaceless")) {
        displays.push_back(open(EGL_PLATFORM_SURFACELESS_MESA, nullptr, nullptr));
    }
    displays.push_back(eglGetDisplay(EGL_DEFAULT_DISPLAY));
    return displays;
}

/// A context on the display, or none. EGL_SURFACE_TYPE must be named: by default it requires
/// window surfaces, which such displays lack.
EGLContext CreateContext(EGLDisplay display, EGLContext share, const EGLint* version) {
    constexpr std::array<EGLint, 5> wanted = {EGL_SURFACE_TYPE, 0, EGL_RENDERABLE_TYPE, EGL_OPENGL_BIT,
                                              EGL_NONE};
    EGLConfig config = nullptr;
    EGLint count = 0;
    if (eglChooseConfig(display, wanted.data(), &config, 1, &count) != EGL_TRUE || count == 0) {
        return EGL_NO_CONTEXT;
    }
    return eglCreateContext(display, config, share, version);
}

constexpr std::array<EGLint, 1> kAnyVersion = {EGL_NONE};
constexpr std::array<EGLint, 5> kVersion33 = {EGL_CONTEXT_MAJOR_VERSION, 3, EGL_CONTEXT_MINOR_VERSION, 3,
                                              EGL_NONE};

bool MakeCurrent(EGLDisplay display, EGLContext context) {
    return eglMakeCurrent(display, EGL_NO_SURFACE, EGL_NO_SURFACE, context) == EGL_TRUE;
}

/// Whether the display can give what frames need: a further context, of version 3.3.
bool OffersVersion33(EGLDisplay display, EGLContext root) {
    const EGLContext probe = CreateContext(display, root, kVersion33.data());
    if (probe == EGL_NO_CONTEXT) return false;
    eglDestroyContext(display, probe);
    return true;
}

/// A usable root context on the display, current on this thread, or none.
EGLContext MakeRootOn(EGLDisplay display) {
    if (display == EGL_NO_DISPLAY || eglInitialize(display, nullptr, nullptr) != EGL_TRUE) {
        return EGL_NO_CONTEXT;
    }
    const EGLContext context = CreateContext(display, EGL_NO_CONTEXT, kAnyVersion.data());
    if (context == EGL_NO_CONTEXT) return EGL_NO_CONTEXT;
    if (OffersVersion33(display, context) && MakeCurrent(display, context)) return context;
    eglDestroyContext(display, context);
    return EGL_NO_CONTEXT;
}

void MakeRoot(AESDK_OpenGL_EffectCommonData& record) {
    for (EGLDisplay display : CandidateDisplays()) {
        const EGLContext context = MakeRootOn(display);
        if (context == EGL_NO_CONTEXT) continue;
        record.deviceContext = display;
        record.renderContext = context;
        return;
    }
    throw AESDK_OpenGL_Fault{kFaultContext};
}

void MakeShared(AESDK_OpenGL_EffectCommonData& record, const AESDK_OpenGL_EffectCommonData& root) {
    const EGLContext context = CreateContext(root.deviceContext, root.renderContext, kVersion33.data());
    if (context == EGL_NO_CONTEXT) throw AESDK_OpenGL_Fault{kFaultContext};
    if (!MakeCurrent(root.deviceContext, context)) {
        eglDestroyContext(root.deviceContext, context);
        throw AESDK_OpenGL_Fault{kFaultContext};
    }
    record.deviceContext = root.deviceContext;
    record.renderContext = context;
}

// Every thread starts with OpenGL ES bound, for which no desktop GL context can be made or made current.
void UseDesktopGL() {
    eglBindAPI(EGL_OPENGL_API);
}

}  // namespace

// deviceContext is the EGL display, renderContext the EGL context; there is no window and no class.

void MakePlatformContext(AESDK_OpenGL_EffectCommonData& record, const AESDK_OpenGL_EffectCommonData* root) {
    UseDesktopGL();
    if (root == nullptr) {
        MakeRoot(record);
    } else {
        MakeShared(record, *root);
    }
}

void MakePlatformContextCurrent(const AESDK_OpenGL_EffectCommonData& record) {
    UseDesktopGL();
    MakeCurrent(record.deviceContext, record.renderContext);
}

// The display stays initialised: the whole process shares it.
void DestroyPlatformContext(AESDK_OpenGL_EffectCommonData& record) {
    if (record.renderContext != nullptr) {
        UseDesktopGL();
        MakeCurrent(record.deviceContext, EGL_NO_CONTEXT);
        eglDestroyContext(record.deviceContext, record.renderContext);
        record.renderContext = nullptr;
    }
    record.deviceContext = nullptr;
}

}  // namespace flumo
