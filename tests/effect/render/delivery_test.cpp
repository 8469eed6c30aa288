// What the host is asked for a frame, and where and when it arrives.
#include <EGL/egl.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <cstring>

#include "effect/gpu/resources.h"
#include "effect/gpu/target.h"
#include "effect/render/download.h"
#include "effect/render/smart_pre_render.h"
#include "effect/render/smart_render.h"
#include "tests/effect/render/gl_scope.h"
#include "tests/effect/render/looks.h"
#include "tests/support/hosted_call.h"
#include "tests/support/result_of.h"

namespace flumo::test {
namespace {

using host::Callback;
using host::Depth;
using host::FrameRequest;
using host::World;
using host::test::result_of;
using Rect = std::array<A_long, 4>;

constexpr std::byte kUntouched{0xA5};

/// What a frame makes of a world of this size that the host hands out in place of the announced one. Where
/// that world says to lie counts for nothing.
World delivered_into(const FrameRequest& request, int width, int height) {
    World world(
        {.width = width, .height = height, .depth = request.depth, .row_padding = request.row_padding});
    world.fill_bytes(kUntouched);
    FrameRequest other = request;
    other.output_rect = PF_LRect{5, 3, 5 + width, 3 + height};
    instance_of(fluid())->render(other, world);
    EXPECT_TRUE(world.guards_intact());
    return world;
}

// The rest of a larger world stays as it is, and so does the padding after the rows.
TEST(Delivery, OtherWorldsGetTheTopLeftPart) {
    for (const Depth depth : kDepths) {
        const FrameRequest request{.width = 12, .height = 8, .depth = depth};
        const World full = render_checked({fluid(), request});
        for (const auto& [width, height] : {std::pair(12, 8), {7, 3}, {20, 13}}) {
            const World part = delivered_into(request, width, height);
            const size_t bytes = static_cast<size_t>(std::min(width, 12)) * host::pixel_size(depth);
            for (int y = 0; y < height; ++y) {
                const auto row = part.row(y);
                const bool drawn = y < 8;
                EXPECT_TRUE(!drawn || std::equal(row.begin(), row.begin() + static_cast<ptrdiff_t>(bytes),
                                                 full.row(y).begin()))
                    << width << " x " << height << ", row " << y;
                EXPECT_TRUE(std::all_of(row.begin() + static_cast<ptrdiff_t>(drawn ? bytes : 0), row.end(),
                                        [](std::byte byte) { return byte == kUntouched; }))
                    << width << " x " << height << ", row " << y;
            }
        }
    }
}

// The input world's depth decides. An output world of another has no pixels of that depth to write to.
TEST(Delivery, InputDecidesTheDepth) {
    const World world = delivered_into(
        {.width = 5, .height = 2, .depth = Depth::k32, .input = std::make_shared<World>(5, 2, Depth::k8)}, 5,
        2);
    EXPECT_EQ(std::ranges::count(world.row(1), kUntouched), 5 * 16);
}

// Sizes are cut to 16 bits: of 65537 columns one is drawn, of 65536 none can be.
TEST(Delivery, SizesAreCutToSixteenBits) {
    for (const Depth depth : kDepths) {
        const World world = delivered_into({.width = 65537, .height = 1, .depth = depth}, 65537, 1);
        const auto row = world.row(0);
        EXPECT_EQ(static_cast<size_t>(std::ranges::count(row, kUntouched)),
                  row.size() - host::pixel_size(depth));
    }
    EXPECT_EQ(result_of([] { instance_of({})->render({.width = 65536, .height = 1}); }), PF_Err_OUT_OF_MEMORY)
        << "a frame of no width";
    render_checked({{}, {.width = 3, .height = 2}});
}

// What a frame does not show is not uploaded: no layer that is not chosen, no ramp of a feature that is off.
TEST(Delivery, TexturesAreMadeForWhatShows) {
    using enum Section;
    struct Case {
        Look look;
        int textures;
    };
    const host::Layer layer = flat_layer({1, 1, 1, 1});
    const Case cases[] = {
        {{{NoiseVisible, 0}}, 0},
        {{{NoiseVisible, 0}, {LinesVisible, 1}}, 1},
        {{{Layer1, layer}, {Layer3, layer}}, 3},
        {{{Layer1, layer}, {Layer2, layer}, {Layer3, layer}, {LinesVisible, 1}}, 5},
    };
    const FrameRequest request{.width = 5, .height = 3};
    render_checked({{}, request});
    for (const Case& it : cases) {
        const CallCounter counter;
        render_checked({it.look, request});
        EXPECT_EQ(counter.calls("glGenTextures"), it.textures);
        EXPECT_EQ(counter.calls("glDeleteTextures"), it.textures);
    }
}

// The user's wish to stop is asked for once, with the caller's context back, and not after a failure. It is
// the answer, whatever fails after it.
TEST(Delivery, FirstErrorWins) {
    const auto instance = instance_of({});
    host::Faults& faults = effect_host().faults();
    int asked = 0;
    const auto result = [&](PF_Err answer) {
        asked = 0;
        FrameRequest request{.width = 3, .height = 2};
        request.abort = [&asked, answer] {
            ++asked;
            EXPECT_EQ(eglGetCurrentContext(), EGL_NO_CONTEXT);
            return answer;
        };
        return result_of([&] { instance->render(request); });
    };
    EXPECT_EQ(result(PF_Err_NONE), PF_Err_NONE);
    EXPECT_EQ(asked, 1);
    faults.fail_every(Callback::kCheckinLayerPixels, host::FaultMode::kErrorWithResult, 45);
    EXPECT_EQ(result(PF_Err_NONE), 45);
    EXPECT_EQ(result(PF_Interrupt_CANCEL), PF_Interrupt_CANCEL);
    faults.fail_every(Callback::kGetPixelFormat, host::FaultMode::kError, 46);
    EXPECT_EQ(result(PF_Interrupt_CANCEL), 46);
    EXPECT_EQ(asked, 0);
    faults.clear();
    EXPECT_TRUE(effect_host().accounting().idle()) << effect_host().accounting().describe();
}

// The host copies floats itself, and shows how far it is by the rows of the input world.
TEST(Delivery, FloatsAreIteratedByTheInputsRows) {
    static PF_EffectWorld input{}, output{};
    static PF_InData in{};
    input.height = 7;
    HostedCall within;
    static decltype(SPBasicSuite::AcquireSuite) acquire_from_host;
    SPBasicSuite basic = *within.in_data.pica_basicP;
    acquire_from_host =
        std::exchange(basic.AcquireSuite, [](const char* name, int32_t version, const void** suite) -> SPErr {
            static PF_iterateFloatSuite1 iteration{};
            iteration.iterate = [](PF_InData* data, A_long base, A_long last, PF_EffectWorld* source,
                                   const PF_Rect* area, void*, auto, PF_EffectWorld* target) -> PF_Err {
                EXPECT_EQ(data, &in);
                EXPECT_EQ(std::pair(base, last), std::pair(0, 7));
                EXPECT_EQ(std::pair(source, target), std::pair(&input, &output));
                EXPECT_EQ(area, nullptr);
                return 77;
            };
            *suite = &iteration;
            return std::strcmp(name, kPFIterateFloatSuite) != 0 ? acquire_from_host(name, version, suite) : 0;
        });
    AEGP_SuiteHandler suites(&basic);
    const GlScope gl;
    AESDK_OpenGL_PrepareResources(*gl, 3, 2, 1);
    AESDK_OpenGL_BindTarget(*gl, gl->outputTexture);
    EXPECT_THROW(DownloadOutput(*gl, suites, &input, &output, &in, PixelFormatInfo(PF_PixelFormat_ARGB128)),
                 PF_Err);
}

Rect edges(const PF_LRect& rect) {
    return {rect.left, rect.top, rect.right, rect.bottom};
}

TEST(PreRender, UnitesRectangles) {
    struct Row {
        PF_LRect source, destination;
        Rect wanted;
    };
    const Row rows[] = {
        {{0, 0, 10, 10}, {5, -5, 20, 8}, {0, -5, 20, 10}},
        {{100, 200, 110, 210}, {-10, -20, 0, 0}, {-10, -20, 110, 210}},
        {{2, 2, 3, 3}, {0, 0, 9, 9}, {0, 0, 9, 9}},
        // Nothing on one side leaves the other, whatever the empty one's edges are.
        {{2, 3, 4, 5}, {7, 7, 7, 9}, {2, 3, 4, 5}},
        {{2, 3, 4, 5}, {0, 9, 9, 0}, {2, 3, 4, 5}},
        {{5, 5, 5, 50}, {0, 0, 9, 9}, {0, 0, 9, 9}},
        {{-5, 5, 50, 5}, {0, 0, 9, 9}, {0, 0, 9, 9}},
        {{8, 1, 2, 3}, {0, 0, 0, 0}, {8, 1, 2, 3}},
    };
    for (const Row& row : rows) {
        PF_LRect destination = row.destination;
        UnionLRect(row.source, destination);
        EXPECT_EQ(edges(destination), row.wanted);
    }
}

// One question, about the effect's own layer at this time, under the request as it came; both rectangles of
// the answer go into the result, each on its own.
TEST(PreRender, AsksForItsOwnLayerNow) {
    struct Asked {
        PF_ParamIndex index = -1;
        A_long id = -1, time = 0, step = 0;
        A_u_long scale = 0;
        PF_RenderRequest request{};
        PF_Err answer = PF_Err_NONE;
    } asked;
    PF_InData in{};
    in.effect_ref = reinterpret_cast<PF_ProgPtr>(&asked);
    in.current_time = 100;
    in.time_step = -25;
    in.time_scale = 3'000'000'000;
    PF_PreRenderCallbacks callbacks{};
    callbacks.checkout_layer = [](PF_ProgPtr ref, PF_ParamIndex index, A_long id,
                                  const PF_RenderRequest* request, A_long time, A_long step, A_u_long scale,
                                  PF_CheckoutResult* result) -> PF_Err {
        auto& it = *reinterpret_cast<Asked*>(ref);
        it = {index, id, time, step, scale, *request, it.answer};
        result->result_rect = {5, 5, 5, 5};
        result->max_result_rect = {0, 0, 50, 60};
        return it.answer;
    };
    PF_PreRenderInput input{};
    std::memset(&input.output_request, 0x5A, sizeof input.output_request);
    PF_PreRenderOutput output{}, wanted{};
    std::memset(&output, 0x5A, sizeof output);
    output.result_rect = {2, 2, 9, 9};
    output.max_result_rect = {0, 0, 0, 0};
    std::memcpy(&wanted, &output, sizeof output);
    PF_PreRenderExtra extra{&input, &output, &callbacks};
    asked.answer = 513;
    EXPECT_EQ(SmartPreRender(&in, &extra), 513);
    EXPECT_EQ(std::memcmp(&output, &wanted, sizeof output), 0) << "a failure touches nothing";
    asked.answer = PF_Err_NONE;
    EXPECT_EQ(SmartPreRender(&in, &extra), PF_Err_NONE);
    EXPECT_THAT((std::array{asked.index, asked.id, asked.time, asked.step}),
                testing::ElementsAre(0, 0, 100, -25));
    EXPECT_EQ(asked.scale, 3'000'000'000);
    EXPECT_EQ(std::memcmp(&asked.request, &input.output_request, sizeof asked.request), 0);
    wanted.max_result_rect = {0, 0, 50, 60};
    EXPECT_EQ(std::memcmp(&output, &wanted, sizeof output), 0) << "and a success only the rectangles";
}

}  // namespace
}  // namespace flumo::test
