// The root context's life. The caller holds an AESDK_OpenGL_SavedContext around either call, and the host
// renders nothing meanwhile.
#pragma once

namespace flumo {

/// Makes a new root record in SharedCommonData, dropping an old one, and starts its context.
/// Throws AESDK_OpenGL_Fault 1 on a machine without a usable OpenGL 3.3.
void AESDK_OpenGL_SetUpCommonContext();

/// Ends all render records, then the root. Threads keep their numbers and get new records after the next
/// set-up. Throws std::system_error when the lock fails.
void AESDK_OpenGL_TearDownContexts();

}  // namespace flumo
