#include "job/picture_sink.h"

#include "media/picture_file.h"
#include "media/world_picture.h"

namespace flumo::job {

void PictureSink::write(std::size_t position, const host::World& world) {
    media::NewPicture file = begin(position);
    file.write_rows(media::picture_of(world));
    file.finish();
}

media::NewPicture PictureSink::begin(std::size_t position) const {
    const FrameSize size = job_.picture_size();
    const media::PictureShape shape = {static_cast<std::size_t>(size.width),
                                       static_cast<std::size_t>(size.height), job_.depth};
    const media::FrameNotes notes = {job_.exr_type, job_.linear, job_.rate,
                                     scene_.of_frames({&job_.frames[position], 1})};
    const auto format = std::get<media::PictureFormat>(job_.output.kind());
    return {job_.path_of(position), format, shape, {.notes = notes, .existing = existing_}};
}

}  // namespace flumo::job
