#include "media/video_sink.h"

#include <vector>

#include "base/failure.h"
#include "base/frame_rate.h"
#include "media/picture/frame_notes.h"
#include "media/raw_frame.h"
#include "media/world_picture.h"

namespace flumo::media {
namespace {

using Words = std::vector<std::string>;

constexpr std::size_t kLongestScene = 120'000;

// Texts for the container; the bit-exact flags keep out the muxer's random numbers.
Words notes_of(const VideoFormatRow& row, const VideoSettings& settings) {
    Words words = {"-fflags", "+bitexact", "-flags:v", "+bitexact"};
    const auto add = [&words](const std::string& key, const std::string& text) {
        words.insert(words.end(), {"-metadata", key + "=" + text});
    };
    if (!row.has_notes) return words;
    add("software", software_name());
    if (!settings.scene.empty() && settings.scene.size() <= kLongestScene) add(kSceneKey, settings.scene);
    return words;
}

Words ffmpeg_command(const std::filesystem::path& file, const VideoFormatRow& row,
                     const VideoSettings& settings) {
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
    // The muxer is named by the encoder's words, since the temporary file's name tells nothing.
    for (const Words& more : {row.encoder(), notes_of(row, settings)})
        words.insert(words.end(), more.begin(), more.end());
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

// cppcheck-suppress uninitMemberVar ; it does not read the list after a try
VideoSink::VideoSink(const std::filesystem::path& path, VideoFormat format, const VideoSettings& settings) try
    : path_(path),
      has_alpha_(row_of(format).has_alpha),
      file_(path, settings.existing),
      ffmpeg_(ffmpeg_command(file_.temporary(), row_of(format), settings)) {
} catch (const Failure&) {
    throw;
} catch (const std::exception& error) {
    throw output_failure("cannot write \"" + path.string() + "\": " + error.what());
}

void VideoSink::write(std::size_t, const host::World& world) {
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
