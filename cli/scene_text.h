// Scene files, written.
#pragma once

#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <string>

#include "cli/render_job.h"
#include "cli/session.h"

namespace flumo::cli {

/// The scene of a job: every control with its keyframes or its value, also those that stand at their
/// defaults; layers by absolute file names. Numbers read back as the same bits.
class SceneText {
  public:
    SceneText(const RenderJob& job, Session& session);
    ~SceneText();
    SceneText(const SceneText&) = delete;
    SceneText& operator=(const SceneText&) = delete;

    /// The scene that renders this frame alone. May be called from several threads.
    std::string of_frame(int frame) const;

  private:
    std::unique_ptr<const nlohmann::ordered_json> scene_;
};

}  // namespace flumo::cli
