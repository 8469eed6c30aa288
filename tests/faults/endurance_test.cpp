// Many threads, many lives, many frames.
#include <gmock/gmock.h>
#include <malloc.h>

#include <barrier>
#include <fstream>
#include <random>
#include <thread>

#include "effect/params/control_table.h"
#include "tests/faults/effect_fixture.h"
#include "tests/faults/gl_spy.h"
#include "tests/support/caller_context.h"

namespace flumo::test {
namespace {

using host::Depth;
using host::test::CallerContext;

constexpr int kThreads = 16;
/// Half of the threads last; in the place of each other one, so many follow one another in each life.
constexpr int kGenerations = 3;
constexpr int kFramesOfAThread = 120;

struct Job {
    host::Instance& instance;
    host::FrameRequest request;
    host::World expected{};
};

/// The jobs of one life of the effect, with their frames as one thread renders them.
class Jobs {
  public:
    explicit Jobs(EffectFixture& fixture)
        : full_(fixture.new_instance()), plain_(fixture.host().new_instance()) {
        nesting_ = fixture.new_instance();
        // A layer whose picture is itself a frame of the effect: a command within a callback of another.
        nesting_->set(static_cast<int>(Section::Layer1) + 1, host::LayerSource([this](double frame) {
                          return std::make_shared<host::World>(
                              plain_->render({.width = 11, .height = 8, .frame = static_cast<int>(frame)}));
                      }));
        constexpr int kSizes[][2] = {{19, 12}, {1, 1}, {33, 7}, {8, 30}};
        int n = 0;
        for (const auto& [width, height] : kSizes) {
            for (const Depth depth : kDepths) {
                for (host::Instance* instance : {full_.get(), plain_.get(), nesting_.get()}) {
                    host::FrameRequest request{.width = width, .height = height, .depth = depth};
                    request.row_padding = n++ % 4 * 5;
                    jobs_.push_back({*instance, request, instance->render(request)});
                }
            }
        }
    }

    const Job& operator[](size_t i) const { return jobs_[i % jobs_.size()]; }

  private:
    std::unique_ptr<host::Instance> full_, plain_, nesting_;
    std::vector<Job> jobs_;
};

struct Tally {
    std::atomic<int> frames{0}, cancelled{0}, different{0}, lost_contexts{0}, failed{0};
};

/// Renders on this thread; the user cancels now and then.
void render_some(const Jobs& jobs, size_t first, int count, Tally& tally) {
    const CallerContext caller;
    host::World world;
    for (size_t i = first; i < first + static_cast<size_t>(count); ++i) {
        const Job& job = jobs[i * 7];
        host::FrameRequest request = job.request;
        const bool cancels = i % 11 == 0;
        if (cancels) request.abort = [] { return PF_Interrupt_CANCEL; };
        const PF_Err result = result_of([&] { job.instance.render(request, world); });
        tally.failed += result != (cancels ? PF_Interrupt_CANCEL : PF_Err_NONE);
        tally.different += !world.same_picture(job.expected) || !world.guards_intact();
        tally.lost_contexts += !caller.is_current();
        ++tally.frames;
    }
}

TEST(Threads, RenderWhatOneThreadRenders) {
    EffectFixture fixture;
    Tally tally;
    std::unique_ptr<Jobs> jobs = std::make_unique<Jobs>(fixture);
    const auto contexts_before = gl_spy::alive(GlObject::kContext);
    int64_t contexts_made = 0;
    const auto end_life = [&]() noexcept {
        jobs.reset();
        contexts_made = gl_spy::alive(GlObject::kContext) - contexts_before;
        EXPECT_TRUE(fixture.host().accounting().idle()) << fixture.host().accounting().describe();
        fixture.host().global_setdown();
        EXPECT_TRUE(fixture.host().accounting().clean()) << fixture.host().accounting().describe();
        fixture.host().start();
        // On a thread of its own: the one that came last may have a context to come, or have had its last.
        std::jthread([&] { jobs = std::make_unique<Jobs>(fixture); });
    };
    std::barrier life(kThreads, end_life);
    {
        std::vector<std::jthread> threads;
        for (size_t thread = 0; thread < kThreads; ++thread) {
            threads.emplace_back([&, thread] {
                for (int round = 0; round < 2; ++round) {
                    const bool lasts = thread % 2 == 0;
                    if (lasts) render_some(*jobs, thread, kFramesOfAThread, tally);
                    for (size_t next = 0; !lasts && next < kGenerations; ++next) {
                        std::jthread([&] {
                            render_some(*jobs, thread + next, kFramesOfAThread / kGenerations, tally);
                        });
                    }
                    life.arrive_and_wait();
                }
            });
        }
    }
    jobs.reset();
    // One context a thread, and none a frame.
    EXPECT_EQ(contexts_made, kThreads / 2 + kThreads / 2 * kGenerations);
    EXPECT_EQ(tally.frames, 2 * kThreads * kFramesOfAThread);
    EXPECT_EQ(tally.failed, 0);
    EXPECT_EQ(tally.different, 0);
    EXPECT_EQ(tally.lost_contexts, 0);
    EXPECT_THAT(fixture.host().accounting().misuses(), testing::IsEmpty());
}

/// Resident memory of this process, pages, without what the C library keeps of freed memory: how much that is
/// hangs on when the driver's threads meet in its arenas.
int64_t resident_pages() {
    malloc_trim(0);
    int64_t size = 0, resident = 0;
    std::ifstream("/proc/self/statm") >> size >> resident;
    return resident;
}

TEST(Soak, MemoryAndObjectsStayAsTheyAreAfterAHundredFrames) {
    constexpr int kFrames = 5000;
    EffectFixture fixture;
    const auto instance = fixture.new_instance();
    std::mt19937 random(1);
    const auto any = [&](int from, int to) { return std::uniform_int_distribution(from, to)(random); };
    const auto set = [&](Section section, int value) {
        instance->set(static_cast<int>(section) + 1, static_cast<double>(value));
    };
    host::World world;
    // Memory is measured with the same programs alive: those of these looks, which drive out all others.
    const auto pages_of_known_looks = [&] {
        for (int look = 0; look < 16; ++look) {
            set(Section::NoiseType, 1 + look % 4);
            set(Section::LinesVisible, look / 4 % 2);
            set(Section::ColorizeMode, 1 + look / 8);
            instance->render({.width = 32, .height = 18}, world);
        }
        return resident_pages();
    };
    int64_t pages = 0, objects = 0;
    for (int frame = 1; frame <= kFrames; ++frame) {
        set(Section::NoiseType, any(1, 4));
        set(Section::LinesVisible, any(0, 1));
        set(Section::ColorizeMode, any(1, 3));
        set(Section::Evolution, any(0, 720));
        const Depth depth = kDepths[any(0, 2)];
        instance->render({.width = any(1, 48), .height = any(1, 27), .depth = depth, .frame = frame}, world);
        if (frame % 100 != 0) continue;
        if (frame == 100) objects = gl_spy::alive();
        if (frame == 100) pages = pages_of_known_looks();
        ASSERT_EQ(gl_spy::alive(), objects) << "after " << frame << " frames";
    }
    const int64_t pages_after = pages_of_known_looks();
    std::cout << kFrames << " frames; resident pages " << pages << " after 100, " << pages_after
              << " at the end; GL objects " << objects << std::endl;
    EXPECT_LE(static_cast<double>(pages_after), 1.05 * static_cast<double>(pages));
}

}  // namespace
}  // namespace flumo::test
