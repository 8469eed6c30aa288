// What a user asks to be rendered.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "base/frame_size.h"
#include "host/values/frame_rate.h"
#include "job/shard.h"
#include "media/exr_file.h"
#include "media/output_pattern.h"

namespace flumo::job {

/// One Id=value; the value is read when the controls of the effect are known.
struct Assignment {
    std::string option;  ///< as written, for messages: --set, --gradient, --layer1
    std::string id;
    std::optional<std::string> value;  ///< nothing where the text had no =
};

/// What is left out is empty, and a scene or a default fills it. At most one of `scene`, `from` and `preset`
/// is given.
struct RenderRequest {
    std::optional<FrameSize> size;
    std::optional<int> depth;
    std::optional<std::vector<int>> frames;
    std::vector<Assignment> assignments;  ///< in groups by option; later ones win
    std::filesystem::path scene;          ///< "-" is standard input
    std::filesystem::path from;           ///< an EXR that holds its own scene
    std::string preset;                   ///< a name of presets()
    /// Seconds: as many frames from 0 on. Not together with `frames`.
    std::optional<double> duration;
    /// One whole turn of Evolution over all frames, with Loop Evolution on.
    bool loop = false;
    std::optional<host::FrameRate> rate;
    std::optional<int> start_number;
    std::optional<Shard> shard;
    std::optional<media::ExrType> exr_type;
    std::optional<media::OutputPattern> output;  ///< must be given
};

}  // namespace flumo::job
