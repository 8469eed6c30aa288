// Starting contexts and making them current, the same on every platform.
#pragma once

#include <string>

#include "effect/gpu/render_data.h"

namespace flumo {

/// Makes the record's drawable and context, leaves it current on the calling thread, writes the version
/// lines and notes the extensions and whether the driver draws in software. `root` is the record to share
/// objects with; null, or a root that has no context itself, makes a root. Throws
/// AESDK_OpenGL_Fault with kFaultContext. Takes no lock. In a debug build the driver's messages are logged
/// from then on.
void AESDK_OpenGL_StartContext(AESDK_OpenGL_EffectCommonData& record,
                               const AESDK_OpenGL_EffectCommonData* root);

/// Makes the record's context current on the calling thread, for the driver and for glbinding.
void AESDK_OpenGL_MakeCurrent(const AESDK_OpenGL_EffectCommonData& record);

/// Initialises glbinding on the current context and writes the driver's version lines to standard output.
/// Returns the renderer's name, which is one of them.
std::string AESDK_OpenGL_LogVersion();

}  // namespace flumo
