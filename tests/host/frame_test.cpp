// What a frame's commands carry, and which worlds belong to it.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "host/instance.h"
#include "tests/host/scripted_effect.h"

namespace flumo::host::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::ThrowsMessage;

std::vector<A_long> edges(const PF_LRect& rect) {
    return {rect.left, rect.top, rect.right, rect.bottom};
}

class Frames : public testing::Test {
  protected:
    Frames() {
        host.start();
        instance = host.new_instance();
    }

    ScriptedEffect effect;
    Host host{effect.module};
    std::unique_ptr<Instance> instance;
};

TEST_F(Frames, CarryTimePlaceAndDepth) {
    PF_InData in{};
    PF_PreRenderInput asked{};
    effect.on[PF_Cmd_SMART_PRE_RENDER] = [&](EffectCall& call) {
        in = call.in;
        asked = *call.pre_render().input;
        return plain_pre_render(call);
    };
    instance->render({.width = 101,
                      .height = 60,
                      .depth = Depth::k16,
                      .frame = 48,
                      .rate = {30000, 1001},
                      .downsample_x = {1, 2},
                      .downsample_y = {1, 3},
                      .region = PF_LRect{-5, 2, 20, 99},
                      .local_step = -2});
    EXPECT_EQ(in.width, 101) << "the full resolution, whatever the downsampling";
    EXPECT_EQ(in.height, 60);
    EXPECT_EQ(in.downsample_x.den, 2u);
    EXPECT_EQ(in.downsample_y.den, 3u);
    EXPECT_EQ(in.current_time, 48 * 1001);
    EXPECT_EQ(in.time_step, 1001);
    EXPECT_EQ(in.local_time_step, -2002);
    EXPECT_EQ(in.time_scale, 30000u);
    EXPECT_EQ(in.num_params, int{kControlsEnd});
    EXPECT_EQ(in.appl_id, kAfterEffectsApplId);
    EXPECT_EQ(asked.bitdepth, 16);
    EXPECT_THAT(edges(asked.output_request.rect), ElementsAre(-5, 2, 20, 99));
    const FramePlan whole =
        instance->plan({.width = 101, .height = 61, .downsample_x = {1, 2}, .downsample_y = {2, 3}});
    EXPECT_THAT(edges(whole.max_result_rect), ElementsAre(0, 0, 51, 41)) << "a part of a pixel is a pixel";
}

TEST_F(Frames, GiveTheEffectTheWorldsOfItsAnswer) {
    PF_EffectWorld input{}, output{};
    PF_PixelFormat format = 0;
    std::vector<bool> null_pixels;
    effect.on[PF_Cmd_SMART_RENDER] = [&](EffectCall& call) -> PF_Err {
        PF_EffectWorld *in = nullptr, *out = nullptr;
        call.render().cb->checkout_layer_pixels(call.in.effect_ref, 0, &in);
        call.render().cb->checkout_output(call.in.effect_ref, &out);
        input = *in;
        output = *out;
        PF_Pixel8* p8 = nullptr;
        PF_Pixel16* p16 = nullptr;
        PF_PixelFloat* p32 = nullptr;
        call.in.utils->get_pixel_data8(out, nullptr, &p8);
        call.in.utils->get_pixel_data16(out, nullptr, &p16);
        const auto* data = call.acquire<PF_PixelDataSuite1>(kPFPixelDataSuite, kPFPixelDataSuiteVersion1);
        data->get_pixel_data_float(out, nullptr, &p32);
        null_pixels = {!p8, !p16, !p32};
        call.release(kPFPixelDataSuite, kPFPixelDataSuiteVersion1);
        const auto* worlds = call.acquire<PF_WorldSuite2>(kPFWorldSuite, kPFWorldSuiteVersion2);
        worlds->PF_GetPixelFormat(in, &format);
        call.release(kPFWorldSuite, kPFWorldSuiteVersion2);
        return call.render().cb->checkin_layer_pixels(call.in.effect_ref, 0);
    };
    auto layer = std::make_shared<World>(40, 30, Depth::k32);
    layer->set_rgba(10, 4, {0.5f, 0, 0, 1});
    const World world = instance->render({.width = 80,
                                          .height = 60,
                                          .depth = Depth::k32,
                                          .downsample_x = {1, 2},
                                          .downsample_y = {1, 2},
                                          .region = PF_LRect{10, 4, 100, 24},
                                          .row_padding = 3,
                                          .input = layer});
    EXPECT_EQ(world.width(), 30) << "the region is cut to the layer";
    EXPECT_EQ(world.height(), 20);
    EXPECT_EQ(output.rowbytes, 33 * 16);
    EXPECT_EQ(output.origin_x, 10);
    EXPECT_EQ(input.origin_y, 4);
    EXPECT_EQ(input.width, 30);
    EXPECT_EQ(reinterpret_cast<PF_PixelFloat*>(input.data)->red, 0.5f) << "the region's first pixel";
    EXPECT_EQ(format, PF_PixelFormat_ARGB128);
    EXPECT_THAT(null_pixels, ElementsAre(true, true, false));
    EXPECT_THAT(host.accounting().misuses(), IsEmpty());
}

