#include "judge/engine/rendered_frames.h"

#include <algorithm>

namespace flumo::judge {

namespace {

constexpr int kRounds = 3;

}  // namespace

std::vector<KnownFrame> known_frames(std::span<const std::unique_ptr<host::Instance>> instances,
                                     const std::vector<host::Depth>& depths) {
    std::vector<KnownFrame> known;
    for (int i = 0; i < 6; ++i) {
        host::FrameRequest request;
        request.width = 11 + 7 * (i % 3);
        request.height = 9 + 5 * (i % 2);
        request.frame = i;
        request.depth = depths[static_cast<size_t>(i) % depths.size()];
        host::Instance& instance = *instances[static_cast<size_t>(i) % instances.size()];
        known.push_back({&instance, request, instance.render(request)});
    }
    return known;
}

void Mismatches::add(std::string text) {
    const std::lock_guard guard(mutex_);
    if (std::ranges::find(texts_, text) == texts_.end()) texts_.push_back(std::move(text));
}

void Mismatches::report(CaseContext& context) const {
    for (const std::string& text : texts_)
        context.finding("the frames of a single thread", text);
}

void render_all(const std::vector<KnownFrame>& known, size_t start, Mismatches& mismatches) {
    host::World world;
    for (size_t i = 0; i < known.size() * kRounds; ++i) {
        const KnownFrame& expected = known[(start + i) % known.size()];
        try {
            expected.instance->render(expected.request, world);
            if (!world.same_picture(expected.frame)) mismatches.add("another " + name_of(expected.request));
            if (!world.guards_intact()) mismatches.add("bytes written outside of the pixels");
        } catch (const std::exception& error) {
            mismatches.add(error.what());
        }
    }
}

void require_threads(const Fixture& fixture) {
    if (!fixture.has_flag2(PF_OutFlag2_SUPPORTS_THREADED_RENDERING))
        throw Skipped{"no rendering on several threads"};
}

}  // namespace flumo::judge
