#include "job/picture_sink.h"

#include "media/picture_file.h"
#include "media/world_picture.h"

namespace flumo::job {

void PictureSink::write(std::size_t position, const host::World& world) {
    const auto format = std::get<media::PictureFormat>(job_.output.kind());
    media::PictureSettings settings{.exr = {job_.exr_type, job_.rate, {}}, .existing = existing_};
    if (format == media::PictureFormat::kExr) settings.exr.scene = scene_.of_frame(job_.frames[position]);
    media::write_picture(job_.path_of(position), format, media::picture_of(world), settings);
}

}  // namespace flumo::job
