#include <windows.h>

#include "effect/gpu/gl/log.h"

namespace flumo {

void LogMessage(const std::string& text) {
    OutputDebugStringA((text + "\n").c_str());
}

}  // namespace flumo
