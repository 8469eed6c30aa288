// The real module through its whole life in the host's hands.
#include "host/module.h"

#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <fstream>
#include <thread>

#include "host/control_events.h"
#include "host/instance.h"
#include "tests/host/caller_context.h"

namespace flumo::host::test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

const std::filesystem::path kModule = FLUMO_MODULE;
constexpr Depth kDepths[] = {Depth::k8, Depth::k16, Depth::k32};

void expect_clean(const Host& host) {
    EXPECT_TRUE(host.accounting().clean()) << host.accounting().describe();
    EXPECT_THAT(host.accounting().misuses(), IsEmpty());
    EXPECT_THAT(host.accounting().messages(), IsEmpty());
}

/// First control of a kind, by position among those of its kind.
const Control& control_of(const Host& host, ControlKind kind, int position = 0) {
    for (const Control& control : host.controls()) {
        if (control.kind == kind && position-- == 0) return control;
    }
    throw std::out_of_range("no such control");
}

/// A frame whose every pixel depends on size, depth and time.
FrameRequest small_frame(Depth depth, int frame) {
    return {.width = 33 + frame, .height = 17, .depth = depth, .frame = frame, .row_padding = 5};
}

TEST(ModuleFile, IsRefusedWithAReason) {
    const std::filesystem::path folder = testing::TempDir();
    const auto text = folder / "not_a_module.so";
    std::ofstream(text) << "plain text";
    const std::pair<std::filesystem::path, std::string> cases[] = {
        {folder / "missing.so", "no such file"},
        {folder, "no such file"},
        {text, "not a loadable module"},
        {NO_ENTRY_MODULE, "has no export EffectMain"},
    };
    for (const auto& [path, reason] : cases) {
        try {
            Module module(path);
            FAIL() << path << " was taken for a module";
        } catch (const ModuleError& error) {
            EXPECT_THAT(error.what(), HasSubstr(path.string() + ": "));
            EXPECT_THAT(error.what(), HasSubstr(reason));
        }
    }
    std::filesystem::remove(text);
}

TEST(ModuleFile, RegistersTheEffect) {
    const Registration registration = Module(kModule).register_plugin();
    EXPECT_EQ(registration.name, "Flumo");
    EXPECT_EQ(registration.match_name, "Velbrand Flumo");
    EXPECT_EQ(registration.category, "Velbrand");
    EXPECT_EQ(registration.entry_point, "EffectMain");
    EXPECT_EQ(registration.kind, 0x65464B54);
    EXPECT_EQ(registration.api_major, 13);
    EXPECT_EQ(registration.api_minor, 27);
    EXPECT_EQ(registration.reserved, 8);
}

TEST(ModuleLife, OnOneThreadLeavesNothing) {
    const Module module(kModule);
    const CallerContext caller;
    Host host(module);
    host.start();
    EXPECT_TRUE(caller.is_current());
    EXPECT_EQ(host.controls().size(), 86u);
    {
        auto instance = host.new_instance();
        auto other = instance->duplicate();
        for (const Depth depth : kDepths) {
            for (const int frame : {0, 1, 1, 5}) {
                const World world = instance->render(small_frame(depth, frame));
                EXPECT_TRUE(world.guards_intact());
                EXPECT_NE(world.rgba(16, 8)[3], 0) << "nothing was drawn";
                EXPECT_TRUE(caller.is_current());
                EXPECT_TRUE(host.accounting().idle()) << host.accounting().describe();
            }
        }
        EXPECT_EQ(instance->flatten().size(), 16u);
        instance->resetup();
        EXPECT_EQ(instance->flattened_copy().size(), 16u);
        instance->user_changed_param(2);
        EXPECT_TRUE(instance->render(small_frame(Depth::k8, 2))
                        .same_picture(other->render(small_frame(Depth::k8, 2))));
    }
    host.global_setdown();
    EXPECT_TRUE(caller.is_current());
    expect_clean(host);
}

