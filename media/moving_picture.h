// Pictures that change from frame to frame: numbered files and videos.
#pragma once

#include <filesystem>
#include <memory>

#include "media/picture/picture.h"

namespace flumo::media {

/// At frame F a numbered sequence shows the file of number F + offset, and a video its frame F + offset,
/// counted from 0. Before the first and after the last one these hold, or the sequence starts again.
class MovingPicture {
  public:
    virtual ~MovingPicture() = default;
    MovingPicture(const MovingPicture&) = delete;
    MovingPicture& operator=(const MovingPicture&) = delete;

    /// Straight alpha. For one thread at a time. Throws Failure (unreadable input), naming the file.
    virtual Picture at(int frame) = 0;

    /// Whether both frames show the same picture.
    virtual bool same(int frame, int other) const = 0;

  protected:
    MovingPicture() = default;
};

/// What a user writes for a layer: FILE[,offset=N][,end=hold|loop].
struct LayerText {
    std::filesystem::path file;
    int offset = 0;
    bool loops = false;
};

/// The text without its settings. A file of the whole name is taken as such. Throws Failure (usage).
LayerText parse_layer_text(const std::filesystem::path& text);

/// Null for a single picture (picture_file.h reads it). A name with #### or %04d is a sequence unless a file
/// has that very name. Throws Failure: (usage) for settings of a single picture, (unreadable input) for a
/// sequence without a file.
std::unique_ptr<MovingPicture> open_moving_picture(const LayerText& layer);

}  // namespace flumo::media
