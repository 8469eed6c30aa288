// What the GL layer throws.
#pragma once

#include "effect_api/types.h"

namespace flumo {

/// A failure of the GL layer. Command handlers answer it with PF_Err_OUT_OF_MEMORY, without a message.
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
