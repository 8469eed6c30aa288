// Scene files: everything that a rendering takes, kept in one JSON file. The main header of this library.
//
//   const scene::ControlCatalog catalog(host.controls());          // of a host::Host that was started
//   scene::Scene look = scene::read_scene("look.json", catalog);
//   const scene::Control& scale = catalog.find("Scale");
//   look.tracks[scale.index] = {&scale, {{0, 40.0}}};              // from frame 0 on
//   const std::string text = scene::SceneText(look, catalog, host).of_frames(std::array{0});
//
// Values name layers by their files; the program that renders the scene reads them. Everything that reads
// throws flumo::Failure with one line for the user.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/frame_size.h"
#include "base/resolution.h"
#include "host/values/frame_rate.h"
#include "scene/control.h"
#include "scene/track.h"

namespace flumo::scene {

/// What a scene file says; what it leaves out is empty.
struct Scene {
    std::string description;  ///< one line for people
    std::optional<FrameSize> size;
    std::optional<Resolution> resolution;
    std::optional<int> depth;
    std::optional<std::vector<int>> frames;
    std::optional<host::FrameRate> rate;
    Tracks tracks;
};

/// Reads a scene such as
///   {
///     "size": "960x540", "resolution": "half", "depth": 16, "frames": "0-47", "fps": "30000/1001",
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

}  // namespace flumo::scene
