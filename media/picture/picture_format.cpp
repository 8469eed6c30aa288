#include "media/picture/picture_format.h"

#include <array>
#include <stdexcept>

#include "base/file_contents.h"
#include "media/picture/exr_file.h"
#include "media/picture/png_file.h"

namespace flumo::media {
namespace {

Picture read_png(const std::filesystem::path& path) {
    return decode_png(read_file(path));
}

constexpr PictureFormatRow kPngRow = {
    .format = PictureFormat::kPng,
    .name = "PNG",
    .ending = ".png",
    .usual_depth = host::Depth::k8,
    .takes_linear = false,
    .matches = is_png,
    .read = read_png,
    .read_notes = read_png_notes,
    .is_whole = is_whole_png,
    .create = create_png,
};

constexpr PictureFormatRow kExrRow = {
    .format = PictureFormat::kExr,
    .name = "OpenEXR",
    .ending = ".exr",
    .usual_depth = host::Depth::k32,
    .takes_linear = true,
    .matches = is_exr,
    .read = read_straight_exr,
    .read_notes = read_exr_notes,
    .is_whole = is_whole_exr,
    .create = create_exr,
};

constexpr std::array kRows = {&kPngRow, &kExrRow};

constexpr const PictureFormatRow* find_row(PictureFormat format) {
    for (const PictureFormatRow* row : kRows) {
        if (row->format == format) return row;
    }
    return nullptr;
}

template <PictureFormat kFormat>
const PictureFormatRow& listed_row() {
    static_assert(find_row(kFormat) != nullptr, "kRows lacks this format");
    return *find_row(kFormat);
}

}  // namespace

const PictureFormatRow& row_of(PictureFormat format) {
    switch (format) {
        case PictureFormat::kPng:
            return listed_row<PictureFormat::kPng>();
        case PictureFormat::kExr:
            return listed_row<PictureFormat::kExr>();
    }
    throw std::logic_error("a picture format that does not exist");
}

std::span<const PictureFormatRow* const> picture_formats() {
    return kRows;
}

}  // namespace flumo::media
