// The GL objects that a frame needs, made when they are missing and kept for the next frame.
#pragma once

#include <cstdint>

#include "effect/gpu/render_data.h"

namespace flumo {

/// Brings the record to a frame of width x height pixels; `doubleSize` non-zero makes largeTexture twice
/// that on each axis. The record's context is current. What exists already is kept: a new size keeps the
/// programs and the frame quad, a new doubleSize alone replaces largeTexture. Throws
/// AESDK_OpenGL_Fault with kFaultProgram; objects made before stay in the record.
void AESDK_OpenGL_PrepareResources(AESDK_OpenGL_EffectRenderData& renderData, uint16_t width, uint16_t height,
                                   uint8_t doubleSize);

}  // namespace flumo
