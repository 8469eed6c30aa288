#include "effect/render/report_framebuffer_status.h"

#include <string_view>

#include "effect/gpu/target.h"

namespace flumo {

void ReportFramebufferStatus(PF_InData* in_data, PF_OutData* out_data) {
    const char* text = AESDK_OpenGL_FramebufferStatusText();
    if (text == std::string_view("OK")) return;
    out_data->out_flags |= PF_OutFlag_DISPLAY_ERROR_MESSAGE;
    in_data->utils->ansi.sprintf(out_data->return_msg, text);
    throw PF_Err{PF_Err_OUT_OF_MEMORY};
}

}  // namespace flumo
