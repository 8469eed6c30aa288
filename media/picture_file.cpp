#include "media/picture_file.h"

#include <algorithm>
#include <string>

#include "base/child_process.h"
#include "base/failure.h"
#include "base/file_contents.h"
#include "media/picture/png_file.h"

namespace flumo::media {
namespace {

std::string first_line(const std::string& text) {
    return text.substr(0, text.find('\n'));
}

// ffmpeg's own message without the name of the file, and without the part of ffmpeg that speaks and its
// address in memory: "[mjpeg @ 0x55f1901c27c0] overread 8".
std::string reason_of(const std::string& errors) {
    std::string line = first_line(errors);
    const std::size_t speaker = line.starts_with('[') ? line.find("] ") : std::string::npos;
    if (speaker != std::string::npos) line.erase(0, speaker + 2);
    const std::size_t mark = line.rfind(": ");
    return line.empty() ? "it holds no picture" : mark == std::string::npos ? line : line.substr(mark + 2);
}

Picture read_with_ffmpeg(const std::filesystem::path& path) {
    // Without -xerror and explode a file that was cut short would come as half a picture.
    const auto result =
        run_child({"ffmpeg", "-nostdin", "-v", "error", "-xerror", "-err_detect", "explode", "-i",
                   "file:" + path.string(), "-frames:v", "1", "-c:v", "png", "-f", "image2pipe", "-"});
    if (!result) {
        throw std::runtime_error(
            "it is neither PNG nor OpenEXR, and ffmpeg, which reads the rest, is not installed");
    }
    if (result->status != 0 || result->output.empty()) throw std::runtime_error(reason_of(result->errors));
    return decode_png(result->output);
}

// Null for a format that the program does not read by itself.
const PictureFormatRow* format_of(const std::filesystem::path& path) {
    constexpr std::size_t kEnough = 8;
    const std::vector<uint8_t> start = read_file_start(path, kEnough);
    const auto rows = picture_formats();
    const auto found = std::ranges::find_if(rows, [&](const auto* row) { return row->matches(start); });
    return found == rows.end() ? nullptr : *found;
}

host::Depth depth_of(const Picture& picture) {
    if (std::holds_alternative<std::vector<float>>(picture.samples)) return host::Depth::k32;
    return std::holds_alternative<std::vector<uint8_t>>(picture.samples) ? host::Depth::k8 : host::Depth::k16;
}

// Runs a step of writing; what it throws names the file.
template <typename Step>
decltype(auto) writing(const std::filesystem::path& path, const Step& step) try {
    return step();
} catch (const Failure&) {
    throw;
} catch (const std::exception& error) {
    throw output_failure("cannot write \"" + path.string() + "\": " + first_line(error.what()));
}

}  // namespace

Picture read_picture(const std::filesystem::path& path) try {
    const auto* format = format_of(path);
    return format ? format->read(path) : read_with_ffmpeg(path);
} catch (const Failure&) {
    throw;
} catch (const std::exception& error) {
    throw input_failure("cannot read picture \"" + path.string() + "\": " + first_line(error.what()) +
                        "; expected PNG, OpenEXR or what ffmpeg reads");
}

bool is_single_picture(const std::filesystem::path& path) {
    return format_of(path) != nullptr;
}

FrameNotes read_notes(const std::filesystem::path& path) try {
    if (const auto* format = format_of(path)) return format->read_notes(path);
    FrameNotes notes;
    notes.scene = read_video_scene(path);
    return notes;
} catch (const Failure&) {
    throw;
} catch (const std::exception& error) {
    throw input_failure("cannot read \"" + path.string() + "\": " + first_line(error.what()));
}

NewPicture::NewPicture(const std::filesystem::path& path, PictureFormat format, const PictureShape& shape,
                       const PictureSettings& settings)
    : path_(path), file_(path, settings.existing), writer_(writing(path, [&] {
          return row_of(format).create(file_.temporary(), shape, settings.notes);
      })) {}

void NewPicture::write_rows(Picture rows) {
    writing(path_, [&] { writer_->write_rows(std::move(rows)); });
}

void NewPicture::finish() {
    writing(path_, [&] { writer_->finish(); });
    file_.commit();
}

void write_picture(const std::filesystem::path& path, PictureFormat format, Picture picture,
                   const PictureSettings& settings) {
    NewPicture file(path, format, {picture.width, picture.height, depth_of(picture)}, settings);
    file.write_rows(std::move(picture));
    file.finish();
}

bool is_whole_file(const std::filesystem::path& path, const OutputKind& kind) try {
    if (!std::filesystem::exists(path)) return false;
    if (!std::filesystem::is_regular_file(path)) return true;
    if (const auto* picture = std::get_if<PictureFormat>(&kind)) return row_of(*picture).is_whole(path);
    if (const auto* video = std::get_if<VideoFormat>(&kind)) return row_of(*video).is_whole(path);
    return true;
} catch (const std::exception&) {
    return false;
}

}  // namespace flumo::media
