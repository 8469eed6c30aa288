// Frames as plain bytes, one after the other.
#pragma once

#include <functional>
#include <string_view>

#include "base/frame_size.h"
#include "host/values/frame_rate.h"
#include "media/frame_sink.h"
#include "media/raw_frame.h"

namespace flumo::media {

class StreamSink : public FrameSink {
  public:
    /// Takes bytes in their order; throws Failure (unwritable output) where they cannot go.
    using Write = std::function<void(std::string_view)>;

    /// Writes the format's header, which may be empty.
    StreamSink(RawFormat format, const FrameSize& size, const host::FrameRate& rate, Write write);

    void write(std::size_t position, const host::World& world) override;

  private:
    RawFormat format_;
    Write write_;
};

}  // namespace flumo::media
