// Making and ending the root context. The caller holds an AESDK_OpenGL_SavedContext around either call, and
// the host renders nothing during it.
#pragma once

namespace flumo {

/// Makes a new root record in SharedCommonData, replacing an old one, and starts its context. Throws
/// AESDK_OpenGL_Fault with kFaultContext where no usable context of OpenGL 3.3 can be made; the record then
/// stays in SharedCommonData, without a context or with what was made of it.
void AESDK_OpenGL_SetUpCommonContext();

/// Ends all render records, then the root. Threads keep their numbers and get new records after the next
/// set-up. Throws std::system_error when the lock fails.
void AESDK_OpenGL_TearDownContexts();

}  // namespace flumo
