#include "media/video_sink.h"

#include <vector>

#include "base/failure.h"
#include "base/frame_rate.h"
#include "media/raw_frame.h"
#include "media/world_picture.h"

namespace flumo::media {
namespace {

using Words = std::vector<std::string>;

// The muxer is named, since the temporary file's name tells nothing. The matrix is given where RGB becomes
// YUV: ffmpeg's own choice is BT.601.
Words encoder_of(VideoFormat format) {
    switch (format) {
        case VideoFormat::kMp4:
            return {"-vf",
                    "scale=out_color_matrix=bt709:out_range=tv,pad=ceil(iw/2)*2:ceil(ih/2)*2,format=yuv420p",
                    "-c:v",
                    "libx264",
                    "-crf",
                    "16",
                    "-colorspace",
                    "bt709",
                    "-color_primaries",
                    "bt709",
                    "-color_trc",
                    "bt709",
                    "-movflags",
                    "+faststart",
                    "-f",
                    "mp4"};
        case VideoFormat::kMov:
            return {"-vf",
                    "scale=out_color_matrix=bt709:out_range=tv,format=yuva444p10le",
                    "-c:v",
                    "prores_ks",
                    "-profile:v",
                    "4444",
                    "-colorspace",
                    "bt709",
                    "-color_primaries",
                    "bt709",
                    "-color_trc",
                    "bt709",
                    "-f",
                    "mov"};
        case VideoFormat::kMkv:
            return {"-pix_fmt", "gbrap16le", "-c:v", "ffv1",      "-level", "3",  "-g",
                    "1",        "-slices",   "4",    "-slicecrc", "1",      "-f", "matroska"};
        case VideoFormat::kWebm:
            return {"-vf",
                    "scale=out_color_matrix=bt709:out_range=tv,format=yuva420p",
                    "-c:v",
                    "libvpx-vp9",
                    "-crf",
                    "20",
                    "-b:v",
                    "0",
                    "-row-mt",
                    "1",
                    "-cpu-used",
                    "4",
                    "-auto-alt-ref",
                    "0",
                    "-colorspace",
                    "bt709",
                    "-f",
                    "webm"};
        case VideoFormat::kGif:
            break;
    }
    // One palette for the whole film would keep every frame in ffmpeg's memory.
    return {
        "-filter_complex",
        "[0:v]split[a][b];[a]palettegen=stats_mode=single:reserve_transparent=1[p];[b][p]paletteuse=new=1",
        "-f", "gif"};
}

Words ffmpeg_command(const std::filesystem::path& file, VideoFormat format, const VideoSettings& settings) {
    // A disk that is full when the file closes is an error of its own only with -xerror.
    Words words = {
        "ffmpeg",   "-nostdin",
        "-xerror",  "-v",
        "error",    "-y",
        "-f",       "rawvideo",
        "-pix_fmt", settings.depth == host::Depth::k8 ? "rgba" : "rgba64le",
        "-s",       std::to_string(settings.size.width) + "x" + std::to_string(settings.size.height),
        "-r",       frame_rate_text(settings.rate),
        "-i",       "-"};
    const Words encoder = encoder_of(format);
    words.insert(words.end(), encoder.begin(), encoder.end());
    words.push_back("file:" + file.string());
    return words;
}

Failure refusal(const std::filesystem::path& path, const ChildResult& result) {
    // What follows the first line is its consequence.
    std::string words = result.errors.substr(0, result.errors.find('\n'));
    if (words.empty()) words = "it said nothing";
    return output_failure("cannot write \"" + path.string() + "\": ffmpeg ended with status " +
                          std::to_string(result.status) + ": " + words);
}

}  // namespace

// cppcheck-suppress uninitMemberVar ; it does not read the list behind a try
VideoSink::VideoSink(const std::filesystem::path& path, VideoFormat format, const VideoSettings& settings) try
    : path_(path),
      has_alpha_(format != VideoFormat::kMp4),
      file_(path, settings.existing),
      ffmpeg_(ffmpeg_command(file_.temporary(), format, settings)) {
} catch (const Failure&) {
    throw;
} catch (const std::exception& error) {
    throw output_failure("cannot write \"" + path.string() + "\": " + error.what());
}

void VideoSink::write(size_t, const host::World& world) {
    Picture picture = picture_of(world);
    const bool is_8_bit = std::holds_alternative<std::vector<uint8_t>>(picture.samples);
    if (!is_8_bit) picture = to_16_bit(picture);
    if (!has_alpha_) put_over_black(picture);
    if (!ffmpeg_.write(raw_frame(is_8_bit ? RawFormat::kRgba : RawFormat::kRgba64, picture)))
        throw refusal(path_, ffmpeg_.finish());
}

void VideoSink::finish() {
    const ChildResult result = ffmpeg_.finish();
    if (result.status != 0) throw refusal(path_, result);
    file_.commit();
}

}  // namespace flumo::media
