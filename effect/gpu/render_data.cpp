#include "effect/gpu/render_data.h"

namespace flumo {

std::shared_ptr<AESDK_OpenGL_EffectCommonData> SharedCommonData;
AESDK_OpenGL_EffectCommonData* CommonData = nullptr;
std::map<int32_t, std::shared_ptr<AESDK_OpenGL_EffectRenderData>> RenderDataTable;
std::recursive_mutex RenderDataMutex;
std::atomic<int32_t> NextThreadRenderIndex{0};
constinit thread_local int32_t ThreadRenderIndex = -1;

std::shared_ptr<AESDK_OpenGL_EffectRenderData> AESDK_OpenGL_RenderDataForThread() {
    const std::lock_guard lock(RenderDataMutex);
    if (ThreadRenderIndex == -1) ThreadRenderIndex = NextThreadRenderIndex.fetch_add(1);
    auto& entry = RenderDataTable[ThreadRenderIndex];
    if (!entry) entry = std::make_shared<AESDK_OpenGL_EffectRenderData>();
    return entry;
}

}  // namespace flumo
