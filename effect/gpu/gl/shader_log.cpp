#include "effect/gpu/gl/shader_log.h"

#include <charconv>
#include <sstream>
#include <system_error>

namespace flumo {

namespace {

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

/// The number of the shader line that a line of the log names, from 1; 0 when it names none. Drivers write
/// the number of the text first, which is always 0 here, and then the line, after a colon or in parentheses.
int NamedLine(std::string_view logLine) {
    for (size_t i = 0; i + 2 < logLine.size(); ++i) {
        const bool isText = logLine[i] == '0' && (i == 0 || !IsDigit(logLine[i - 1]));
        if (!isText || (logLine[i + 1] != ':' && logLine[i + 1] != '(')) continue;
        int number = 0;
        const auto parsed = std::from_chars(logLine.data() + i + 2, logLine.data() + logLine.size(), number);
        if (parsed.ec == std::errc() && number > 0) return number;
    }
    return 0;
}

/// Line `number` of the text, without its line feed; empty beyond the last.
std::string TextLine(std::string_view text, int number) {
    std::istringstream lines{std::string(text)};
    std::string line;
    for (int i = 0; i < number; ++i) {
        if (!std::getline(lines, line)) return {};
    }
    return line;
}

}  // namespace

std::string ShaderLogMessage(std::string_view failure, std::string_view log, std::string_view text) {
    std::string message(failure);
    std::istringstream lines{std::string(log)};
    for (std::string logLine; std::getline(lines, logLine);) {
        message += "\n" + logLine;
        const int number = NamedLine(logLine);
        const std::string quoted = TextLine(text, number);
        if (!quoted.empty()) message += "\n    " + std::to_string(number) + " | " + quoted;
    }
    return message;
}

}  // namespace flumo
