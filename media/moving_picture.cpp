#include "media/moving_picture.h"

#include <algorithm>
#include <string>
#include <vector>

#include "base/failure.h"
#include "base/parse_number.h"
#include "base/text_list.h"
#include "media/numbered_name.h"
#include "media/picture_file.h"
#include "media/video_frames.h"

namespace flumo::media {
namespace {

namespace fs = std::filesystem;

// The number to show, out of first to last.
int placed(int number, int first, int last, bool loops) {
    if (!loops) return std::clamp(number, first, last);
    const int64_t count = int64_t{last} - first + 1;
    const int64_t place = (int64_t{number} - first) % count;
    return static_cast<int>(first + (place < 0 ? place + count : place));
}

class Sequence : public MovingPicture {
  public:
    Sequence(NumberedName name, int first, int last, const LayerText& layer)
        : name_(std::move(name)), first_(first), last_(last), layer_(layer) {}

    Picture at(int frame) override { return read_picture(name_.path_of(number_at(frame))); }
    bool same(int frame, int other) const override { return number_at(frame) == number_at(other); }

  private:
    int number_at(int frame) const { return placed(frame + layer_.offset, first_, last_, layer_.loops); }

    NumberedName name_;
    int first_;
    int last_;
    LayerText layer_;
};

class Video : public MovingPicture {
  public:
    Video(std::unique_ptr<VideoFrames> frames, const LayerText& layer)
        : frames_(std::move(frames)), layer_(layer) {}

    Picture at(int frame) override try {
        return frames_->read(number_at(frame));
    } catch (const std::runtime_error& error) {
        throw input_failure("cannot read video \"" + layer_.file.string() + "\": " + error.what());
    }
    bool same(int frame, int other) const override { return number_at(frame) == number_at(other); }

  private:
    int number_at(int frame) const {
        return placed(frame + layer_.offset, 0, frames_->count() - 1, layer_.loops);
    }

    std::unique_ptr<VideoFrames> frames_;
    LayerText layer_;
};

// The numbers of the files that have the name. Those whose path does not come out the same, such as a number
// without its padding, are others'.
std::vector<int> numbers_of(const NumberedName& name) {
    const fs::path folder = fs::path(name.before()).parent_path();
    std::vector<int> numbers;
    std::error_code ignored;
    for (const auto& entry : fs::directory_iterator(folder.empty() ? "." : folder, ignored)) {
        const std::string path = (folder / entry.path().filename()).string();
        if (path.size() <= name.before().size() + name.after().size() || !path.starts_with(name.before()))
            continue;
        const auto digits = std::string_view(path).substr(
            name.before().size(), path.size() - name.before().size() - name.after().size());
        const auto number = parse_number<int>(digits);
        if (number && name.path_of(*number) == path) numbers.push_back(*number);
    }
    return numbers;
}

std::unique_ptr<MovingPicture> open_sequence(const NumberedName& name, const LayerText& layer) {
    const std::vector<int> numbers = numbers_of(name);
    if (numbers.empty())
        throw input_failure("cannot read sequence \"" + layer.file.string() +
                            "\": there is no file of that name");
    const auto [first, last] = std::ranges::minmax(numbers);
    return std::make_unique<Sequence>(name, first, last, layer);
}

// Takes the last ",key=value" off the text where there is one.
bool take_setting(std::string& text, LayerText& layer) {
    const std::size_t comma = text.rfind(',');
    if (comma == std::string::npos) return false;
    const std::string setting = text.substr(comma + 1);
    const std::size_t mark = setting.find('=');
    const std::string key = setting.substr(0, mark);
    if (mark == std::string::npos || (key != "offset" && key != "end")) return false;
    const std::string value = setting.substr(mark + 1);
    if (key == "end") {
        if (value != "hold" && value != "loop")
            throw usage_failure("end " + in_quotes(value) + ": expected hold or loop");
        layer.loops = value == "loop";
    } else {
        constexpr int kMost = 1'000'000'000;
        const auto offset = parse_number<int>(value);
        if (!offset || *offset < -kMost || *offset > kMost)
            throw usage_failure("offset " + in_quotes(value) + ": expected a number of frames");
        layer.offset = *offset;
    }
    text.resize(comma);
    return true;
}

}  // namespace

LayerText parse_layer_text(const fs::path& text) {
    LayerText layer;
    std::string file = text.string();
    std::error_code ignored;
    while (!fs::exists(file, ignored) && take_setting(file, layer)) {
    }
    layer.file = file;
    return layer;
}

std::unique_ptr<MovingPicture> open_moving_picture(const LayerText& layer) {
    std::error_code ignored;
    if (!fs::exists(layer.file, ignored)) {
        const NumberedName name(layer.file.string());
        if (name.has_number()) return open_sequence(name, layer);
    } else if (!is_single_picture(layer.file)) {
        auto frames = VideoFrames::open(layer.file);
        if (frames) return std::make_unique<Video>(std::move(frames), layer);
    }
    if (layer.offset != 0 || layer.loops)
        throw usage_failure("\"" + layer.file.string() +
                            "\" is a single picture, which has no offset and no end");
    return nullptr;
}

}  // namespace flumo::media
