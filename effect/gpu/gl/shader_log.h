// The log of a shader or a program that cannot be built, as a message for developers.
#pragma once

#include <string>
#include <string_view>

namespace flumo {

/// `failure` as the first line, then the lines of the driver's log. A log line that names a line of the
/// shader text, written "0:12", "0(12)" or "ERROR: 0:12", is followed by that line with its number. `text` is
/// the whole text given to the compiler; empty for a program, whose log names no lines. No line feed at the
/// end.
std::string ShaderLogMessage(std::string_view failure, std::string_view log, std::string_view text);

}  // namespace flumo
