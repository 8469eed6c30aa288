// The messages that a GL driver writes while it works.
#pragma once

#include <glbinding/gl/extension.h>

#include <set>

namespace flumo {

/// In a debug build, logs the messages of the current context from now on, each before the GL call that
/// caused it returns. Does nothing in other builds, and where `extensions`, those of the context, lack
/// GL_KHR_debug.
void LogDriverMessages(const std::set<gl::GLextension>& extensions);

}  // namespace flumo
