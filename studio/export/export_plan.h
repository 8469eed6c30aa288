// What one export will do, and the command that does the same.
#pragma once

#include <string>
#include <vector>

#include "base/resolution.h"
#include "job/render_job.h"
#include "scene/scene.h"

namespace flumo::studio {

/// What an export adds to the look.
struct ExportSettings {
    std::string output;       ///< a name or pattern, as for flumo render -o
    std::vector<int> frames;  ///< not empty
    Resolution resolution{};
    media::ExrType exr_type = media::ExrType::kFloat;
    bool linear = false;  ///< for OpenEXR
};

struct ExportPlan {
    job::RenderJob job;
    std::string command;  ///< one line for a shell that writes the same bytes
    std::string summary;  ///< what it will do, one line
};

/// Throws Failure (usage) for an output or frames that do not fit, and (unwritable output) where nothing can
/// be written into its folder.
ExportPlan plan_export(const scene::Scene& scene, const ExportSettings& settings,
                       const scene::ControlCatalog& catalog);

/// The text as one word of a POSIX shell.
std::string shell_word(const std::string& text);

}  // namespace flumo::studio
