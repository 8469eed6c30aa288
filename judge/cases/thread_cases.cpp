// Level 5: many threads.
#include <algorithm>
#include <mutex>
#include <thread>

#include "judge/cases/case_table.h"
#include "judge/engine/frame_judge.h"

namespace flumo::judge {

namespace {

constexpr int kRounds = 3;

/// A frame as one thread renders it.
struct KnownFrame {
    host::Instance* instance;
    host::FrameRequest request;
    host::World frame;
};

/// Frames of all depths, sizes and instances, in an order that alternates between them.
std::vector<KnownFrame> known_frames(std::span<const std::unique_ptr<host::Instance>> instances,
                                     const std::vector<host::Depth>& depths) {
    std::vector<KnownFrame> known;
    for (int i = 0; i < 6; ++i) {
        host::FrameRequest request;
        request.width = 11 + 7 * (i % 3);
        request.height = 9 + 5 * (i % 2);
        request.frame = i;
        request.depth = depths[static_cast<std::size_t>(i) % depths.size()];
        host::Instance& instance = *instances[static_cast<std::size_t>(i) % instances.size()];
        known.push_back({&instance, request, instance.render(request)});
    }
    return known;
}

/// What threads report, passed on when they have ended.
class Mismatches {
  public:
    void add(std::string text) {
        const std::lock_guard guard(mutex_);
        if (std::ranges::find(texts_, text) == texts_.end()) texts_.push_back(std::move(text));
    }
    void report(CaseContext& context) const {
        for (const std::string& text : texts_)
            context.finding("the frames of a single thread", text);
    }

  private:
    std::mutex mutex_;
    std::vector<std::string> texts_;
};

void render_all(const std::vector<KnownFrame>& known, std::size_t start, Mismatches& mismatches) {
    host::World world;
    for (std::size_t i = 0; i < known.size() * kRounds; ++i) {
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

void render_on_threads(CaseContext& context, const std::vector<KnownFrame>& known, std::size_t count) {
    Mismatches mismatches;
    {
        std::vector<std::jthread> threads;
        for (std::size_t i = 0; i < count; ++i)
            threads.emplace_back([&known, &mismatches, i] { render_all(known, i, mismatches); });
    }
    mismatches.report(context);
}

void require_threads(const Fixture& fixture) {
    if (!fixture.has_flag2(PF_OutFlag2_SUPPORTS_THREADED_RENDERING))
        throw Skipped{"no rendering on several threads"};
}

/// Two instances that look different.
std::vector<std::unique_ptr<host::Instance>> two_instances(Fixture& fixture) {
    std::vector<std::unique_ptr<host::Instance>> instances;
    instances.push_back(fixture.host().new_instance());
    instances.push_back(fixture.host().new_instance());
    std::mt19937_64 random = fixture.context().random("other instance");
    set_randomly(*instances[1], random, host::Depth::k8);
    return instances;
}

}  // namespace

void play_threads(CaseContext& context) {
    with_fixture(context, [](Fixture& fixture) {
        require_threads(fixture);
        const auto instances = two_instances(fixture);
        const std::vector<KnownFrame> known = known_frames(instances, depths_of(fixture));
        for (const std::size_t count : {2u, 8u}) {
            fixture.step(std::to_string(count) + "-threads",
                         [&] { render_on_threads(fixture.context(), known, count); });
        }
    });
}

void play_thread_generations(CaseContext& context) {
    Fixture fixture(context);
    for (const char* life : {"first-set-up", "second-set-up"}) {
        fixture.step(life, [&] {
            fixture.host().start();
            require_threads(fixture);
            {
                const auto instances = two_instances(fixture);
                const std::vector<KnownFrame> known = known_frames(instances, depths_of(fixture));
                for (int generation = 0; generation < 3; ++generation)
                    render_on_threads(context, known, 3);
            }
            fixture.host().global_setdown();
        });
    }
}

}  // namespace flumo::judge
