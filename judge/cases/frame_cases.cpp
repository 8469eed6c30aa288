// Level 3: frames.
#include <algorithm>
#include <optional>

#include "judge/cases/case_table.h"
#include "judge/engine/callers_context.h"
#include "judge/engine/frame_judge.h"

namespace flumo::judge {

namespace {

constexpr std::pair<int, int> kSizes[] = {{1, 1}, {2, 3}, {7, 5}, {33, 17}, {64, 36}, {1, 40}, {50, 1}};
constexpr int kPaddings[] = {0, 1, 7};
constexpr int kLooks = 12;

host::FrameRequest frame_of(int width, int height, host::Depth depth, int row_padding = 0) {
    host::FrameRequest request;
    request.width = width;
    request.height = height;
    request.depth = depth;
    request.row_padding = row_padding;
    return request;
}

/// Requests of a host that shows only a part of a 40 x 30 frame.
constexpr std::pair<const char*, PF_LRect> kRegions[] = {
    {"inside", {5, 7, 20, 19}},       {"corner", {0, 0, 1, 1}},     {"last-pixel", {39, 29, 40, 30}},
    {"across", {-10, -10, 15, 12}},   {"beyond", {30, 20, 60, 50}}, {"empty", {10, 10, 10, 10}},
    {"outside", {100, 100, 120, 120}}};

bool same_rect(const PF_LRect& a, const PF_LRect& b) {
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}

void judge_region(CaseContext& context, host::Instance& instance, const host::FrameRequest& request) {
    const host::FramePlan plan = instance.plan(request);
    const host::FramePlan again = instance.plan(request);
    context.expect(same_rect(plan.result_rect, again.result_rect) &&
                       same_rect(plan.max_result_rect, again.max_result_rect),
                   "the same announcement each time", "two announcements");
    judged_frame(context, instance, request);
}

void judge_padding(CaseContext& context, host::Instance& instance, host::Depth depth) {
    std::optional<host::World> plain;
    for (const int padding : kPaddings) {
        set_layers(instance, {.depth = depth, .row_padding = padding});
        host::FrameRequest request = frame_of(19, 11, depth, padding);
        const host::World frame = judged_frame(context, instance, request);
        if (plain) judge_same(context, *plain, frame, "rows without padding");
        if (!plain) plain = frame;
    }
}

void judge_repetition(Fixture& fixture, host::Depth depth) {
    const auto instance = fixture.host().new_instance();
    std::vector<host::World> frames;
    host::FrameRequest request = frame_of(24, 14, depth);
    for (request.frame = 0; request.frame < 4; ++request.frame)
        frames.push_back(instance->render(request));
    for (request.frame = 3; request.frame >= 0; --request.frame)
        judge_same(fixture.context(), frames[static_cast<size_t>(request.frame)], instance->render(request),
                   "the first time");
    const auto other = fixture.host().new_instance();
    request.frame = 2;
    judge_same(fixture.context(), frames[2], other->render(request),
               "another instance with the same settings");
}

void judge_context(Fixture& fixture, host::Depth depth, const std::function<bool()>& is_kept) {
    const auto instance = fixture.host().new_instance();
    set_layers(*instance, {.depth = depth});
    for (int frame = 0; frame < 2; ++frame) {
        instance->render(frame_of(16 + frame, 9, depth));
        fixture.context().expect(is_kept(), "the caller's OpenGL state kept", "another context or interface");
    }
}

void judge_stopped(Fixture& fixture, host::Depth depth) {
    const auto instance = fixture.host().new_instance();
    host::FrameRequest request = frame_of(24, 14, depth);
    request.abort = [] { return PF_Interrupt_CANCEL; };
    host::World world;
    try {
        // An effect that never asks whether to stop may well succeed.
        instance->render(request, world);
    } catch (const host::HostError& error) {
        fixture.context().expect(error.code() == PF_Interrupt_CANCEL, "the host's own number, 517",
                                 host::error_name(error.code()));
    }
    request.abort = nullptr;
    judged_frame(fixture.context(), *instance, request);
}

}  // namespace

void play_frame_sizes(CaseContext& context) {
    with_fixture(context, [](Fixture& fixture) {
        const auto instance = fixture.host().new_instance();
        for (const host::Depth depth : depths_of(fixture)) {
            for (const auto& [width, height] : kSizes) {
                for (const int padding : kPaddings) {
                    const host::FrameRequest request = frame_of(width, height, depth, padding);
                    fixture.step(name_of(request),
                                 [&] { judged_frame(fixture.context(), *instance, request); });
                }
            }
        }
    });
}

void play_row_padding(CaseContext& context) {
    with_fixture(context, [](Fixture& fixture) {
        for_each_depth(fixture, "padded", [&](host::Depth depth) {
            const auto instance = fixture.host().new_instance();
            judge_padding(fixture.context(), *instance, depth);
        });
    });
}

void play_partial_frames(CaseContext& context) {
    with_fixture(context, [](Fixture& fixture) {
        const auto instance = fixture.host().new_instance();
        for (const auto& [name, region] : kRegions) {
            for_each_depth(fixture, name, [&, rect = region](host::Depth depth) {
                host::FrameRequest request = frame_of(40, 30, depth, 3);
                request.region = rect;
                judge_region(fixture.context(), *instance, request);
            });
        }
        for (const int reduction : {2, 3}) {
            for_each_depth(fixture, "reduced-" + std::to_string(reduction), [&](host::Depth depth) {
                host::FrameRequest request = frame_of(41, 31, depth, 3);
                request.downsample_x.den = request.downsample_y.den = static_cast<A_u_long>(reduction);
                judged_frame(fixture.context(), *instance, request);
            });
        }
    });
}

void play_repeated_frames(CaseContext& context) {
    with_fixture(context, [](Fixture& fixture) {
        for_each_depth(fixture, "repeated", [&](host::Depth depth) { judge_repetition(fixture, depth); });
    });
}

void play_looks(CaseContext& context) {
    with_fixture(context, [](Fixture& fixture) {
        const std::vector<host::Depth> depths = depths_of(fixture);
        for (int look = 0; look < kLooks; ++look) {
            const std::string name = "look-" + std::to_string(look);
            fixture.step(name, [&] {
                std::mt19937_64 random = fixture.context().random(name);
                const host::Depth depth = depths[random() % depths.size()];
                const auto instance = fixture.host().new_instance();
                set_randomly(*instance, random, depth);
                const int width = between(random, 1, 48);
                judged_frame(fixture.context(), *instance, frame_of(width, between(random, 1, 48), depth, 2));
            });
        }
    });
}

void play_callers_context(CaseContext& context) {
    with_fixture(context, [](Fixture& fixture) {
        for_each_depth(fixture, "none",
                       [&](host::Depth depth) { judge_context(fixture, depth, has_no_context); });
        const auto caller = CallersContext::make();
        if (!caller) {
            fixture.context().note("EGL to offer a context for the caller", "none");
            return;
        }
        for_each_depth(fixture, "own", [&](host::Depth depth) {
            judge_context(fixture, depth, [&] { return caller->is_current(); });
        });
    });
}

void play_abort(CaseContext& context) {
    with_fixture(context, [](Fixture& fixture) {
        for_each_depth(fixture, "stopped", [&](host::Depth depth) { judge_stopped(fixture, depth); });
    });
}

}  // namespace flumo::judge
