#include "cli/picture_sink.h"

#include "cli/exit_status.h"
#include "cli/picture_file.h"
#include "cli/world_picture.h"

namespace flumo::cli {

void PictureSink::write(size_t position, const host::World& world) {
    const auto format = std::get<PictureFormat>(job_.output.kind());
    PictureSettings settings{.exr = {job_.exr_type, job_.rate, {}}, .existing = existing_};
    if (format == PictureFormat::kExr) settings.exr.scene = scene_.of_frame(job_.frames[position]);
    write_picture(job_.path_of(position), format, picture_of(world), settings);
}

StreamSink::StreamSink(const RenderJob& job, RawFormat format, const StdoutGuard& output)
    : format_(format), output_(output) {
    if (output.is_terminal())
        throw output_failure(
            "standard output is a terminal, which shows no raw frames; pipe it to a program");
    output_.write(raw_header(format, job.size, job.rate));
}

void StreamSink::write(size_t, const host::World& world) {
    const std::vector<std::byte> bytes = raw_frame(format_, picture_of(world));
    output_.write({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
}

}  // namespace flumo::cli
