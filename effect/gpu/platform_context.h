// The platform's part of contexts: making one, making it current, destroying it, through EGL or WGL. Each
// platform implements these three functions in one file; the fourth operation, saving the caller's context,
// is AESDK_OpenGL_SavedContext.
#pragma once

#include "effect/gpu/render_data.h"

namespace flumo {

/// Makes a hidden drawable and a context, fills the record's handles and class name, and makes the
/// context current on the calling thread. Without a root this is the root context, of the driver's own
/// choosing; with one it is a context of version 3.3 that shares its objects with the root.
/// Throws AESDK_OpenGL_Fault with kFaultContext; what was made before stays in the record until the record
/// ends.
void MakePlatformContext(AESDK_OpenGL_EffectCommonData& record, const AESDK_OpenGL_EffectCommonData* root);

/// Makes the record's context current on the calling thread. The result is not tested; a record without
/// a context is harmless.
void MakePlatformContextCurrent(const AESDK_OpenGL_EffectCommonData& record);

/// Leaves the calling thread without a current context, destroys the record's, and clears its handles.
void DestroyPlatformContext(AESDK_OpenGL_EffectCommonData& record);

}  // namespace flumo
