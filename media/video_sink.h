// A video, encoded by the program ffmpeg.
#pragma once

#include <filesystem>
#include <string>

#include "base/child_process.h"
#include "base/frame_size.h"
#include "host/values/frame_rate.h"
#include "host/values/world.h"
#include "media/frame_sink.h"
#include "media/new_file.h"
#include "media/video_format.h"

namespace flumo::media {

struct VideoSettings {
    FrameSize size;
    host::Depth depth = host::Depth::k8;
    host::FrameRate rate{};
    Existing existing = Existing::kReplace;
    /// A scene file that renders the video again; may be empty, and is left out where it is longer than an
    /// argument of a program may be (128 KiB).
    std::string scene{};
};

/// Feeds raw frames (8 bits a channel, 16 from deeper ones) to ffmpeg:
///   .mp4   H.264, yuv420p, over black; odd sides are padded by a pixel
///   .mov   ProRes 4444, yuva444p10le, straight alpha
///   .mkv   FFV1, gbrap16le: lossless, straight alpha
///   .webm  VP9, yuva420p, straight alpha
///   .gif   a palette for each frame, one transparent colour
/// Colours are tagged as Rec. 709. The same frames make the same bytes. All but .gif hold the texts
/// `software` and `flumoScene`.
class VideoSink : public FrameSink {
  public:
    VideoSink(const std::filesystem::path& path, VideoFormat format, const VideoSettings& settings);

    /// Throws Failure (unwritable output) with ffmpeg's own words.
    void write(std::size_t position, const host::World& world) override;
    void finish() override;

  private:
    std::filesystem::path path_;
    bool has_alpha_;
    NewFile file_;
    FedChild ffmpeg_;
};

}  // namespace flumo::media
