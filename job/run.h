// One rendering from its first to its last frame.
#pragma once

#include <functional>
#include <string_view>

#include "job/progress.h"
#include "job/render_job.h"
#include "job/session.h"
#include "media/raw_frame.h"

namespace flumo::job {

/// One thread renders while others encode. Measured with llvmpipe on two cores, 40 frames of 1280x720 into
/// PNG: 75 s with one render thread, 83 s with two and 97 s with four, at the same 74 s of processor time,
/// since all contexts of a process share one rasteriser that draws for one of them at a time.
inline constexpr int kDefaultRenderThreads = 1;

struct RunSettings {
    int render_threads = kDefaultRenderThreads;
    /// Leaves files that are there, which resumes a rendering.
    bool skip_existing = false;
    /// Refuses to begin when a file is there, and never replaces one. Not together with skip_existing.
    bool no_clobber = false;
    /// Makes the folders of the output.
    bool make_folders = false;
    /// Goes on past a frame that fails; for pictures only.
    bool keep_going = false;
    /// For a job whose output is standard output: the form of its frames, and where their bytes go.
    media::RawFormat raw = media::RawFormat::kY4m;
    std::function<void(std::string_view)> write_stream{};
    /// Asked before each frame, from several threads; true begins no more. Never stops when empty.
    std::function<bool()> stop{};
};

struct RunResult {
    ProgressState progress;
    Ending ending = Ending::kDone;
};

/// Renders the job with the session's effect and writes its frames. Returns when every frame that was started
/// is finished. Throws Failure: (unreadable input) for a layer, (unwritable output) for a file, and (frame
/// failed) for a frame unless `keep_going` is set.
RunResult run_job(Session& session, const RenderJob& job, const RunSettings& settings, Observer& observer);

}  // namespace flumo::job
