#include "base/frame_size.h"

#include <string>

#include "base/failure.h"
#include "base/parse_number.h"
#include "base/text_list.h"

namespace flumo {

FrameSize checked_frame_size(long width, long height) {
    const auto fits = [](long side) { return side >= 1 && side <= kLargestSide; };
    if (!fits(width) || !fits(height)) {
        throw usage_failure("size " + std::to_string(width) + "x" + std::to_string(height) +
                            ": width and height must be 1 to " + std::to_string(kLargestSide));
    }
    return {static_cast<int>(width), static_cast<int>(height)};
}

FrameSize parse_frame_size(std::string_view text) {
    const auto sides = split(text, 'x');
    const auto width = parse_number<long>(sides[0]);
    const auto height = parse_number<long>(sides.back());
    if (sides.size() != 2 || !width || !height) {
        throw usage_failure("size " + in_quotes(text) + ": expected WIDTHxHEIGHT, such as 1920x1080");
    }
    return checked_frame_size(*width, *height);
}

}  // namespace flumo