TEST(ModuleLife, OnManyThreadsGivesTheSameFrames) {
    const Module module(kModule);
    Host host(module, {.iterate_threads = 2});
    host.start();
    {
        auto plain = host.new_instance();
        auto varied = host.new_instance();
        varied->set(control_of(host, ControlKind::kPopup).index, 3.0);
        varied->set_keyframes(control_of(host, ControlKind::kFloatSlider, 0).index, {{0, 100.0}, {8, 200.0}});
        struct Job {
            Instance& instance;
            FrameRequest request;
            World expected{};
        };
        std::vector<Job> jobs;
        for (int frame = 0; frame < 4; ++frame) {
            for (const Depth depth : kDepths) {
                jobs.push_back({*plain, small_frame(depth, frame)});
                jobs.push_back({*varied, small_frame(depth, frame)});
            }
        }
        for (Job& job : jobs)
            job.expected = job.instance.render(job.request);
        EXPECT_FALSE(jobs[0].expected.same_picture(jobs[1].expected)) << "the instances look alike";
        std::atomic<int> different{0}, lost_contexts{0};
        // Twice, so that later threads follow upon threads that have ended.
        for (int round = 0; round < 2; ++round) {
            std::vector<std::jthread> threads;
            for (std::size_t first = 0; first < 4; ++first) {
                threads.emplace_back([&, first] {
                    const CallerContext caller;
                    World world;
                    for (std::size_t i = first * 5; i < first * 5 + jobs.size(); ++i) {
                        Job& job = jobs[i % jobs.size()];
                        job.instance.render(job.request, world);
                        different += !world.same_picture(job.expected);
                        lost_contexts += !caller.is_current();
                    }
                });
            }
        }
        EXPECT_EQ(different, 0);
        EXPECT_EQ(lost_contexts, 0);
        EXPECT_TRUE(host.accounting().idle()) << host.accounting().describe();
    }
    host.global_setdown();
    expect_clean(host);
}

TEST(ModuleLife, ASecondLoadGivesTheSamePicture) {
    World first;
    for (int round = 0; round < 3; ++round) {
        {
            const Module module(kModule);
            Host host(module);
            // Set-down and set-up again within one load as well.
            for (int again = 0; again < 2; ++again) {
                host.start();
                const World world = host.new_instance()->render(small_frame(Depth::k16, 3));
                if (first.width() == 0) first = world;
                EXPECT_TRUE(world.same_picture(first)) << round << " " << again;
                host.global_setdown();
                expect_clean(host);
            }
        }
        EXPECT_EQ(dlopen(kModule.c_str(), RTLD_NOW | RTLD_NOLOAD), nullptr)
            << "the module stays in the process";
    }
}

TEST(ModuleLife, KeyframedGradientsRenderAsTheirInterpolation) {
    const Module module(kModule);
    Host host(module);
    host.start();
    {
        const Control& gradient = control_of(host, ControlKind::kArbitrary);
        auto keyed = host.new_instance();
        auto constant = host.new_instance();
        const Arbitrary black_to_white = ArbitraryValue::default_of(host, gradient);
        const Arbitrary white = ArbitraryValue::fresh(host, gradient);
        keyed->set_keyframes(gradient.index, {{0, black_to_white}, {8, white}});
        for (const int frame : {0, 2, 8}) {
            constant->set(gradient.index,
                          Arbitrary(ArbitraryValue::interpolate(*black_to_white, *white, frame / 8.0)));
            const World world = keyed->render(small_frame(Depth::k32, frame));
            EXPECT_TRUE(world.same_picture(constant->render(small_frame(Depth::k32, frame)))) << frame;
        }
        const FrameRequest between = small_frame(Depth::k8, 3);
        const World moving = keyed->render(between);
        for (const Arbitrary& end : {black_to_white, white}) {
            constant->set(gradient.index, end);
            EXPECT_FALSE(constant->render(between).same_picture(moving)) << "the gradient does not move";
        }
    }
    host.global_setdown();
    expect_clean(host);
}

}  // namespace
}  // namespace flumo::host::test
