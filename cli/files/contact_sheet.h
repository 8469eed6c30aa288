// Many pictures on one, with labels.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "media/picture/picture.h"

namespace flumo::cli {

struct SheetCell {
    media::Picture picture;
    std::vector<std::string> lines;  ///< under the picture, the first one bold
};

/// How a sheet is laid out, in pixels.
struct SheetLayout {
    std::size_t columns = 4;
    std::size_t cell_width = 320;
    std::size_t most_lines = 4;  ///< of a label; what a cell has more of is left out
};

/// As many columns as make a sheet of 4:3 of that many pictures of 16:9.
std::size_t usual_columns(std::size_t cells);

/// The cells row by row from the upper left, each as high as the first picture's shape makes it, on dark
/// grey; transparent parts of pictures show a chequered ground. 8 bits a channel. Throws std::runtime_error
/// when Cairo fails.
media::Picture contact_sheet(std::span<const SheetCell> cells, const SheetLayout& layout);

}  // namespace flumo::cli
