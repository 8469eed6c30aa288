#include "media/video_frames.h"

#include <map>
#include <span>
#include <stdexcept>
#include <vector>

#include "base/parse_number.h"
#include "base/text_list.h"

namespace flumo::media {
namespace {

using Words = std::vector<std::string>;
using Properties = std::map<std::string, std::string, std::less<>>;

// The first video stream's, and its tags as TAG:name; empty when the file is no video.
Properties probe(const std::filesystem::path& path) {
    const auto result = run_child(
        {"ffprobe", "-v", "error", "-select_streams", "v:0", "-count_packets", "-show_entries",
         "stream=codec_name,width,height,pix_fmt,color_space,nb_read_packets:stream_tags=alpha_mode", "-of",
         "default=noprint_wrappers=1", "file:" + path.string()});
    Properties properties;
    if (!result || result->status != 0) return properties;
    const std::string_view text(reinterpret_cast<const char*>(result->output.data()), result->output.size());
    for (const std::string_view line : split(text, '\n')) {
        const std::size_t mark = line.find('=');
        if (mark != std::string_view::npos) properties.emplace(line.substr(0, mark), line.substr(mark + 1));
    }
    return properties;
}

template <typename Number>
Number number_of(const Properties& properties, std::string_view name) {
    const auto found = properties.find(name);
    return found == properties.end() ? Number{0} : parse_number<Number>(found->second).value_or(0);
}

std::string_view text_of(const Properties& properties, std::string_view name) {
    const auto found = properties.find(name);
    return found == properties.end() ? std::string_view() : found->second;
}

bool has(const Properties& properties, std::string_view name, std::string_view part) {
    return text_of(properties, name).find(part) != std::string_view::npos;
}

// ffmpeg names the byte order of samples of more than 8 bits, and of pixels that share 16 bits (rgb565le).
bool is_deep(std::string_view pixels) {
    for (const char* packed : {"rgb4", "bgr4", "rgb5", "bgr5"}) {
        if (pixels.starts_with(packed)) return false;
    }
    return pixels.ends_with("le") || pixels.ends_with("be");
}

}  // namespace

std::unique_ptr<VideoFrames> VideoFrames::open(const std::filesystem::path& path) {
    const Properties properties = probe(path);
    std::unique_ptr<VideoFrames> frames(new VideoFrames);
    frames->path_ = path;
    frames->width_ = number_of<std::size_t>(properties, "width");
    frames->height_ = number_of<std::size_t>(properties, "height");
    frames->count_ = number_of<int>(properties, "nb_read_packets");
    if (frames->count_ < 2 || frames->width_ == 0 || frames->height_ == 0) return nullptr;
    require_plausible_size(frames->width_, frames->height_, std::filesystem::file_size(path));
    // Only this decoder knows the alpha of VP8 and VP9.
    const bool has_alpha = has(properties, "TAG:alpha_mode", "1") || has(properties, "TAG:ALPHA_MODE", "1");
    if (has_alpha && has(properties, "codec_name", "vp9")) frames->decoder_ = "libvpx-vp9";
    if (has_alpha && has(properties, "codec_name", "vp8")) frames->decoder_ = "libvpx";
    const bool is_tagged = properties.contains("color_space") && !has(properties, "color_space", "unknown");
    if (!is_tagged && has(properties, "pix_fmt", "yuv")) frames->filter_ = "setparams=colorspace=bt709,";
    frames->is_deep_ = is_deep(text_of(properties, "pix_fmt"));
    return frames;
}

Picture VideoFrames::read(int frame) {
    if (!child_ || frame < next_) start(frame);
    return is_deep_ ? read_samples<uint16_t>(frame) : read_samples<uint8_t>(frame);
}

// ffmpeg would make 65280 of an 8-bit white in 16 bits, so that samples stay at 8 bits where the video has
// them.
void VideoFrames::start(int frame) {
    Words words = {"ffmpeg", "-nostdin", "-v", "error"};
    if (!decoder_.empty()) words.insert(words.end(), {"-c:v", decoder_});
    const std::string select = "select=gte(n\\," + std::to_string(frame) + "),";
    const std::string format = is_deep_ ? "format=rgba64le" : "format=rgba";
    words.insert(words.end(), {"-i", "file:" + path_.string(), "-map", "0:v:0", "-vf",
                               select + filter_ + format, "-fps_mode", "passthrough", "-f", "rawvideo", "-"});
    child_ = std::make_unique<ReadChild>(words);
    next_ = frame;
}

template <typename Sample>
Picture VideoFrames::read_samples(int frame) {
    std::vector<Sample> samples(width_ * height_ * 4);
    for (; next_ <= frame; ++next_) {
        const auto bytes = std::as_writable_bytes(std::span(samples));
        if (child_->read(bytes) != bytes.size()) {
            child_.reset();
            throw std::runtime_error("the video ends before frame " + std::to_string(next_));
        }
    }
    return {width_, height_, std::move(samples)};
}

}  // namespace flumo::media
