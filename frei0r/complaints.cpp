#include "frei0r/complaints.h"

#include <cstdio>

namespace flumo::frei0r {
namespace {

/// Bytes of a line; some name what was given, which may be a file's contents.
constexpr std::size_t kLongest = 500;

std::string line_of(const std::string& subject, const std::string& message) {
    const bool is_named = message.starts_with(subject + ": ");
    std::string line = "flumo: " + (is_named ? "" : subject + ": ") + message;
    if (line.size() > kLongest) line.replace(kLongest, line.npos, "...");
    return line + "\n";
}

}  // namespace

void Complaints::tell(const std::string& subject, const std::string& message) {
    std::string& last = told_[subject];
    if (last == message) return;
    last = message;
    // One call, so that lines of several threads do not mix.
    const std::string line = line_of(subject, message);
    std::fwrite(line.data(), 1, line.size(), stderr);
}

}  // namespace flumo::frei0r
