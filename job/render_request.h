// What a user asks to be rendered.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "base/frame_size.h"
#include "base/resolution.h"
#include "host/values/frame_rate.h"
#include "job/shard.h"
#include "media/output_pattern.h"
#include "media/picture/frame_notes.h"

namespace flumo::job {

/// A control and the text of its value, which is read when the controls of the effect are known.
struct Assignment {
    std::string written;  ///< what messages call it, such as "--set Scale"
    std::string id;
    std::optional<std::string> value;  ///< nothing where the user named the control alone
    bool is_gradient = false;          ///< refused for any other kind of control
};

/// What is left out is empty, and a scene or a default fills it. At most one of `scene`, `from` and `preset`
/// is given.
struct RenderRequest {
    std::optional<FrameSize> size;
    std::optional<Resolution> resolution;
    std::optional<int> depth;
    std::optional<int> part_width;  ///< frames are rendered in parts of at most this width
    std::optional<std::vector<int>> frames;
    std::vector<Assignment> assignments;  ///< in groups by option; later ones win
    std::filesystem::path scene;          ///< "-" is standard input
    std::filesystem::path from;           ///< a picture or video that holds its own scene
    std::string preset;                   ///< a name of presets()
    /// Seconds: as many frames from 0 on. Not together with `frames`.
    std::optional<double> duration;
    /// One whole turn of Evolution over all frames, with Loop Evolution on.
    bool loop = false;
    std::optional<host::FrameRate> rate;
    std::optional<int> start_number;
    std::optional<Shard> shard;
    std::optional<media::ExrType> exr_type;
    bool linear = false;                         ///< linear light; for a format that may hold it
    std::optional<media::OutputPattern> output;  ///< must be given
};

}  // namespace flumo::job
