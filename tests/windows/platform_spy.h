// Stands between a loaded module and the Windows calls that its GL contexts are made with: writes them down,
// fails chosen ones, and makes sharing work under Wine.
//
// Wine cannot share the objects of two contexts once both have been current, which Windows' own drivers can.
// So sharing is asked for when the second context is created, and wglShareLists only looks whether it was
// called with just that pair. The module runs unchanged: its table of imports is what is redirected.
//
// The redirected functions are plain functions, so there is one spy in a process. Everything is thread-safe.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>
#include <vector>

namespace flumo::tests::spy {

/// Redirects the module's imports. Throws std::runtime_error naming an import that the module does not have.
void install(HMODULE module);

/// Calls that change something, in order, with their handles numbered by their making: "GetDC w0",
/// "wglMakeCurrent d0 c0", "wglShareLists c0 c1". "-" is null.
std::vector<std::string> calls();
void forget_calls();

/// The next call of this name fails, as the system would have it, without being made. For wglGetProcAddress
/// the name is that of the function asked for.
void fail_next(std::string_view call);
/// Hides an extension from the list of the device context, for the rest of the process.
void hide_extension(std::string_view name);

/// Contexts that were made and not deleted.
int live_contexts();
/// Calls of wglShareLists with anything but the root and a context just made.
int wrong_shares();

}  // namespace flumo::tests::spy
