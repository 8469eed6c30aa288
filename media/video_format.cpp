#include "media/video_format.h"

#include <array>
#include <stdexcept>
#include <string_view>

#include "base/child_process.h"
#include "base/file_contents.h"
#include "base/text_list.h"
#include "media/picture/frame_notes.h"

namespace flumo::media {
namespace {

using Words = std::vector<std::string>;

// From RGB to YUV by the matrix of ITU-R BT.709 and limited range; ffmpeg's own choice is BT.601.
std::string yuv_filter(const std::string& pixels) {
    return "scale=out_color_matrix=bt709:out_range=tv," + pixels +
           ",setparams=color_primaries=bt709:color_trc=bt709:colorspace=bt709:range=tv";
}

Words mp4_encoder() {
    return {"-vf",       yuv_filter("pad=ceil(iw/2)*2:ceil(ih/2)*2,format=yuv420p"),
            "-c:v",      "libx264",
            "-crf",      "16",
            "-f",        "mp4",
            "-movflags", "+faststart+use_metadata_tags"};
}

Words mov_encoder() {
    return {"-vf",        yuv_filter("format=yuva444p10le"),
            "-c:v",       "prores_ks",
            "-profile:v", "4444",
            "-f",         "mov",
            "-movflags",  "+use_metadata_tags"};
}

Words mkv_encoder() {
    return {"-vf",
            "format=gbrap16le,setparams=color_primaries=bt709:color_trc=bt709:colorspace=gbr:range=pc",
            "-c:v",
            "ffv1",
            "-level",
            "3",
            "-g",
            "1",
            "-slices",
            "4",
            "-slicecrc",
            "1",
            "-f",
            "matroska"};
}

Words webm_encoder() {
    return {"-vf",
            yuv_filter("format=yuva420p"),
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
            "-f",
            "webm"};
}

// One palette for the whole video would keep every frame in ffmpeg's memory.
Words gif_encoder() {
    return {
        "-filter_complex",
        "[0:v]split[a][b];[a]palettegen=stats_mode=single:reserve_transparent=1[p];[b][p]paletteuse=new=1",
        "-f", "gif"};
}

uint64_t big_endian(std::span<const uint8_t> bytes) {
    uint64_t number = 0;
    for (const uint8_t byte : bytes)
        number = number << 8 | byte;
    return number;
}

// The parts of an MP4 or QuickTime file follow one another to its very end.
bool is_whole_mp4(const std::filesystem::path& path) {
    const uint64_t end = std::filesystem::file_size(path);
    uint64_t place = 0;
    bool has_index = false;
    while (place + 8 <= end) {
        const std::vector<uint8_t> head = read_file_part(path, place, 16);
        if (std::string_view(reinterpret_cast<const char*>(head.data()) + 4, 4) == "moov") has_index = true;
        uint64_t size = big_endian(std::span(head).first(4));
        if (size == 1 && head.size() == 16) size = big_endian(std::span(head).subspan(8));
        if (size < 8 || size > end - place) return false;
        place += size;
    }
    return has_index && place == end;
}

// After the EBML header comes one segment; ffmpeg writes its size when it is done.
bool is_whole_matroska(const std::filesystem::path& path) {
    constexpr uint64_t kSegment = 0x18538067;
    constexpr uint64_t kLengthBits = 0x00FFFFFFFFFFFFFF;  // of a size in eight bytes
    const std::vector<uint8_t> head = read_file_start(path, 64);
    for (std::size_t i = 4; i + 12 <= head.size(); ++i) {
        if (big_endian(std::span(head).subspan(i, 4)) != kSegment) continue;
        const uint64_t size = big_endian(std::span(head).subspan(i + 4, 8)) & kLengthBits;
        return i + 12 + size == std::filesystem::file_size(path);
    }
    return false;
}

bool is_whole_gif(const std::filesystem::path& path) {
    return read_file_start(path, 1) == std::vector<uint8_t>{'G'} && file_ends_with(path, ";");
}

const VideoFormatRow kMp4Row = {VideoFormat::kMp4, ".mp4",      host::Depth::k8, false, true,
                                mp4_encoder,       is_whole_mp4};
const VideoFormatRow kMovRow = {VideoFormat::kMov, ".mov",      host::Depth::k16, true, true,
                                mov_encoder,       is_whole_mp4};
const VideoFormatRow kMkvRow = {VideoFormat::kMkv, ".mkv",           host::Depth::k16, true, true,
                                mkv_encoder,       is_whole_matroska};
const VideoFormatRow kWebmRow = {VideoFormat::kWebm, ".webm",          host::Depth::k8, true, true,
                                 webm_encoder,       is_whole_matroska};
const VideoFormatRow kGifRow = {VideoFormat::kGif, ".gif",      host::Depth::k8, true, false,
                                gif_encoder,       is_whole_gif};

constexpr std::array kRows = {&kMp4Row, &kMovRow, &kMkvRow, &kWebmRow, &kGifRow};

}  // namespace

const VideoFormatRow& row_of(VideoFormat format) {
    switch (format) {
        case VideoFormat::kMp4:
            return kMp4Row;
        case VideoFormat::kMov:
            return kMovRow;
        case VideoFormat::kMkv:
            return kMkvRow;
        case VideoFormat::kWebm:
            return kWebmRow;
        case VideoFormat::kGif:
            return kGifRow;
    }
    throw std::logic_error("a video format that does not exist");
}

std::span<const VideoFormatRow* const> video_formats() {
    return kRows;
}

std::string read_video_scene(const std::filesystem::path& path) {
    const auto result = run_child({"ffprobe", "-v", "error", "-show_entries", "format_tags", "-of",
                                   "default=noprint_wrappers=1", "file:" + path.string()});
    if (!result) throw std::runtime_error("ffprobe, which reads videos, is not installed");
    if (result->status != 0) throw std::runtime_error("ffprobe finds no video in it");
    const std::string mark = std::string("TAG:") + kSceneKey + "=";
    const std::string_view tags(reinterpret_cast<const char*>(result->output.data()), result->output.size());
    for (const std::string_view line : split(tags, '\n')) {
        // Matroska has keys in capital letters.
        if (equal_ignoring_case(line.substr(0, mark.size()), mark))
            return std::string(line.substr(mark.size()));
    }
    return "";
}

}  // namespace flumo::media
