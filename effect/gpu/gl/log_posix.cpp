#include <cstdio>

#include "effect/gpu/gl/log.h"

namespace flumo {

void LogMessage(const std::string& text) {
    // One call, during which the stream is locked.
    std::fputs((text + "\n").c_str(), stderr);
}

}  // namespace flumo
