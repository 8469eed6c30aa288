// Contexts through WGL, each on a small hidden window of its own.
#include <windows.h>

#include <array>
#include <atomic>
#include <string>
#include <string_view>

#include "effect/gpu/gl/fault.h"
#include "effect/gpu/platform_context.h"

namespace flumo {

namespace {

using GetExtensionsString = const char*(WINAPI*)(HDC);
using CreateContextAttribs = HGLRC(WINAPI*)(HDC, HGLRC, const int*);

// The system's header for these declares its own GL names, which conflict with those of glbinding.
constexpr int WGL_CONTEXT_MAJOR_VERSION_ARB = 8337;
constexpr int WGL_CONTEXT_MINOR_VERSION_ARB = 8338;

// Looked up on the root context, where they first exist, and good for every context after it.
GetExtensionsString wglGetExtensionsString = nullptr;
CreateContextAttribs wglCreateContextAttribs = nullptr;

// Tells window classes apart. The classes belong to the program and outlive the module, since the windows do:
// a copy of the module that is loaded later starts at 0 again and finds its class taken.
std::atomic<int> windowClassCounter{0};

template <typename Function>
Function Extension(const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(wglGetProcAddress(name)));
}

[[noreturn]] void Fail() {
    throw AESDK_OpenGL_Fault{kFaultContext};
}

std::string NextClassName(const std::string& product) {
    std::string name = "AESDK_OpenGL_" + product + "_Win_Class" + std::to_string(windowClassCounter.load());
    // Two threads may read one value; the one whose class is then refused starts again with its next frame.
    ++windowClassCounter;
    return name;
}

/// A hidden window of a class of its own, never shown, without a message loop. The class name is stored
/// before anything can fail.
HWND AESDK_OpenGL_MakeHiddenWindow(const std::string& product, std::string& className) {
    className = NextClassName(product);
    WNDCLASSEXA windowClass = {};
    windowClass.cbSize = sizeof(windowClass);
    windowClass.style = CS_VREDRAW | CS_HREDRAW;
    windowClass.lpfnWndProc = DefWindowProcA;
    windowClass.hInstance = GetModuleHandleA(nullptr);
    windowClass.hCursor = LoadCursorA(nullptr, MAKEINTRESOURCEA(32512));
    windowClass.hbrBackground = static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH));
    windowClass.lpszClassName = className.c_str();
    if (RegisterClassExA(&windowClass) == 0) Fail();

    constexpr DWORD kExtendedStyle = WS_EX_APPWINDOW | WS_EX_WINDOWEDGE;
    const HWND window = CreateWindowExA(kExtendedStyle, className.c_str(), "OpenGL-using FBOs in AE", 0, 0, 0,
                                        8, 8, nullptr, nullptr, nullptr, nullptr);
    if (window == nullptr) Fail();
    return window;
}

void ChooseFormat(HDC deviceContext) {
    PIXELFORMATDESCRIPTOR format = {};
    format.nSize = sizeof(format);
    format.nVersion = 1;
    format.dwFlags = PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL;
    format.iPixelType = PFD_TYPE_RGBA;
    format.cColorBits = 32;
    format.cDepthBits = 8;
    const int chosen = ChoosePixelFormat(deviceContext, &format);
    if (chosen == 0 || SetPixelFormat(deviceContext, chosen, &format) == FALSE) Fail();
}

void MakeCurrentOrFail(HDC deviceContext, HGLRC context) {
    if (wglMakeCurrent(deviceContext, context) != FALSE) return;
    GetLastError();
    Fail();
}

void LookUpExtensions(HDC deviceContext) {
    wglGetExtensionsString = Extension<GetExtensionsString>("wglGetExtensionsStringARB");
    if (wglGetExtensionsString == nullptr) Fail();
    const char* list = wglGetExtensionsString(deviceContext);
    if (list != nullptr && std::string_view(list).find("WGL_ARB_create_context") != std::string_view::npos) {
        wglCreateContextAttribs = Extension<CreateContextAttribs>("wglCreateContextAttribsARB");
    }
    if (wglCreateContextAttribs == nullptr) Fail();
}

/// A legacy context of the driver's own choosing. It draws nothing: the extensions are looked up on it, and
/// the other contexts share their objects with it.
void MakeRoot(HDC deviceContext, void*& made) {
    const HGLRC context = wglCreateContext(deviceContext);
    made = context;
    MakeCurrentOrFail(deviceContext, context);
    LookUpExtensions(deviceContext);
}

/// A context of version 3.3, joined to the root after it has been current and not as it is created.
void MakeShared(HDC deviceContext, HGLRC root, void*& made) {
    constexpr std::array<int, 5> kVersion33 = {WGL_CONTEXT_MAJOR_VERSION_ARB, 3,
                                               WGL_CONTEXT_MINOR_VERSION_ARB, 3, 0};
    if (wglCreateContextAttribs == nullptr) Fail();
    const HGLRC context = wglCreateContextAttribs(deviceContext, nullptr, kVersion33.data());
    if (context == nullptr) Fail();
    made = context;
    MakeCurrentOrFail(deviceContext, context);
    if (wglShareLists(root, context) == FALSE) Fail();
}

/// `made` receives the context as soon as it exists, so that a later failure leaves it to its record.
void AESDK_OpenGL_MakeContext(HDC deviceContext, HGLRC root, void*& made) {
    ChooseFormat(deviceContext);
    if (root == nullptr) {
        MakeRoot(deviceContext, made);
    } else {
        MakeShared(deviceContext, root, made);
    }
}

}  // namespace

// window is an HWND, deviceContext an HDC and renderContext an HGLRC.

void MakePlatformContext(AESDK_OpenGL_EffectCommonData& record, const AESDK_OpenGL_EffectCommonData* root) {
    const std::string product = "Flumo";
    const HWND window = AESDK_OpenGL_MakeHiddenWindow(product, record.windowClassName);
    record.window = window;
    const HDC deviceContext = GetDC(window);
    record.deviceContext = deviceContext;
    AESDK_OpenGL_MakeContext(deviceContext,
                             root != nullptr ? static_cast<HGLRC>(root->renderContext) : nullptr,
                             record.renderContext);
}

void MakePlatformContextCurrent(const AESDK_OpenGL_EffectCommonData& record) {
    wglMakeCurrent(static_cast<HDC>(record.deviceContext), static_cast<HGLRC>(record.renderContext));
}

// The window is not destroyed, and the class stays registered: it belongs to the host's program, and is
// unregistered here without an instance. Both end with the process.
void DestroyPlatformContext(AESDK_OpenGL_EffectCommonData& record) {
    if (record.renderContext != nullptr) {
        if (wglMakeCurrent(nullptr, nullptr) == FALSE) GetLastError();
        if (wglDeleteContext(static_cast<HGLRC>(record.renderContext)) == FALSE) GetLastError();
        record.renderContext = nullptr;
    }
    if (record.deviceContext != nullptr) {
        ReleaseDC(static_cast<HWND>(record.window), static_cast<HDC>(record.deviceContext));
        record.deviceContext = nullptr;
    }
    UnregisterClassA(record.windowClassName.c_str(), nullptr);
}

}  // namespace flumo
