// Frames into picture files, onto standard output, or nowhere.
#pragma once

#include "cli/frame_sink.h"
#include "cli/new_file.h"
#include "cli/raw_frame.h"
#include "cli/render_job.h"
#include "cli/scene_text.h"
#include "cli/stdout_guard.h"

namespace flumo::cli {

/// A file for each frame. Several threads may write. The job and the scene must outlive it.
class PictureSink : public FrameSink {
  public:
    PictureSink(const RenderJob& job, const SceneText& scene, Existing existing)
        : job_(job), scene_(scene), existing_(existing) {}

    void write(size_t position, const host::World& world) override;

  private:
    const RenderJob& job_;
    const SceneText& scene_;
    Existing existing_;
};

/// One frame behind the other on standard output.
class StreamSink : public FrameSink {
  public:
    /// Writes the format's header. Throws Failure (unwritable output) for a terminal.
    StreamSink(const RenderJob& job, RawFormat format, const StdoutGuard& output);

    void write(size_t position, const host::World& world) override;

  private:
    RawFormat format_;
    const StdoutGuard& output_;
};

class NullSink : public FrameSink {
  public:
    void write(size_t, const host::World&) override {}
};

}  // namespace flumo::cli
