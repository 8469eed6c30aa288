// Reading the finished target back into the host's pixels.
#pragma once

#include "effect/gpu/render_data.h"
#include "effect/render/pixel_format.h"
#include "effect/suites/suite_handler.h"
#include "effect_api/effect.h"

namespace flumo {

/// Reads the bound framebuffer, which holds the host's channel order and scale, into the output world.
/// An output world narrower or shorter than the frame gets its top-left part. The input world sets the
/// iteration of the float case; its pixels are not read.
/// Throws a PF_Err: PF_Err_OUT_OF_MEMORY without a buffer, PF_Err_BAD_CALLBACK_PARAM for a missing suite, or
/// the result of the host's iteration. The buffer's handle then stays allocated and locked.
void DownloadOutput(const AESDK_OpenGL_EffectRenderData& renderData, AEGP_SuiteHandler& suites,
                    PF_EffectWorld* inputWorld, PF_EffectWorld* outputWorld, PF_InData* in_data,
                    const PixelFormatRow& format);

}  // namespace flumo
