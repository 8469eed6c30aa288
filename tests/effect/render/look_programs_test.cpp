// A program for a look draws what the main program draws.
#include <gmock/gmock.h>

#include <cmath>
#include <random>

#include "effect/gpu/software_driver.h"
#include "judge/engine/frame_judge.h"
#include "tests/effect/render/gl_scope.h"
#include "tests/effect/render/looks.h"

namespace flumo::test {
namespace {

using host::Control;
using host::ControlKind;
using host::Depth;

/// A number that tries an edge of the control: none of its effect, the ends of what a host accepts, or no
/// number at all, as an expression may give it.
double edge_value(const Control& control, std::mt19937_64& random) {
    const double edges[] = {0,     control.default_value, control.valid.min, control.valid.max, 1e300, -1e300,
                            1e-300};
    return edges[random() % std::size(edges)];
}

/// Every control by chance; every second number at its default, and of the float sliders some at an edge.
std::unique_ptr<host::Instance> random_instance(std::mt19937_64& random, Depth depth) {
    auto instance = effect_host().new_instance();
    judge::set_randomly(*instance, random, depth);
    for (const Control& control : effect_host().controls()) {
        const auto chance = random() % 16;
        if (control.kind == ControlKind::kLayer && chance % 2 == 0)
            instance->set(control.index, host::Layer{});
        if (control.kind == ControlKind::kLayer && chance == 1)
            instance->set(control.index, flat_layer({NAN, 1, HUGE_VALF, 1}, Depth::k32));
        // Complexities and the number of lines cost time and choose nothing.
        if (control.kind == ControlKind::kSlider && control.valid.min >= 1)
            instance->set(control.index, static_cast<double>(1 + chance % 6));
        if (control.kind != ControlKind::kFloatSlider) continue;
        if (chance < 12 && chance != 8) instance->set(control.index, control.default_value);
        if (chance == 8 && random() % 4 == 0) instance->set(control.index, edge_value(control, random));
    }
    // Frames without noise are one in eight: half of them would be empty.
    if (random() % 4 != 0) instance->set(static_cast<int>(Section::NoiseVisible) + 1, 1.0);
    return instance;
}

bool is_plain(const host::World& frame) {
    for (int i = 0; i < frame.width() * frame.height(); ++i)
        if (frame.rgba(i % frame.width(), i / frame.width()) != frame.rgba(0, 0)) return false;
    return true;
}

TEST(LookPrograms, DrawWhatTheMainProgramDrawsToTheBit) {
    constexpr int kPictures = 100;  // frames of one colour compare little and do not count
    constexpr int kMostLooks = 400;
    std::mt19937_64 random(20);
    int pictures = 0;
    for (int i = 0; pictures < kPictures; ++i) {
        ASSERT_LT(i, kMostLooks) << "too many frames of one colour";
        const Depth depth = kDepths[i % 3];
        const auto instance = random_instance(random, depth);
        const host::FrameRequest request{.width = 23, .height = 14, .depth = depth};
        const host::World frame = instance->render(request);
        const MainProgramScope main_program;
        ASSERT_TRUE(frame.same_picture(instance->render(request))) << "look " << i;
        pictures += !is_plain(frame);
    }
}

TEST(LookPrograms, AreBoundedAndServeAnimations) {
    std::mt19937_64 random(21);
    const auto first = instance_of({{Section::NoiseType, 4}});
    const host::FrameRequest request{.width = 8, .height = 5};
    for (int i = 0; i < 24; ++i) {
        random_instance(random, Depth::k8)->render(request);
        first->render(request);
        const GlScope gl;
        ASSERT_LE(gl->lookPrograms.size(), kLookProgramLimit);
    }
    const CallCounter counter;
    for (const Section section :
         {Section::Evolution, Section::Scale, Section::Complexity, Section::OffsetX}) {
        first->set(static_cast<int>(section) + 1, 17.0);
        first->render(request);
    }
    EXPECT_EQ(counter.calls("glCreateProgram"), 0)
        << "the look in use lost its program, or a number makes a look";
}

TEST(LookPrograms, AreLeftToSoftwareDrivers) {
    const MainProgramScope as_on_hardware;
    instance_of({})->render({.width = 8, .height = 5});
    const CallCounter counter;
    instance_of({{Section::NoiseType, 2}, {Section::ColorizeMode, 3}})->render({.width = 8, .height = 5});
    EXPECT_EQ(counter.calls("glCreateProgram"), 0);
    EXPECT_TRUE(IsSoftwareRenderer("llvmpipe (LLVM 15.0.6, 256 bits)"));
    EXPECT_TRUE(IsSoftwareRenderer("ANGLE (Google, Vulkan 1.3.0 (SwiftShader Device (LLVM 10.0.0)))"));
    EXPECT_FALSE(IsSoftwareRenderer("NVIDIA H200/PCIe/SSE2"));
    EXPECT_FALSE(IsSoftwareRenderer("Mesa Intel(R) UHD Graphics 770 (ADL-S GT1)"));
}

}  // namespace
}  // namespace flumo::test
