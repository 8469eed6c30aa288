#include "effect/gpu/gl_context.h"

#include <glbinding/Binding.h>
#include <glbinding/ContextInfo.h>
#include <glbinding/Version.h>

#include <mutex>
#include <ostream>

#include "effect/gpu/gl/driver_messages.h"
#include "effect/gpu/platform_context.h"
#include "effect/gpu/software_driver.h"
#include "effect/gpu/version_lines.h"

namespace flumo {

namespace {

// One handle stands for all contexts, and all functions are resolved once, while the root is started and
// no second thread draws: for each new handle glbinding grows a table inside each of its functions while
// other threads read it without a lock, and calls get lost. The contexts come from one driver, so their
// functions are the same. For the same reason no handle is ever released.
constexpr glbinding::ContextHandle kBinding = 1;

// Revision of the Khronos registry that goes into the version lines.
constexpr int kRegistryRevision = 31811;

void ResolveFunctionsOnce() {
    static std::once_flag resolved;
    std::call_once(resolved, [] {
        glbinding::Binding::initialize(kBinding, true, false);
        // initialize() does not switch to a handle that another copy of the module has made known before.
        glbinding::Binding::useContext(kBinding);
        glbinding::Binding::resolveFunctions();
    });
}

}  // namespace

void AESDK_OpenGL_StartContext(AESDK_OpenGL_EffectCommonData& record,
                               const AESDK_OpenGL_EffectCommonData* root) {
    const bool rootHasContext = root != nullptr && root->renderContext != nullptr;
    MakePlatformContext(record, rootHasContext ? root : nullptr);
    MakePlatformContextCurrent(record);
    record.softwareDriver = IsSoftwareRenderer(AESDK_OpenGL_LogVersion());
    record.extensions = glbinding::ContextInfo::extensions();
    LogDriverMessages(record.extensions);
}

void AESDK_OpenGL_MakeCurrent(const AESDK_OpenGL_EffectCommonData& record) {
    MakePlatformContextCurrent(record);
    glbinding::Binding::useContext(kBinding);
}

std::string AESDK_OpenGL_LogVersion() {
    ResolveFunctionsOnce();
    glbinding::Binding::useContext(kBinding);
    using glbinding::ContextInfo;
    std::string renderer;
    AESDK_OpenGL_VersionLines() << std::endl
                                << "OpenGL Version:  " << ContextInfo::version() << std::endl
                                << "OpenGL Vendor:   " << ContextInfo::vendor() << std::endl
                                << "OpenGL Renderer: " << (renderer = ContextInfo::renderer()) << std::endl
                                << "OpenGL Revision: " << kRegistryRevision << " (gl.xml)" << std::endl
                                << std::endl;
    return renderer;
}

}  // namespace flumo
