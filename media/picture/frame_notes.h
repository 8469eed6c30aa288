// What a file says about its frame beside the pixels.
#pragma once

#include <optional>
#include <string>

#include "host/values/frame_rate.h"

namespace flumo::media {

/// What wrote the file, with its version: in OpenEXR the attribute `software`, in PNG and in videos a text of
/// that name.
std::string software_name();

/// The name under which PNG and videos store the scene. OpenEXR has it in attributes that begin so.
inline constexpr const char* kSceneKey = "flumoScene";

enum class ExrType { kHalf, kFloat };

struct FrameNotes {
    ExrType exr_type = ExrType::kFloat;
    /// OpenEXR only: colours are linear light; otherwise they have the sRGB transfer curve.
    bool linear = false;
    std::optional<host::FrameRate> rate{};  ///< OpenEXR only: attribute framesPerSecond
    std::string scene{};                    ///< a scene file that renders the frame again; may be empty
};

}  // namespace flumo::media
