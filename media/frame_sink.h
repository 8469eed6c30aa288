// Where rendered frames end.
#pragma once

#include <cstddef>

#include "host/values/world.h"

namespace flumo::media {

class FrameSink {
  public:
    FrameSink() = default;
    virtual ~FrameSink() = default;
    FrameSink(const FrameSink&) = delete;
    FrameSink& operator=(const FrameSink&) = delete;

    /// Takes the frame at this position of the job. Throws Failure (unwritable output).
    virtual void write(std::size_t position, const host::World& world) = 0;

    /// After the last frame, if all were written. What is not finished leaves no file.
    virtual void finish() {}
};

/// Drops every frame.
class NullSink : public FrameSink {
  public:
    void write(std::size_t, const host::World&) override {}
};

}  // namespace flumo::media
