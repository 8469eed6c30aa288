// Scene files: everything that a rendering takes, kept in one JSON file.
#pragma once

#include <filesystem>
#include <optional>
#include <string_view>
#include <vector>

#include "cli/control.h"
#include "cli/frame_size.h"
#include "cli/track.h"
#include "host/instance.h"

namespace flumo::cli {

/// What a scene file says; what it leaves out is empty.
struct Scene {
    std::optional<FrameSize> size;
    std::optional<int> depth;
    std::optional<std::vector<int>> frames;
    std::optional<host::FrameRate> rate;
    Tracks tracks;
};

/// Reads a scene such as
///   {
///     "size": "960x540", "depth": 16, "frames": "0-47", "fps": "30000/1001",
///     "controls": {
///       "NoiseType": "Voronoi",
///       "Evolution": [{"frame": 0, "value": 0}, {"frame": 48, "value": 360}],
///       "Gradient": [{"at": 0, "color": "#102030", "kind": "linear"}, {"at": 1, "color": [1, 0.5, 0]}],
///       "Layer1": "paper.png"
///     }
///   }
/// Every control takes a value as on the command line; layers and @files are relative to the scene file.
/// Throws Failure with file, key and what was expected: (unreadable input) when the file cannot be read or
/// is no JSON, (usage) for contents that are not acceptable.
Scene read_scene(const std::filesystem::path& path, const ControlCatalog& catalog);

/// The same for the text of a scene that stands within the file `path`.
Scene parse_scene(std::string_view text, const std::filesystem::path& path, const ControlCatalog& catalog);

}  // namespace flumo::cli
