#include "cli/commands/presets_command.h"

#include <algorithm>
#include <string>

#include "job/preset.h"
#include "job/session.h"
#include "scene/scene.h"

namespace flumo::cli {

ExitStatus list_presets(const StdoutGuard& output) {
    const std::vector<job::Preset> presets = job::presets();
    job::Session session({}, job::Use::kControlsAlone);
    std::size_t width = 0;
    for (const job::Preset& preset : presets)
        width = std::max(width, preset.name.size());
    for (const job::Preset& preset : presets) {
        const std::string about = scene::read_scene(preset.file, session.catalog()).description;
        output.write(preset.name + std::string(width + 2 - preset.name.size(), ' ') + about + "\n");
    }
    return ExitStatus::kDone;
}

}  // namespace flumo::cli