TEST_F(Frames, ArriveInTheCallersWorld) {
    World world;
    instance->render({.width = 16, .height = 9}, world);
    EXPECT_EQ(world.rgba(15, 8), (Rgba{1, 0, 0, 1}));
    EXPECT_TRUE(world.guards_intact());
    const void* pixels = world.record().data;
    instance->render({.width = 16, .height = 9, .frame = 1}, world);
    EXPECT_EQ(world.record().data, pixels);
    instance->render({.width = 16, .height = 9, .output_rect = PF_LRect{2, 1, 5, 4}}, world);
    EXPECT_EQ(world.width(), 3);
    EXPECT_EQ(world.record().origin_x, 2);
    instance->render({.width = 16, .height = 9, .region = PF_LRect{20, 0, 30, 9}}, world);
    EXPECT_EQ(world.width(), 0) << "nothing of the layer was asked for";
    instance->render({.width = 16, .height = 9, .bottom_up = true, .extra_world_flags = 0x02000000}, world);
    EXPECT_EQ(world.record().rowbytes, -24 * 4);
    EXPECT_EQ(world.record().world_flags, 0x02000002);
    EXPECT_EQ(world.rgba(15, 8), (Rgba{1, 0, 0, 1}));
    EXPECT_TRUE(world.guards_intact());
}

TEST_F(Frames, OfAnEmptyResultAreTheInput) {
    effect.on[PF_Cmd_SMART_PRE_RENDER] = [](EffectCall&) { return PF_Err_NONE; };
    auto layer = std::make_shared<World>(WorldShape{.width = 10, .height = 7, .bottom_up = true});
    layer->set_rgba(4, 1, {0, 1, 0, 1});
    const World world = instance->render({.width = 16,
                                          .height = 9,
                                          .region = PF_LRect{5, 3, 30, 9},
                                          .input = layer,
                                          .input_rect = PF_LRect{2, 2, 12, 9}});
    EXPECT_EQ(world.width(), 7);
    EXPECT_EQ(world.height(), 6);
    EXPECT_EQ(world.record().origin_x, 5);
    EXPECT_EQ(world.rgba(1, 0), (Rgba{0, 1, 0, 1}));
}

TEST_F(Frames, RefuseRequestsWithoutSense) {
    const FrameRequest wrong[] = {
        {.width = 0, .height = 5},
        {.width = 5, .height = -1},
        {.width = 5, .height = 5, .rate = {0, 1}},
        {.width = 5, .height = 5, .downsample_x = {2, 1}},
        {.width = 5, .height = 5, .downsample_y = {0, 1}},
        {.width = 5, .height = 5, .frame = 2000000000, .rate = {30000, 1001}},
        {.width = 5, .height = 5, .input = std::make_shared<World>(4, 5, Depth::k8)},
        {.width = 5, .height = 5, .row_padding = -1},
    };
    for (const FrameRequest& request : wrong)
        EXPECT_THROW(instance->render(request), std::invalid_argument);
}

TEST_F(Frames, AskLayersForTheirFrameAndPassOnTheirErrors) {
    std::vector<double> asked;
    bool fails = false;
    instance->set(kPicture, LayerSource([&](double frame) -> Layer {
                      if (fails) throw std::runtime_error("frame 7.png is missing");
                      asked.push_back(frame);
                      return std::make_shared<World>(2, 2, Depth::k8);
                  }));
    effect.on[PF_Cmd_SMART_RENDER] = [](EffectCall& call) -> PF_Err {
        PF_ParamDef def{};
        const PF_Err error = call.in.inter.checkout_param(call.in.effect_ref, kPicture, call.in.current_time,
                                                          call.in.time_step, call.in.time_scale, &def);
        return error ? error : call.in.inter.checkin_param(call.in.effect_ref, &def);
    };
    instance->render({.width = 4, .height = 4, .frame = 7, .rate = {30000, 1001}});
    EXPECT_THAT(asked, ElementsAre(7));
    fails = true;
    EXPECT_THAT([&] { instance->render({.width = 4, .height = 4, .frame = 7}); },
                ThrowsMessage<std::runtime_error>("frame 7.png is missing"));
    EXPECT_TRUE(host.accounting().idle());
}

