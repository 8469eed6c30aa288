// Any text where the program reads one: it is taken, and then means something sound, or refused with a line
// that says why and a status that a script can tell. The first byte chooses the reader.
#include <cmath>
#include <cstdlib>
#include <set>
#include <string_view>

#include "base/failure.h"
#include "base/frame_rate.h"
#include "cli/options/pointer_script.h"
#include "job/shard.h"
#include "media/output_pattern.h"
#include "scene/frame_list.h"
#include "scene/gradient/gradient_text.h"
#include "scene/scene.h"
#include "tests/scene/sample_catalog.h"

namespace flumo::cli {
namespace {

void require(bool held) {
    if (!held) std::abort();
}

void read_gradient(std::string_view text) {
    const std::vector<scene::Stop> stops = scene::parse_gradient(text);
    // Equal positions become one stop.
    require(scene::to_stored_form(stops).size() <= 4 + 24 * stops.size());
    for (const scene::Stop& stop : stops)
        require(stop.kind >= scene::StopKind::kLinear);
}

void check_scene(std::string_view text) {
    const scene::Scene scene = scene::parse_scene(text, "/scene.json", scene::sample_catalog());
    require(!scene.size || (scene.size->width > 0 && scene.size->height > 0));
    require(!scene.depth || *scene.depth == 8 || *scene.depth == 16 || *scene.depth == 32);
    for (const auto& [index, track] : scene.tracks) {
        require(track.control && track.control->index == index && !track.keyframes.empty());
        for (size_t i = 0; i < track.keyframes.size(); ++i) {
            const double* number = std::get_if<double>(&track.keyframes[i].value);
            require(!number || std::isfinite(*number));
            require(i == 0 || track.keyframes[i].frame > track.keyframes[i - 1].frame);
        }
    }
}

void check_frames(std::string_view text) {
    const std::vector<int> frames = scene::parse_frame_list(text);
    require(!frames.empty() && frames.size() <= 1000000);
    require(std::set<int>(frames.begin(), frames.end()).size() == frames.size());
}

void check_pattern(std::string_view text) {
    const media::OutputPattern pattern(text);
    for (const auto& [a, b] : {std::pair(0, 1), std::pair(-1, 1), std::pair(9, 10), std::pair(-12, -2)})
        require((pattern.path_of(a) != pattern.path_of(b)) == pattern.has_frame_number());
}

void check_rate(std::string_view text) {
    const host::FrameRate rate = parse_frame_rate(text);
    const host::FrameRate again = parse_frame_rate(frame_rate_text(rate));
    require(rate.num > 0 && rate.den > 0 && rate.num == again.num && rate.den == again.den);
}

void check_shard(std::string_view text) {
    const job::Shard shard = job::parse_shard(text);
    const job::ShardRange range = job::range_of(shard, 1000);
    require(shard.part >= 1 && shard.part <= shard.count && range.begin <= range.end && range.end <= 1000);
}

void check_script(std::string_view text) {
    for (const PointerEvent& event : parse_pointer_script(text, "script"))
        require(!event.text.empty());
}

constexpr void (*kReaders[])(std::string_view) = {read_gradient, check_scene, check_frames, check_pattern,
                                                  check_rate,    check_shard, check_script};

}  // namespace
}  // namespace flumo::cli

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace flumo::cli;
    if (size == 0) return 0;
    const std::string_view text(reinterpret_cast<const char*>(data) + 1, size - 1);
    // A name after it would be a file of this machine.
    if (text.find('@') != text.npos) return 0;
    try {
        kReaders[data[0] % std::size(kReaders)](text);
    } catch (const flumo::Failure& failure) {
        require(*failure.what() != '\0');
        require(failure.kind() == flumo::FailureKind::kUsage ||
                failure.kind() == flumo::FailureKind::kUnreadableInput);
    }
    return 0;
}
