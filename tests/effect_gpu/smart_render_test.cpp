// One frame from the host's request to its pixels: what is asked, what is given back, whose error wins.
#include "effect/render/smart_render.h"

#include <EGL/egl.h>
#include <glbinding/gl/gl.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <future>
#include <utility>

#include "effect/gradient/gradient.h"
#include "tests/effect_gpu/gl_fixture.h"
#include "tests/effect_gpu/tiny_host.h"

namespace flumo::tests {
namespace {

using Log = std::vector<std::string>;

constexpr PF_ParamIndex kNoiseType = 2;
constexpr PF_ParamIndex kLayer1 = 15;
constexpr PF_ParamIndex kNoiseVisible = 24;
constexpr PF_ParamIndex kColorizeMode = 25;
constexpr PF_ParamIndex kGradient = 26;
const Log kGivenBack = {"release PF World Suite", "checkin_param", "checkin_layer_pixels"};

/// The end of the log as long as `tail`.
Log End(const Log& log, size_t length) {
    return {log.end() - static_cast<ptrdiff_t>(std::min(length, log.size())), log.end()};
}

class SmartRenderTest : public GlTest {
  protected:
    void SetUp() override {
        GlTest::SetUp();
        LeaveContext();
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
        EXPECT_EQ(host_.blocks.size(), 0u);
        EXPECT_EQ(host_.out_data.out_flags, 0);
    }
}

// A gradient of one colour makes a picture of that colour, whatever the noise. Frames of a thread follow each
// other in the same context, and nothing of one is left in the next.
TEST_F(SmartRenderTest, OneColourArrivesInTheHostsOrderAndScaleFrameAfterFrame) {
    GradientStopMap stops = {{0.0F, {kStopLinear, 0.25F, 0.5F, 0.75F, 1}}};
    GradientRecord record{&stops};
    void* block = &record;
    host_.fillParam = [&block](PF_ParamIndex index, PF_ParamDef& def) {
        if (index == kNoiseVisible) def.u.bd.value = 1;
        if (index == kNoiseType || index == kColorizeMode) def.u.pd.value = 1;
        if (index == kGradient) def.u.arb_d.value = &block;
    };
    ASSERT_EQ(Render(), PF_Err_NONE);
    const void* context = AESDK_OpenGL_RenderDataForThread()->renderContext;
    for (const size_t pixelSize : {4u, 8u, 16u, 4u}) {
        TinyWorld input(4, 2, pixelSize);
        TinyWorld output(4, 2, pixelSize);
        Use(input, output);
        ASSERT_EQ(Render(), PF_Err_NONE);
        for (int i = 0; i < 8; ++i) {
            for (int channel = 0; channel < 4; ++channel) {
                const float wanted = std::array{1.0F, 0.25F, 0.5F, 0.75F}[static_cast<size_t>(channel)];
                const int x = i % 4;
                const int y = i / 4;
                if (pixelSize == 4) {
                    EXPECT_EQ(output.At<uint8_t>(x, y, channel), std::lround(wanted * 255));
                } else if (pixelSize == 8) {
                    EXPECT_EQ(output.At<uint16_t>(x, y, channel), std::lround(wanted * 32768));
                } else {
                    EXPECT_FLOAT_EQ(output.At<float>(x, y, channel), wanted);
                }
            }
        }
        EXPECT_EQ(AESDK_OpenGL_RenderDataForThread()->renderContext, context);
    }
}

TEST_F(SmartRenderTest, InputWorldPlacesTheFrame) {
    host_.in_data.width = 100;
    host_.in_data.height = 100;
    input_.def.origin_x = 10;
    input_.def.origin_y = 20;
    ASSERT_EQ(Render(), PF_Err_NONE);
    const AESDK_OpenGL_SavedContext saved;
    std::array<float, 20> quad{};
    gl::glBindBuffer(gl::GL_ARRAY_BUFFER, CurrentRenderData()->frameVertexBuffer);
    gl::glGetBufferSubData(gl::GL_ARRAY_BUFFER, 0, sizeof(quad), quad.data());
    EXPECT_EQ(quad[3], 0.1F);
    EXPECT_EQ(quad[4], 0.2F);
    EXPECT_EQ(quad[18], 0.14F);
    EXPECT_EQ(quad[19], 0.22F);
}

TEST_F(SmartRenderTest, ContextThatCannotBeMadeIsTriedAgainByTheNextFrame) {
    std::async(std::launch::async, [this] {
        void* const root = std::exchange(CommonData->renderContext, this);
        EXPECT_EQ(Render(), PF_Err_OUT_OF_MEMORY);
        EXPECT_EQ(host_.out_data.out_flags, 0);
        EXPECT_FALSE(AESDK_OpenGL_RenderDataForThread()->contextStarted);
        CommonData->renderContext = root;
        EXPECT_EQ(Render(), PF_Err_NONE);
        EXPECT_TRUE(AESDK_OpenGL_RenderDataForThread()->contextStarted);
    }).get();
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
    host_.failures = {{"checkout_param", 41}};
    EXPECT_EQ(Render(), 41);
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

// 65537 is cut to 1, and the rest of the world stays as it is.
TEST_F(SmartRenderTest, FrameCutToSixteenBitsDeliversOnlyWhatWasDrawn) {
    for (const size_t pixelSize : {4u, 16u}) {
        TinyWorld input(65537, 1, pixelSize);
        TinyWorld output(65537, 1, pixelSize);
        Use(input, output);
        EXPECT_EQ(Render(), PF_Err_NONE);
        EXPECT_EQ(std::ranges::count(output.bytes, std::byte{0}), static_cast<ptrdiff_t>(pixelSize));
        EXPECT_EQ(std::ranges::count(output.bytes, std::byte{0xA5}),
                  static_cast<ptrdiff_t>(65536 * pixelSize));
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
