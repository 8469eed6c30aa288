// Levels 2, 3 and 5: instances of render engines, which the resetup command makes from saved data.
#include <algorithm>
#include <numeric>
#include <thread>

#include "judge/cases/case_table.h"
#include "judge/engine/frame_judge.h"
#include "judge/engine/rendered_frames.h"

namespace flumo::judge {

namespace {

constexpr size_t kCopies = 11;
constexpr size_t kThreads = 12;
constexpr int kSaves = 20;

/// What a project stores of this instance, which is live again afterwards. Empty when the effect has no
/// stored form.
std::vector<std::byte> save(Fixture& fixture, host::Instance& instance) {
    if (!fixture.has_flag(PF_OutFlag_SEQUENCE_DATA_NEEDS_FLATTENING)) return {};
    std::vector<std::byte> stored = instance.flatten();
    instance.resetup();
    if (fixture.has_flag2(PF_OutFlag2_SUPPORTS_GET_FLATTENED_SEQUENCE_DATA)) instance.flattened_copy();
    return stored;
}

void require_stored_form(const Fixture& fixture) {
    if (!fixture.has_flag(PF_OutFlag_SEQUENCE_DATA_NEEDS_FLATTENING))
        throw Skipped{"no stored sequence data"};
}

void judge_resetup_alone(Fixture& fixture) {
    const auto original = fixture.host().new_instance();
    const std::vector<std::byte> stored = save(fixture, *original);
    const auto copy = original->render_copy(stored);
    fixture.context().expect(fixture.host().handles().lives(copy->sequence_data()),
                             "live sequence data after resetup alone", "none");
    fixture.context().expect(copy->flatten() == stored, "the same stored bytes when saved again", "others");
}

/// The new data is the effect's to give, the data that it replaces is the host's to dispose of.
void judge_live_resetup(Fixture& fixture) {
    CaseContext& context = fixture.context();
    host::HandleTable& handles = fixture.host().handles();
    const auto instance = fixture.host().new_instance();
    const PF_Handle old = instance->sequence_data();
    const PF_Handle made = instance->send(PF_Cmd_SEQUENCE_RESETUP).out.sequence_data;
    context.expect(handles.lives(made), "live sequence data after resetup of live data", "none");
    if (made == old) return;
    context.expect(!old || handles.lives(old), "the replaced handle left to the host", "it is disposed of");
    context.note("which handles stay after resetup of live data",
                 "the replaced one, for the host to dispose of");
    handles.dispose(made);
}

/// Frames in an order that no playback has.
void judge_copy(Fixture& fixture, host::Instance& original, host::Instance& copy) {
    host::FrameRequest request;
    request.width = 24;
    request.height = 14;
    for (const host::Depth depth : depths_of(fixture)) {
        request.depth = depth;
        for (const int frame : {3, 0, 2, 1}) {
            request.frame = frame;
            judge_same(fixture.context(), original.render(request), copy.render(request),
                       "the original instance");
        }
    }
}

std::unique_ptr<host::Instance> varied_instance(Fixture& fixture) {
    auto instance = fixture.host().new_instance();
    std::mt19937_64 random = fixture.context().random("varied instance");
    set_randomly(*instance, random, host::Depth::k8);
    return instance;
}

/// The original is flattened while its copy renders, as during a save.
void judge_save_between(Fixture& fixture) {
    const auto original = varied_instance(fixture);
    const auto copy = original->render_copy(save(fixture, *original));
    host::FrameRequest request;
    request.width = 24;
    request.height = 14;
    for (request.frame = 0; request.frame < 3; ++request.frame) {
        const host::World before = copy->render(request);
        original->flatten();
        judge_same(fixture.context(), before, copy->render(request), "the time before the save");
        original->resetup();
        judge_same(fixture.context(), before, original->render(request), "the time before the save");
    }
}

void render_on_copies(Fixture& fixture) {
    const auto original = varied_instance(fixture);
    const std::vector<std::byte> stored = save(fixture, *original);
    std::vector<std::unique_ptr<host::Instance>> copies;
    while (copies.size() < kCopies)
        copies.push_back(original->render_copy(stored));
    const std::vector<KnownFrame> known = known_frames(std::span(&original, 1), depths_of(fixture));
    Mismatches mismatches;
    {
        std::vector<std::jthread> threads;
        for (size_t thread = 0; thread < kThreads; ++thread) {
            threads.emplace_back([&, thread] {
                std::vector<KnownFrame> order = known;
                for (size_t i = 0; i < order.size(); ++i)
                    order[i].instance = copies[(thread + i) % kCopies].get();
                std::ranges::shuffle(order, std::mt19937_64(thread));
                render_all(order, 0, mismatches);
            });
        }
        for (int i = 0; i < kSaves; ++i)
            save(fixture, *original);
    }
    mismatches.report(fixture.context());
}

}  // namespace

void play_resetup(CaseContext& context) {
    with_fixture(context, [](Fixture& fixture) {
        require_stored_form(fixture);
        fixture.step("alone", [&] { judge_resetup_alone(fixture); });
        fixture.step("live", [&] { judge_live_resetup(fixture); });
    });
}

void play_render_copies(CaseContext& context) {
    with_fixture(context, [](Fixture& fixture) {
        depths_of(fixture);
        fixture.step("resetup-alone", [&] {
            const auto original = varied_instance(fixture);
            judge_copy(fixture, *original, *original->render_copy(save(fixture, *original)));
        });
        fixture.step("no-sequence-data", [&] {
            const auto original = varied_instance(fixture);
            judge_copy(fixture, *original, *original->render_copy({}));
        });
        if (fixture.has_flag(PF_OutFlag_SEQUENCE_DATA_NEEDS_FLATTENING))
            fixture.step("saves-between", [&] { judge_save_between(fixture); });
    });
}

void play_engine_threads(CaseContext& context) {
    with_fixture(context, [](Fixture& fixture) {
        require_threads(fixture);
        for (const char* round : {"first-round", "second-round"})
            fixture.step(round, [&] { render_on_copies(fixture); });
    });
}

}  // namespace flumo::judge
