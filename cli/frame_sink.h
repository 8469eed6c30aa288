// Where rendered frames end.
#pragma once

#include <cstddef>

#include "host/world.h"

namespace flumo::cli {

class FrameSink {
  public:
    FrameSink() = default;
    virtual ~FrameSink() = default;
    FrameSink(const FrameSink&) = delete;
    FrameSink& operator=(const FrameSink&) = delete;

    /// Takes the frame at this position of the job. Throws Failure (unwritable output).
    virtual void write(size_t position, const host::World& world) = 0;

    /// After the last frame, if all were written. What is not finished leaves no file.
    virtual void finish() {}
};

}  // namespace flumo::cli
