// Pictures from and to files of any format that the program knows.
#pragma once

#include <filesystem>
#include <memory>

#include "media/new_file.h"
#include "media/output_pattern.h"
#include "media/picture/picture.h"
#include "media/picture/picture_format.h"

namespace flumo::media {

/// Reads a picture with straight alpha: PNG and OpenEXR by themselves (told by their contents, not their
/// names), anything else as its first frame through the program ffmpeg.
/// Throws Failure (unreadable input), naming the file.
Picture read_picture(const std::filesystem::path& path);

/// Whether the file is of one of the program's own formats, which hold one picture. Throws Failure
/// (unreadable input).
bool is_single_picture(const std::filesystem::path& path);

/// What the file says beside its pixels: of a picture, or of a video through the program ffprobe. Throws
/// Failure (unreadable input), naming the file.
FrameNotes read_notes(const std::filesystem::path& path);

/// How a picture is written, where there is a choice.
struct PictureSettings {
    FrameNotes notes = {};
    Existing existing = Existing::kReplace;
};

/// A picture of straight alpha that is written row by row and appears whole or not at all.
class NewPicture {
  public:
    /// Throws Failure (unwritable output), naming the file, as the other functions do.
    NewPicture(const std::filesystem::path& path, PictureFormat format, const PictureShape& shape,
               const PictureSettings& settings = {});

    /// The next rows from the top, at the depth of the shape and as wide.
    void write_rows(Picture rows);

    /// After the last row: the file gets its name.
    void finish();

  private:
    std::filesystem::path path_;
    NewFile file_;
    std::unique_ptr<PictureWriter> writer_;
};

/// Writes a whole picture with straight alpha, as NewPicture.
void write_picture(const std::filesystem::path& path, PictureFormat format, Picture picture,
                   const PictureSettings& settings = {});

/// Whether a complete file of that kind lies there. False for one that is empty or cut short; anything that
/// is no regular file, such as a device, counts as complete.
bool is_whole_file(const std::filesystem::path& path, const OutputKind& kind);

}  // namespace flumo::media
