// One frame from the host's request to its pixels: what is asked, what is given back, whose error wins.
#include "effect/render/smart_render.h"

#include <EGL/egl.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/effect_gpu/tiny_host.h"

namespace flumo::tests {
namespace {

using Log = std::vector<std::string>;

constexpr PF_ParamIndex kLayer1 = 15;
const Log kGivenBack = {"release PF World Suite", "checkin_param", "checkin_layer_pixels"};

/// The end of the log as long as `tail`.
Log End(const Log& log, size_t length) {
    return {log.end() - static_cast<ptrdiff_t>(std::min(length, log.size())), log.end()};
}

class SmartRenderTest : public testing::Test {
  protected:
    SmartRenderTest() {
        host_.in_data.width = 4;
        host_.in_data.height = 2;
        Use(input_, output_);
    }

    void Use(TinyWorld& input, TinyWorld& output) {
        host_.inputWorld = &input;
        host_.outputWorld = &output;
    }

    PF_Err Render() {
        host_.log.clear();
        host_.out_data = {};
        PF_SmartRenderInput input{};
        PF_SmartRenderExtra extra{&input, &host_.smart};
        const PF_Err err = SmartRender(&host_.in_data, &host_.out_data, &extra);
        eglBindAPI(EGL_OPENGL_API);
        EXPECT_EQ(eglGetCurrentContext(), EGL_NO_CONTEXT) << "the caller had no context";
        return err;
    }

    TinyHost host_;
    TinyWorld input_{4, 2, 4};
    TinyWorld output_{4, 2, 4};
};

// With noise and lines off the image is transparent black, and every pixel of the world is written.
TEST_F(SmartRenderTest, FrameArrivesAndAllIsGivenBackInOrder) {
    for (const size_t pixelSize : {4u, 8u, 16u}) {
        TinyWorld input(4, 2, pixelSize);
        TinyWorld output(4, 2, pixelSize);
        Use(input, output);
        ASSERT_EQ(Render(), PF_Err_NONE);
        EXPECT_EQ(output.bytes, std::vector<std::byte>(8 * pixelSize, std::byte{0}));
        Log wanted = {"checkout_layer_pixels", "checkout_output", "acquire PF World Suite",
                      "acquire PF Handle Suite"};
        if (pixelSize == 16) wanted.push_back("acquire PF iterateFloat Suite");
        wanted.push_back("abort");
        wanted.insert(wanted.end(), kGivenBack.begin(), kGivenBack.end());
        wanted.push_back("release PF Handle Suite");
        if (pixelSize == 16) wanted.push_back("release PF iterateFloat Suite");
        EXPECT_EQ(host_.log, wanted);
        EXPECT_EQ(host_.checkedOutParams, 0);
        EXPECT_EQ(host_.liveHandles, 0);
        EXPECT_EQ(host_.out_data.out_flags, 0);
    }
}

TEST_F(SmartRenderTest, FirstErrorWinsAndTheChainOfReleasesAlwaysRuns) {
    struct Row {
        std::map<std::string, PF_Err> failures;
        PF_Err wanted;
        const char* message;
        bool asksAbort;
    };
    const Row rows[] = {
        {{{"checkout_param", 41}}, 41, "", false},
        {{{"checkout_layer_pixels", 42}}, 42, "", false},
        {{{"checkout_output", 43}}, 43, "", false},
        {{{"acquire PF World Suite", 1}}, 516, "Couldn't load suite.", false},
        {{{"PF_GetPixelFormat", 44}}, 44, "", false},
        {{{"acquire PF Handle Suite", 1}}, 516, "", false},
        {{{"host_new_handle", 1}}, 4, "", false},
        {{{"abort", 517}}, 517, "", true},
        {{{"checkin_param", 45}}, 45, "", true},
        {{{"checkin_layer_pixels", 46}}, 46, "", true},
        {{{"release PF World Suite", 47}}, 0, "", true},
        {{{"checkin_param", 45}, {"checkin_layer_pixels", 46}}, 45, "", true},
        {{{"abort", 517}, {"checkin_param", 45}, {"checkin_layer_pixels", 46}}, 517, "", true},
        {{{"checkout_param", 41}, {"checkin_param", 45}, {"checkin_layer_pixels", 46}}, 41, "", false},
    };
    for (const Row& row : rows) {
        const std::string what = row.failures.begin()->first;
        host_.failures = row.failures;
        EXPECT_EQ(Render(), row.wanted) << what;
        EXPECT_STREQ(host_.out_data.return_msg, row.message) << what;
        EXPECT_EQ(host_.out_data.out_flags, *row.message != '\0' ? 256 : 0) << what;
        EXPECT_EQ(std::ranges::count(host_.log, "abort"), row.asksAbort ? 1 : 0) << what;
        Log chain = End(host_.log, host_.log.back() == "checkin_layer_pixels" ? 3 : 4);
        chain.resize(3);
        EXPECT_EQ(chain, kGivenBack) << what;
        host_.failures.clear();
        EXPECT_EQ(Render(), PF_Err_NONE) << "the frame after " << what;
        host_.checkedOutParams = 0;
    }
}

TEST_F(SmartRenderTest, FailureBeforeTheWorldsAsksForNoneOfThem) {
    host_.failures = {{"checkout_param", 41}};
    EXPECT_EQ(Render(), 41);
    EXPECT_EQ(host_.log, kGivenBack);
    host_.failures = {{"checkout_layer_pixels", 42}};
    EXPECT_EQ(Render(), 42);
    EXPECT_EQ(End(host_.log, 99),
              (Log{"checkout_layer_pixels", kGivenBack[0], kGivenBack[1], kGivenBack[2]}));
}

TEST_F(SmartRenderTest, HostWithoutASuiteOfSuites) {
    host_.in_data.pica_basicP = nullptr;
    EXPECT_EQ(Render(), 516);
    EXPECT_STREQ(host_.out_data.return_msg, "Couldn't release suite.");
    EXPECT_EQ(host_.log, (Log{"checkin_param", "checkin_layer_pixels"}));
    EXPECT_EQ(host_.checkedOutParams, 0);
}

// 65536 is cut to 16 bits, which leaves no width at all.
TEST_F(SmartRenderTest, FrameThatGLCannotHoldIsOutOfMemoryWithoutAMessage) {
    TinyWorld empty(0, 0, 4);
    TinyWorld wide(65536, 1, 4);
    for (TinyWorld* world : {&empty, &wide}) {
        Use(*world, output_);
        EXPECT_EQ(Render(), PF_Err_OUT_OF_MEMORY);
        EXPECT_EQ(host_.out_data.out_flags, 0);
        Use(input_, output_);
        EXPECT_EQ(Render(), PF_Err_NONE);
    }
}

// The suite's lack is no PF_Err where it is met, so its own number, 516, must not come out.
TEST_F(SmartRenderTest, FloatLayerWithoutThePixelDataSuiteIsOutOfMemory) {
    TinyWorld layer(2, 2, 16);
    host_.fillParam = [&layer](PF_ParamIndex index, PF_ParamDef& def) {
        if (index == kLayer1) def.u.ld = layer.def;
    };
    host_.failures = {{"acquire PF Pixel Data Suite", 1}};
    EXPECT_EQ(Render(), PF_Err_OUT_OF_MEMORY);
    host_.failures = {{"get_pixel_data_float", 48}};
    EXPECT_EQ(Render(), 48);
    EXPECT_EQ(host_.checkedOutParams, 0);
}

}  // namespace
}  // namespace flumo::tests
