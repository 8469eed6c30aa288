#include "media/stream_sink.h"

#include <vector>

#include "media/world_picture.h"

namespace flumo::media {

StreamSink::StreamSink(RawFormat format, const FrameSize& size, const host::FrameRate& rate, Write write)
    : format_(format), write_(std::move(write)) {
    write_(raw_header(format, size, rate));
}

void StreamSink::write(std::size_t, const host::World& world) {
    const std::vector<std::byte> bytes = raw_frame(format_, picture_of(world));
    write_({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
}

}  // namespace flumo::media
