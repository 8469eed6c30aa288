// The frames of a video file, through the programs ffprobe and ffmpeg.
#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "base/child_process.h"
#include "media/picture/picture.h"

namespace flumo::media {

/// For one thread at a time. Frames in ascending order cost least: an earlier one starts the decoder again.
class VideoFrames {
  public:
    /// Null for a file that holds one picture, or none that ffmpeg knows.
    static std::unique_ptr<VideoFrames> open(const std::filesystem::path& path);

    int count() const { return count_; }

    /// Frame 0 to count() - 1: 8 bits, or 16 where the video has more than 8, straight alpha. Untagged YUV
    /// counts as Rec. 709. Throws std::runtime_error where the file ends too early.
    Picture read(int frame);

  private:
    VideoFrames() = default;

    /// Starts the decoder so that this frame is the first that it writes.
    void start(int frame);
    template <typename Sample>
    Picture read_samples(int frame);

    std::filesystem::path path_;
    std::size_t width_ = 0;
    std::size_t height_ = 0;
    int count_ = 0;
    std::string decoder_;   ///< empty: ffmpeg's choice
    std::string filter_;    ///< a part of ffmpeg's filter list, may be empty
    bool is_deep_ = false;  ///< samples of more than 8 bits
    std::unique_ptr<ReadChild> child_;
    int next_ = 0;  ///< the frame that the child writes next
};

}  // namespace flumo::media
