// Frames into picture files.
#pragma once

#include "job/render_job.h"
#include "media/frame_sink.h"
#include "media/new_file.h"
#include "media/picture_file.h"
#include "scene/scene_text.h"

namespace flumo::job {

/// A file for each frame. Several threads may write. The job and the scene must outlive it.
class PictureSink : public media::FrameSink {
  public:
    PictureSink(const RenderJob& job, const scene::SceneText& scene, media::Existing existing)
        : job_(job), scene_(scene), existing_(existing) {}

    void write(std::size_t position, const host::World& world) override;

    /// The file of the frame at this position, to be written by rows. Throws as write().
    media::NewPicture begin(std::size_t position) const;

  private:
    const RenderJob& job_;
    const scene::SceneText& scene_;
    media::Existing existing_;
};

}  // namespace flumo::job
