// Choosing the texture that is drawn into.
#pragma once

#include <glbinding/gl/types.h>

#include "effect/gpu/render_data.h"

namespace flumo {

/// Makes the texture the colour target of the record's one framebuffer. When the framebuffer is not
/// complete with it, logs the status and throws AESDK_OpenGL_Fault with kFaultFramebuffer.
void AESDK_OpenGL_BindTarget(const AESDK_OpenGL_EffectRenderData& renderData, gl::GLuint texture);

/// The text of a framebuffer status: "OK" for a complete one. Static text without a percent sign.
const char* FramebufferStatusWords(gl::GLenum status);

/// The text of the status of the framebuffer that is bound now.
const char* AESDK_OpenGL_FramebufferStatusText();

}  // namespace flumo
