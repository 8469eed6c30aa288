// One control's part of a scene file.
#pragma once

#include <filesystem>
#include <nlohmann/json_fwd.hpp>
#include <string>

#include "base/failure.h"
#include "base/text_list.h"
#include "scene/track.h"

namespace flumo::scene {

/// A place in a scene file, for messages: file and key, such as `look.json: controls.Scale[1].value`.
struct ScenePlace {
    std::filesystem::path file;
    std::string key;

    ScenePlace member(const std::string& name) const { return {file, key.empty() ? name : key + "." + name}; }
    ScenePlace element(std::size_t i) const { return {file, key + "[" + std::to_string(i) + "]"}; }

    Failure failure(const std::string& message, FailureKind status = FailureKind::kUsage) const {
        return {status, file.string() + ": " + (key.empty() ? "" : printable(key) + ": ") + message};
    }
};

/// Runs `action`; a Failure that leaves it tells the place as well.
template <typename Action>
decltype(auto) within(const ScenePlace& place, const Action& action) try {
    return action();
} catch (const Failure& failure) {
    throw place.failure(failure.what(), failure.kind());
}

/// A value, or an array of {"frame", "value"} in ascending frames for a control that may vary over time.
/// Throws Failure (usage).
Track read_track(const Control& control, const nlohmann::json& value, const ScenePlace& place);

}  // namespace flumo::scene
