#include "effect/gpu/global_context.h"

#include "effect/gpu/gl_context.h"
#include "effect/gpu/render_data.h"

namespace flumo {

void AESDK_OpenGL_SetUpCommonContext() {
    SharedCommonData = std::make_shared<AESDK_OpenGL_EffectCommonData>();
    CommonData = SharedCommonData.get();
    AESDK_OpenGL_StartContext(*CommonData, nullptr);
}

void AESDK_OpenGL_TearDownContexts() {
    {
        const std::lock_guard lock(RenderDataMutex);
        RenderDataTable.clear();
    }
    CommonData = nullptr;
    SharedCommonData.reset();
}

}  // namespace flumo
