#include "media/picture_file.h"

#include <string>

#include "base/child_process.h"
#include "base/failure.h"
#include "base/file_contents.h"
#include "media/png_file.h"

namespace flumo::media {
namespace {

std::string first_line(const std::string& text) {
    return text.substr(0, text.find('\n'));
}

// ffmpeg's own message without the file name and the demuxer's address that it puts in front.
std::string reason_of(const std::string& errors) {
    const std::string line = first_line(errors);
    const size_t mark = line.rfind(": ");
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

Picture read_premultiplied_exr(const std::filesystem::path& path) {
    Picture picture = read_exr(path);
    unpremultiply(picture);
    return picture;
}

Picture read_by_contents(const std::filesystem::path& path) {
    const std::vector<uint8_t> start = read_file_start(path, 8);
    if (is_png(start)) return decode_png(read_file(path));
    if (is_exr(start)) return read_premultiplied_exr(path);
    return read_with_ffmpeg(path);
}

void write_premultiplied_exr(const std::filesystem::path& path, const Picture& picture,
                             const ExrNotes& notes) {
    Picture floats = to_float(picture);
    premultiply(floats);
    write_exr(path, floats, notes);
}

void write_png_of_any(const std::filesystem::path& path, const Picture& picture) {
    const bool is_float = std::holds_alternative<std::vector<float>>(picture.samples);
    write_png(path, is_float ? to_16_bit(picture) : picture);
}

}  // namespace

Picture read_picture(const std::filesystem::path& path) try {
    return read_by_contents(path);
} catch (const Failure&) {
    throw;
} catch (const std::exception& error) {
    throw input_failure("cannot read picture \"" + path.string() + "\": " + first_line(error.what()) +
                        "; expected PNG, OpenEXR or what ffmpeg reads");
}

void write_picture(const std::filesystem::path& path, PictureFormat format, const Picture& picture,
                   const PictureSettings& settings) try {
    NewFile file(path, settings.existing);
    if (format == PictureFormat::kExr) {
        write_premultiplied_exr(file.temporary(), picture, settings.exr);
    } else {
        write_png_of_any(file.temporary(), picture);
    }
    file.commit();
} catch (const Failure&) {
    throw;
} catch (const std::exception& error) {
    throw output_failure("cannot write \"" + path.string() + "\": " + first_line(error.what()));
}

}  // namespace flumo::media
