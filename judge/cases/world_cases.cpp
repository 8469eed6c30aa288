// Level 3: worlds, records and times as hosts were seen to hand them out.
#include <array>
#include <cstring>

#include "host/frame.h"
#include "judge/cases/case_table.h"
#include "judge/engine/frame_judge.h"

namespace flumo::judge {

namespace {

/// Layer pixels; every frame of these cases is of this size.
constexpr int kWidth = 40;
constexpr int kHeight = 30;
/// A tenth of the layer beyond each edge.
constexpr PF_LRect kBeyondTheLayer{-4, -3, 44, 33};
/// A host was seen to set it in the flags of float worlds.
constexpr A_long kObservedFlag = 0x02000000;

constexpr std::pair<const char*, PF_LRect> kInputRects[] = {{"masked", {8, 6, 31, 22}},
                                                            {"grown", kBeyondTheLayer},
                                                            {"offset", {12, -5, 52, 25}},
                                                            {"empty", {10, 10, 10, 10}}};

constexpr std::pair<const char*, PF_LRect> kOutputRects[] = {{"larger", kBeyondTheLayer},
                                                             {"smaller", {8, 6, 31, 22}}};

/// Requests that an effect may have no result for: nothing, a place outside, and small parts.
constexpr std::pair<const char*, PF_LRect> kSmallRequests[] = {{"nothing", {9, 9, 9, 9}},
                                                               {"outside", {60, 50, 70, 60}},
                                                               {"pixel", {20, 11, 21, 12}},
                                                               {"corner", {36, 27, 40, 30}}};

host::FrameRequest frame_of(host::Depth depth) {
    host::FrameRequest request;
    request.width = kWidth;
    request.height = kHeight;
    request.depth = depth;
    request.row_padding = 3;
    return request;
}

/// The request with a patterned input layer in its place, of the request's row order and flags.
host::FrameRequest with_input(host::FrameRequest request) {
    request.input = input_pattern(request);
    return request;
}

/// The frame and its layers with these properties of all worlds.
host::World frame_with(Fixture& fixture, host::FrameRequest request) {
    const auto instance = fixture.host().new_instance();
    set_layers(*instance, {.depth = request.depth,
                           .row_padding = 2,
                           .bottom_up = request.bottom_up,
                           .extra_flags = request.extra_world_flags});
    return judged_frame(fixture.context(), *instance, with_input(std::move(request)));
}

void judge_input_rect(Fixture& fixture, host::Depth depth, const PF_LRect& place) {
    const auto instance = fixture.host().new_instance();
    host::FrameRequest request = frame_of(depth);
    request.input_rect = place;
    judged_frame(fixture.context(), *instance, request);
    // The output world then has the size and the origin of the result rectangle.
    request.region = kBeyondTheLayer;
    judged_frame(fixture.context(), *instance, request);
}

/// No rule says what an effect does with an output world of another size than it announced, as long as it
/// writes nothing outside.
void judge_output_rect(Fixture& fixture, host::Depth depth, const PF_LRect& place) {
    const auto instance = fixture.host().new_instance();
    host::FrameRequest request = with_input(frame_of(depth));
    const host::World announced = instance->render(request);
    request.output_rect = place;
    const ObservedFrame seen = observed_frame(fixture.context(), *instance, request);
    int moved = 0;
    int common = 0;
    for (int y = std::max(place.top, 0); y < std::min(place.bottom, kHeight); ++y) {
        for (int x = std::max(place.left, 0); x < std::min(place.right, kWidth); ++x, ++common)
            moved += seen.frame.rgba(x - place.left, y - place.top) != announced.rgba(x, y);
    }
    fixture.context().note("what an output world that was not announced gets",
                           std::to_string(seen.unwritten) + " pixels untouched, " + std::to_string(moved) +
                               " of " + std::to_string(common) +
                               " common pixels not at their place in the layer");
}

void judge_flags(Fixture& fixture, host::Depth depth) {
    const host::World plain = frame_with(fixture, frame_of(depth));
    host::FrameRequest request = frame_of(depth);
    request.extra_world_flags = kObservedFlag;
    judge_same(fixture.context(), plain, frame_with(fixture, request), "worlds without further flags");
}

/// Hosts were seen to leave the bit for deep worlds clear on float worlds; an effect may rely on that.
void judge_deep_bit(Fixture& fixture) {
    const host::World clear = frame_with(fixture, frame_of(host::Depth::k32));
    host::FrameRequest request = frame_of(host::Depth::k32);
    request.extra_world_flags = PF_WorldFlag_DEEP;
    try {
        const bool same = frame_with(fixture, request).same_picture(clear);
        if (!same)
            fixture.context().note("the deep bit on float worlds to make no difference", "another picture");
    } catch (const host::HostError& error) {
        fixture.context().note("the deep bit on float worlds to make no difference", error.what());
    }
}

/// After an empty result the host sends no render command and shows its input unchanged.
void judge_empty_result(Fixture& fixture, host::Depth depth, const PF_LRect& region) {
    CaseContext& context = fixture.context();
    const auto instance = fixture.host().new_instance();
    host::FrameRequest request = with_input(frame_of(depth));
    const host::World whole = instance->render(request);
    request.region = region;
    const bool is_empty = host::is_empty(instance->plan(request).result_rect);
    const host::World shown = instance->render(request);
    int others = 0;
    for (int y = 0; is_empty && y < shown.height(); ++y) {
        for (int x = 0; x < shown.width(); ++x)
            others += shown.rgba(x, y) != whole.rgba(region.left + x, region.top + y);
    }
    context.expect(others == 0, "an empty result only where the frame is the input",
                   std::to_string(others) + " other pixels in the whole frame");
    request.region.reset();
    judge_same(context, whole, instance->render(request), "the frame before the small request");
}

/// Junk in every member; both rectangles are empty by having their edges in the wrong order.
PF_PreRenderOutput junk_output() {
    PF_PreRenderOutput output;
    std::memset(static_cast<void*>(&output), 0x5A, sizeof output);
    output.result_rect = {9, 9, 3, 2};
    output.max_result_rect = {70, 80, -5, -6};
    output.delete_pre_render_data_func = nullptr;
    return output;
}

std::array<PF_LRect, 2> rects_of(host::Instance& instance, const host::FrameRequest& request) {
    const host::FramePlan plan = instance.plan(request);
    return {plan.result_rect, plan.max_result_rect};
}

bool same_rects(const std::array<PF_LRect, 2>& a, const std::array<PF_LRect, 2>& b) {
    return std::memcmp(a.data(), b.data(), sizeof a) == 0;
}

void judge_junk(Fixture& fixture) {
    CaseContext& context = fixture.context();
    const auto instance = fixture.host().new_instance();
    host::FrameRequest request = frame_of(host::Depth::k8);
    const auto expected = rects_of(*instance, request);
    request.pre_render_output = junk_output();
    context.expect(same_rects(expected, rects_of(*instance, request)),
                   "the rectangles that are announced into a cleared record", "others");
    judged_frame(context, *instance, request);
    request.pre_render_output.result_rect =
        request.pre_render_output.max_result_rect = {-100, -100, 200, 200};
    if (!same_rects(expected, rects_of(*instance, request)))
        context.note("rectangles in the host's record to be replaced", "they are kept or merged");
}

bool depends_on_time(const Fixture& fixture) {
    return fixture.has_flag(PF_OutFlag_NON_PARAM_VARY);
}

void judge_time_scale(Fixture& fixture) {
    const auto instance = fixture.host().new_instance();
    host::FrameRequest request = with_input(frame_of(host::Depth::k8));
    request.frame = 7;
    request.rate = {30, 1};
    const host::World seconds = judged_frame(fixture.context(), *instance, request);
    request.rate = {30720, 1024};
    judge_same(fixture.context(), seconds, judged_frame(fixture.context(), *instance, request),
               "the same time counted in 1/30 seconds");
    request.local_step = -1;
    const host::World backwards = judged_frame(fixture.context(), *instance, request);
    if (!depends_on_time(fixture))
        judge_same(fixture.context(), seconds, backwards, "a layer that runs forwards");
}

void judge_still(Fixture& fixture, const std::string& name) {
    std::mt19937_64 random = fixture.context().random(name);
    const auto instance = fixture.host().new_instance();
    set_randomly(*instance, random, host::Depth::k8);
    host::FrameRequest request = with_input(frame_of(host::Depth::k8));
    const host::World first = instance->render(request);
    for (const int frame : {9, 250, -3}) {
        request.frame = frame;
        judge_same(fixture.context(), first, instance->render(request),
                   "time 0, since PF_OutFlag_NON_PARAM_VARY is not set");
    }
}

}  // namespace

void play_input_layer(CaseContext& context) {
    with_fixture(context, [](Fixture& fixture) {
        for (const auto& [name, place] : kInputRects) {
            for_each_depth(fixture, name,
                           [&, rect = place](host::Depth depth) { judge_input_rect(fixture, depth, rect); });
        }
    });
}

void play_output_world(CaseContext& context) {
    with_fixture(context, [](Fixture& fixture) {
        for (const auto& [name, place] : kOutputRects) {
            for_each_depth(fixture, name,
                           [&, rect = place](host::Depth depth) { judge_output_rect(fixture, depth, rect); });
        }
    });
}

void play_row_order(CaseContext& context) {
    with_fixture(context, [](Fixture& fixture) {
        for_each_depth(fixture, "bottom-up", [&](host::Depth depth) {
            host::FrameRequest request = frame_of(depth);
            const host::World plain = frame_with(fixture, request);
            request.bottom_up = true;
            judge_same(fixture.context(), plain, frame_with(fixture, request), "positive row bytes");
        });
    });
}

void play_world_flags(CaseContext& context) {
    with_fixture(context, [](Fixture& fixture) {
        for_each_depth(fixture, "observed", [&](host::Depth depth) { judge_flags(fixture, depth); });
        if (fixture.has_flag2(PF_OutFlag2_FLOAT_COLOR_AWARE))
            fixture.step("deep-bit@32", [&] { judge_deep_bit(fixture); });
    });
}

void play_empty_result(CaseContext& context) {
    with_fixture(context, [](Fixture& fixture) {
        for (const auto& [name, region] : kSmallRequests) {
            for_each_depth(fixture, name, [&, rect = region](host::Depth depth) {
                judge_empty_result(fixture, depth, rect);
            });
        }
    });
}

void play_pre_render_output(CaseContext& context) {
    with_fixture(context, [](Fixture& fixture) {
        depths_of(fixture);
        fixture.step("junk", [&] { judge_junk(fixture); });
    });
}

void play_time(CaseContext& context) {
    with_fixture(context, [](Fixture& fixture) {
        depths_of(fixture);
        fixture.step("scale", [&] { judge_time_scale(fixture); });
        if (depends_on_time(fixture)) return;
        for (const char* name : {"still-0", "still-1", "still-2"})
            fixture.step(name, [&] { judge_still(fixture, name); });
    });
}

void play_other_hosts(CaseContext& context) {
    // A check-out of a control after the last one succeeds in this case.
    const host::HostOptions lenient{.lends_unknown_controls = true};
    with_fixture(
        context,
        [](Fixture& fixture) {
            for_each_depth(fixture, "params-given", [&](host::Depth depth) {
                host::FrameRequest request = frame_of(depth);
                const host::World plain = frame_with(fixture, request);
                request.gives_params = true;
                judge_same(fixture.context(), plain, frame_with(fixture, request),
                           "smart commands without an array of parameters");
            });
        },
        lenient);
}

}  // namespace flumo::judge
