// One export from its first frame to files that are complete.
#pragma once

#include <functional>

#include "job/progress.h"
#include "job/render_job.h"
#include "job/run.h"
#include "job/session.h"

namespace flumo::studio {

/// Throws Failure: (unwritable output) where the folder of the output is missing or takes no files, (usage)
/// where the number of a frame stands in the name of a folder.
void require_writable(const job::RenderJob& job);

/// Renders into a hidden folder beside the output and moves the files when all are there: an export that is
/// stopped or fails leaves nothing and keeps what was there. Throws Failure as job::run_job().
job::RunResult run_export(job::Session& session, const job::RenderJob& job, const std::function<bool()>& stop,
                          job::Observer& observer);

}  // namespace flumo::studio
