// Choosing what is drawn into.
#pragma once

#include <glbinding/gl/types.h>

#include "effect/gpu/render_data.h"

namespace flumo {

/// Makes the texture the colour target of the record's one framebuffer. Throws AESDK_OpenGL_Fault 3 when
/// the framebuffer is not complete with it.
void AESDK_OpenGL_BindTarget(const AESDK_OpenGL_EffectRenderData& renderData, gl::GLuint texture);

/// The words for a framebuffer status: "OK" for a complete one. Static text without a percent sign.
const char* FramebufferStatusWords(gl::GLenum status);

/// The words for the status of the framebuffer that is bound now.
const char* AESDK_OpenGL_FramebufferStatusText();

}  // namespace flumo
