#include "effect/render/select_target.h"

#include <string_view>

#include "effect/gpu/target.h"
#include "effect/suites/suite_access.h"

namespace flumo {

void SelectTarget(PF_InData* in_data, PF_OutData* out_data, const AESDK_OpenGL_EffectRenderData& renderData,
                  gl::GLuint texture) {
    AESDK_OpenGL_BindTarget(renderData, texture);
    ReportFramebufferStatus(in_data, out_data);
}

void ReportFramebufferStatus(PF_InData* in_data, PF_OutData* out_data) {
    const char* text = AESDK_OpenGL_FramebufferStatusText();
    if (text == std::string_view("OK")) return;
    ShowErrorMessage(in_data, out_data, text);
    throw PF_Err{PF_Err_OUT_OF_MEMORY};
}

}  // namespace flumo