TEST_F(Frames, PreRenderDataLivesAsLongAsTheFrame) {
    static int freed = 0;
    static int value = 0;
    effect.on[PF_Cmd_SMART_PRE_RENDER] = [](EffectCall& call) {
        call.pre_render().output->pre_render_data = &value;
        call.pre_render().output->delete_pre_render_data_func = [](void* data) { freed += data == &value; };
        return plain_pre_render(call);
    };
    effect.on[PF_Cmd_SMART_RENDER] = [](EffectCall& call) -> PF_Err {
        return freed == 0 && call.render().input->pre_render_data == &value ? PF_Err_NONE : 1;
    };
    EXPECT_NO_THROW(instance->render({.width = 4, .height = 4}));
    EXPECT_EQ(freed, 1);
    instance->plan({.width = 4, .height = 4});
    EXPECT_EQ(freed, 2);
}

TEST_F(Frames, AResultBeyondTheLargestIsNoted) {
    effect.on[PF_Cmd_SMART_PRE_RENDER] = [](EffectCall& call) {
        const PF_Err error = plain_pre_render(call);
        ++call.pre_render().output->result_rect.right;
        return error;
    };
    instance->render({.width = 4, .height = 4});
    EXPECT_THAT(host.accounting().misuse_texts(), ElementsAre(HasSubstr("beyond its largest")));
}

PF_Err write_place(void* in_row_90, A_long x, A_long y, PF_PixelFloat* in, PF_PixelFloat* out) {
    *out = {in->alpha + 1, static_cast<float>(x), static_cast<float>(y), 0};
    return y == 90 ? *static_cast<PF_Err*>(in_row_90) : PF_Err_NONE;
}

/// Writes the place of each pixel into the output through the iterate suite.
PF_Err iterate_places(EffectCall& call, PF_Err in_row_90) {
    PF_EffectWorld *in = nullptr, *out = nullptr;
    call.render().cb->checkout_layer_pixels(call.in.effect_ref, 0, &in);
    call.render().cb->checkout_output(call.in.effect_ref, &out);
    const auto* suite =
        call.acquire<PF_iterateFloatSuite1>(kPFIterateFloatSuite, kPFIterateFloatSuiteVersion1);
    const PF_Err error = suite->iterate(&call.in, 0, in->height, in, nullptr, &in_row_90, write_place, out);
    call.release(kPFIterateFloatSuite, kPFIterateFloatSuiteVersion1);
    call.render().cb->checkin_layer_pixels(call.in.effect_ref, 0);
    return error;
}

TEST(Iterate, CoversEveryPixelOnAnyNumberOfThreads) {
    ScriptedEffect effect;
    PF_Err in_row_90 = PF_Err_NONE;
    effect.on[PF_Cmd_SMART_RENDER] = [&](EffectCall& call) { return iterate_places(call, in_row_90); };
    for (const int threads : {1, 2, 7}) {
        Host host(effect.module, {.iterate_threads = threads});
        host.start();
        auto instance = host.new_instance();
        // Large enough to be spread; the smaller output takes the common part.
        World world = instance->render({.width = 700, .height = 101, .depth = Depth::k32});
        for (const auto& [x, y] : {std::pair{0, 0}, {699, 100}, {699, 0}, {350, 51}, {1, 99}}) {
            EXPECT_EQ(world.rgba(x, y), (Rgba{float(x), float(y), 0, 1})) << threads;
        }
        instance->render(
            {.width = 700, .height = 101, .depth = Depth::k32, .output_rect = PF_LRect{0, 0, 690, 99}},
            world);
        EXPECT_EQ(world.rgba(689, 98), (Rgba{689, 98, 0, 1}));
        EXPECT_TRUE(world.guards_intact());
        in_row_90 = PF_Err_OUT_OF_MEMORY;
        EXPECT_THROW(instance->render({.width = 700, .height = 101, .depth = Depth::k32}), HostError);
        in_row_90 = PF_Err_NONE;
        EXPECT_THROW(instance->render({.width = 70, .height = 10, .depth = Depth::k8}), HostError);
    }
}

}  // namespace
}  // namespace flumo::host::test
