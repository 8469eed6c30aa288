// Pictures from and to files of any format that the program knows.
#pragma once

#include <filesystem>

#include "media/exr_file.h"
#include "media/new_file.h"
#include "media/output_pattern.h"
#include "media/picture.h"

namespace flumo::media {

/// Reads a picture with straight alpha: PNG and OpenEXR by themselves (told by their contents, not their
/// names), anything else as its first frame through the program ffmpeg.
/// Throws Failure (unreadable input), naming the file.
Picture read_picture(const std::filesystem::path& path);

/// How a picture is written, where there is a choice.
struct PictureSettings {
    ExrNotes exr = {};
    Existing existing = Existing::kReplace;
};

/// Writes a picture with straight alpha, whole or not at all. PNG takes 8 bits, and 16 for 16-bit and
/// float samples; OpenEXR takes floats or halves with premultiplied alpha.
/// Throws Failure (unwritable output), naming the file.
void write_picture(const std::filesystem::path& path, PictureFormat format, const Picture& picture,
                   const PictureSettings& settings = {});

}  // namespace flumo::media
