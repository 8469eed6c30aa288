// Messages for developers. The host and the user do not see them.
#pragma once

#include <string>

namespace flumo {

/// Writes one message of one or more lines and ends it with a line feed: to standard error on Linux, to the
/// debugger's output on Windows. Callable from any thread; messages of several threads do not mix.
void LogMessage(const std::string& text);

}  // namespace flumo
