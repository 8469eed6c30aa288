// Scene files, written.
#pragma once

#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <span>
#include <string>

#include "host/host.h"
#include "scene/scene.h"

namespace flumo::scene {

/// The value of a control that is not set. Throws HostError for a gradient.
ControlValue default_value(const Control& control, host::Host& host);

/// The text of a scene file with what the scene sets and nothing else; layers by absolute file names. Numbers
/// read back as the same bits.
std::string scene_text(const Scene& scene);

/// A scene as a file: what it sets, and every control with its keyframes or its value, also those that stand
/// at their defaults; layers by absolute file names. Numbers read back as the same bits.
class SceneText {
  public:
    /// `catalog` holds the controls of the effect that `host` has set up. Throws HostError.
    SceneText(const Scene& scene, const ControlCatalog& catalog, host::Host& host);
    ~SceneText();
    SceneText(const SceneText&) = delete;
    SceneText& operator=(const SceneText&) = delete;

    /// The scene that renders these frames alone, in one line of ASCII. May be called from several threads.
    std::string of_frames(std::span<const int> frames) const;

  private:
    std::unique_ptr<nlohmann::ordered_json> scene_;
};

}  // namespace flumo::scene
