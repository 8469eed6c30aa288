#include "scene/frame_list.h"

#include <string>
#include <unordered_set>

#include "base/failure.h"
#include "base/parse_number.h"
#include "base/text_list.h"

namespace flumo::scene {
namespace {

constexpr std::size_t kMostFrames = 1'000'000;

struct FrameRange {
    int first;
    int last;
    int step;
};

[[noreturn]] void fail(std::string_view part, const std::string& why) {
    throw usage_failure("frames \"" + std::string(part) + "\": " + why);
}

int parse_frame(std::string_view text, std::string_view part) {
    const auto frame = parse_number<int>(text);
    if (!frame) fail(part, "expected N, A-B or A-BxSTEP, such as 1-100x2");
    return *frame;
}

FrameRange parse_range(std::string_view part) {
    std::string_view range = part;
    int step = 1;
    if (const std::size_t mark = range.find_first_of("x:"); mark != std::string_view::npos) {
        step = parse_frame(range.substr(mark + 1), part);
        range = range.substr(0, mark);
        if (range.find('-', 1) == std::string_view::npos) fail(part, "a step needs a range, such as 1-100x2");
    }
    if (step < 1) fail(part, "the step must be 1 or more");
    const std::size_t dash = range.empty() ? std::string_view::npos : range.find('-', 1);
    const int first = parse_frame(range.substr(0, dash), part);
    const int last = dash == std::string_view::npos ? first : parse_frame(range.substr(dash + 1), part);
    if (last < first) fail(part, "the range is reversed");
    return {first, last, step};
}

}  // namespace

std::vector<int> parse_frame_list(std::string_view text) {
    std::vector<int> frames;
    std::unordered_set<int> seen;
    for (const std::string_view part : split(text, ',')) {
        const FrameRange range = parse_range(part);
        for (long frame = range.first; frame <= range.last; frame += range.step) {
            if (!seen.insert(static_cast<int>(frame)).second) continue;
            if (frames.size() == kMostFrames) fail(part, "a list holds at most 1000000 frames");
            frames.push_back(static_cast<int>(frame));
        }
    }
    return frames;
}

std::string frame_list_text(std::span<const int> frames) {
    std::string text;
    while (!frames.empty()) {
        const int64_t step = frames.size() > 1 ? int64_t{frames[1]} - frames[0] : 0;
        std::size_t count = 1;
        while (step > 0 && count < frames.size() && int64_t{frames[count]} - frames[count - 1] == step)
            ++count;
        if (count < 3) count = 1;
        if (!text.empty()) text += ',';
        text += std::to_string(frames[0]);
        if (count > 1) text.append(1, '-').append(std::to_string(frames[count - 1]));
        if (count > 1 && step > 1) text.append(1, 'x').append(std::to_string(step));
        frames = frames.subspan(count);
    }
    return text;
}

}  // namespace flumo::scene
