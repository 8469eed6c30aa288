// The exception of the GL layer.
#pragma once

#include "effect_api/types.h"

namespace flumo {

/// A failure of the GL layer; `code` is one of the numbers below. Command handlers return
/// PF_Err_OUT_OF_MEMORY for it, without a message to the user.
struct AESDK_OpenGL_Fault {
    A_long code;
};

/// No drawable, no context, or none of version 3.3.
inline constexpr A_long kFaultContext = 1;
/// The framebuffer is not complete.
inline constexpr A_long kFaultFramebuffer = 3;
/// A shader does not compile, or a program does not link.
inline constexpr A_long kFaultProgram = 6;

}  // namespace flumo
