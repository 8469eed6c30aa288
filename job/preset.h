// The scenes that come with the program.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace flumo::job {

struct Preset {
    std::string name;            ///< of the file without its ending
    std::filesystem::path file;  ///< a scene file
};

/// All presets by name: the scene files in the folder presets beside the program or, where there is none, in
/// ../share/flumo/presets. Throws Failure (unreadable input) when there is no such folder.
std::vector<Preset> presets();

/// The scene file of a preset. Throws Failure: (usage) for an unknown name, with the nearest one.
std::filesystem::path preset_file(std::string_view name);

}  // namespace flumo::job
