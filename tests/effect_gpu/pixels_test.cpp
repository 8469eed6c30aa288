// Pixels on their way in and out: upload, ramps, blending, conversion and download at the three depths.
#include <glbinding/gl/gl.h>

#include <bit>
#include <cmath>

#include "effect/gpu/draw.h"
#include "effect/gpu/resources.h"
#include "effect/gpu/target.h"
#include "effect/gradient/sample_gradient.h"
#include "effect/render/download.h"
#include "effect/render/passes.h"
#include "effect/render/ramp_texture.h"
#include "effect/render/report_framebuffer_status.h"
#include "effect/render/upload.h"
#include "tests/effect_gpu/gl_fixture.h"
#include "tests/effect_gpu/tiny_host.h"

using namespace gl;

namespace flumo::tests {
namespace {

using PixelsTest = GlTest;

PF_Err ErrorOf(const std::function<void()>& work) {
    try {
        work();
    } catch (const PF_Err& err) {
        return err;
    }
    return PF_Err_NONE;
}

TEST(PixelFormatTest, ThreeDepthsAndNoOther) {
    struct Row {
        PF_PixelFormat format;
        size_t size;
        unsigned type;
        uint32_t multiplierBits;
    };
    const Row rows[] = {{842229089, 16, 5126, 0x3F800000},
                        {909206881, 8, 5123, 0x3FFFFF00},
                        {1650946657, 4, 5121, 0x3F800000}};
    for (const Row& row : rows) {
        const PixelFormatRow& found = PixelFormatInfo(row.format);
        EXPECT_EQ(found.pixelSize, row.size);
        EXPECT_EQ(static_cast<unsigned>(found.pixelType), row.type);
        EXPECT_EQ(std::bit_cast<uint32_t>(found.multiplier16bit), row.multiplierBits);
    }
    for (const PF_PixelFormat other : {1717854562, 0, -1, 1094992704}) {
        EXPECT_EQ(ErrorOf([other] { PixelFormatInfo(other); }), 516) << other;
    }
}

/// A world of 5 x 3 whose channels all differ: step 0, 1, 2, ... from alpha on, in units of `unit`.
template <typename Channel>
void FillSteps(TinyWorld& world, Channel unit) {
    for (A_long i = 0; i < world.def.width * world.def.height * 4; ++i) {
        world.At<Channel>(i / 4 % world.def.width, i / 4 / world.def.width, i % 4) =
            static_cast<Channel>(static_cast<Channel>(i) * unit);
    }
}

void ExpectSteps(const std::vector<Pixel>& texels, float unit) {
    ASSERT_EQ(texels.size(), 15u);
    for (size_t i = 0; i < 60; ++i) {
        EXPECT_NEAR(texels[i / 4][i % 4], static_cast<float>(i) * unit, 1e-6F) << i;
    }
}

TEST_F(PixelsTest, UploadKeepsChannelOrderAndSkipsPaddingAtEveryDepth) {
    TinyHost host;
    TinyWorld eight(5, 3, 4, 12);
    TinyWorld sixteen(5, 3, 8, 24);
    TinyWorld floats(5, 3, 16, 48);
    FillSteps<uint8_t>(eight, 3);
    FillSteps<uint16_t>(sixteen, 555);
    FillSteps<float>(floats, 0.75F);
    const std::pair<TinyWorld*, float> cases[] = {
        {&eight, 3 / 255.0F}, {&sixteen, 555 / 65535.0F}, {&floats, 0.75F}};
    for (const auto& [world, unit] : cases) {
        const GLuint texture = UploadLayer(&host.in_data, &world->def, kWrapClamp);
        ExpectSteps(ReadTexture(texture), unit);
        glDeleteTextures(1, &texture);
    }
    EXPECT_EQ(host.log,
              (std::vector<std::string>{"acquire PF Pixel Data Suite", "release PF Pixel Data Suite"}));
}

TEST_F(PixelsTest, UploadWrapsAsAskedAndFiltersLinearly) {
    TinyHost host;
    TinyWorld world(2, 2, 4);
    const std::pair<int, int> cases[] = {{0, 33071}, {1, 10497}, {2, 33071}};
    for (const auto& [wrap, mode] : cases) {
        const GLuint texture = UploadLayer(&host.in_data, &world.def, wrap);
        glBindTexture(GL_TEXTURE_2D, texture);
        for (const auto& [parameter, value] :
             {std::pair(GL_TEXTURE_WRAP_S, mode), std::pair(GL_TEXTURE_WRAP_T, mode),
              std::pair(GL_TEXTURE_MAG_FILTER, 9729), std::pair(GL_TEXTURE_MIN_FILTER, 9729)}) {
            GLint found = 0;
            glGetTexParameteriv(GL_TEXTURE_2D, parameter, &found);
            EXPECT_EQ(found, value) << wrap;
        }
        glBindTexture(GL_TEXTURE_2D, 0);
        glDeleteTextures(1, &texture);
    }
}

TEST_F(PixelsTest, UploadThrowsWhatAGetterAnswers) {
    TinyHost host;
    host.failures = {{"get_pixel_data8", 11}, {"get_pixel_data16", 12}, {"get_pixel_data_float", 13}};
    TinyWorld eight(2, 2, 4);
    TinyWorld sixteen(2, 2, 8);
    TinyWorld floats(2, 2, 16);
    const auto upload = [&host](TinyWorld& world) {
        return ErrorOf([&] { UploadLayer(&host.in_data, &world.def, kWrapClamp); });
    };
    EXPECT_EQ(upload(eight), 11);
    EXPECT_EQ(upload(sixteen), 12);
    EXPECT_EQ(upload(floats), 13);
    host.failures = {{"acquire PF Pixel Data Suite", 7}};
    EXPECT_THROW(upload(floats), PixelDataSuiteMissing) << "must not count as a PF_Err";
    host.failures.clear();
    EXPECT_EQ(upload(floats), PF_Err_NONE);
    GLint rowLength = -1;
    glGetIntegerv(GL_UNPACK_ROW_LENGTH, &rowLength);
    EXPECT_EQ(rowLength, 0);
}

TEST_F(PixelsTest, RampHoldsTheGradientAtEachTexel) {
    GradientStopMap stops = {{-0.5F, {kStopLinear, 4, 0, 0, 0}},
                             {0.25F, {kStopSin, 0, 1, 0.5F, 0.25F}},
                             {0.5F, {kStopEdge, 0.5F, -1, 0, 1}},
                             {1.0F, {kStopSin, 0, 0, 2, 0.75F}}};
    const GradientRecord record{&stops};
    const GLuint texture = UploadGradientRamp(record, kWrapClamp);
    const auto texels = ReadTexture(texture);
    ASSERT_EQ(texels.size(), 2048u);
    EXPECT_EQ(texels.back(), (Pixel{0, 0, 2, 0.75F}));
    EXPECT_EQ(texels[1500], (Pixel{0.5F, -1, 0, 1})) << "an edge holds its colour";
    EXPECT_NEAR(texels.front()[0], 4.0F / 3, 1e-6F) << "a stop below 0 shapes the ramp from there";
    for (int i = 0; i < 2048; ++i) {
        const float t = static_cast<float>(i) / 2047.0F;
        const GradientSample wanted = SampleGradient(record, t);
        const Pixel expected{wanted.r, wanted.g, wanted.b, wanted.a};
        ASSERT_EQ(texels[static_cast<size_t>(i)], expected) << i;
    }
    glDeleteTextures(1, &texture);
    stops.clear();
    const GLuint empty = UploadGradientRamp(record, kWrapRepeat);
    EXPECT_EQ(ReadTexture(empty), std::vector<Pixel>(2048, Pixel{0, 0, 0, 1}));
    glBindTexture(GL_TEXTURE_2D, empty);
    GLint wrap = 0;
    glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, &wrap);
    EXPECT_EQ(wrap, 10497);
    glDeleteTextures(1, &empty);
}

class PassTest : public GlTest {
  protected:
    void SetUp() override {
        GlTest::SetUp();
        AESDK_OpenGL_PrepareResources(Record(), 4, 1, 1);
        glViewport(0, 0, 4, 1);
    }

    /// Clears resultTexture and draws four texels over it.
    std::vector<Pixel> Blended(int mode, const Pixel& below, const std::vector<Pixel>& source) {
        const GLuint texture = MakeTexture(4, 1, source);
        AESDK_OpenGL_BindTarget(Record(), Record().resultTexture);
        glClearColor(below[0], below[1], below[2], below[3]);
        glClear(GL_COLOR_BUFFER_BIT);
        ResolvePass(Record(), 4, 1, texture, mode, false);
        glDeleteTextures(1, &texture);
        return ReadTexture(Record().resultTexture);
    }

    std::vector<Pixel> Converted(float multiplier, const std::vector<Pixel>& source) {
        const GLuint texture = MakeTexture(4, 1, source);
        AESDK_OpenGL_BindTarget(Record(), Record().outputTexture);
        glClearColor(0, 0, 0, 0);
        glClear(GL_COLOR_BUFFER_BIT);
        OutputPass(Record(), 4, 1, texture, multiplier);
        glDisable(GL_BLEND);
        glUseProgram(0);
        glDeleteTextures(1, &texture);
        return ReadTexture(Record().outputTexture);
    }
};

TEST_F(PassTest, BlendModes) {
    const std::vector<Pixel> source(4, Pixel{1, 0.5F, 0.25F, 0.5F});
    const Pixel below = {0.25F, 0.5F, 1, 0.5F};
    EXPECT_EQ(Blended(1, below, source)[0], (Pixel{0.625F, 0.5F, 0.625F, 0.75F}));
    EXPECT_EQ(Blended(2, below, source)[0], (Pixel{0.75F, 0.75F, 1.125F, 0.75F}));
    EXPECT_EQ(Blended(3, below, source)[0], source[0]);
    EXPECT_EQ(Blended(1, {}, source)[0], (Pixel{0.5F, 0.25F, 0.125F, 0.5F})) << "premultiplied over nothing";
    EXPECT_EQ(glIsEnabled(GL_BLEND), GL_FALSE) << "a pass leaves blending off";
    glEnable(GL_BLEND);
    SetBlendMode(0);
    SetBlendMode(4);
    EXPECT_EQ(glIsEnabled(GL_BLEND), GL_TRUE) << "other numbers change nothing";
    SetBlendMode(3);
}

TEST_F(PassTest, ReductionWeighsFiveTapsAlikeAndClampsAtTheEdges) {
    // 8 x 2 source texels for 4 x 1 output pixels. A tap between four texels takes their mean.
    std::vector<Pixel> source(16, Pixel{});
    source[2] = {40, 0, 0, 80};
    source[0] = {0, 40, 0, 0};
    glBindTexture(GL_TEXTURE_2D, Record().largeTexture);
    glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, 8, 2, GL_RGBA, GL_FLOAT, source.data());
    AESDK_OpenGL_BindTarget(Record(), Record().resultTexture);
    ResolvePass(Record(), 4, 1, Record().largeTexture, 3, true);
    const auto pixels = ReadTexture(Record().resultTexture);
    // Output pixel 1 lies between texels 2 and 3. Its centre tap is the mean of four texels (10); the
    // diagonal taps reach the middle of the rows' outer edges and, one texel to either side, of texels 1|2
    // and 3|4. Only the two at 1|2 over row 0 see texel 2, once fully in its row and never in the other.
    EXPECT_NEAR(pixels[1][0], (10 + 20) / 5.0F, 1e-5F);
    EXPECT_NEAR(pixels[1][3], (20 + 40) / 5.0F, 1e-5F) << "alpha is filtered like the colours";
    EXPECT_NEAR(pixels[0][1], (10 + 40) / 5.0F, 1e-5F) << "beyond the edge the outermost texel repeats";
    EXPECT_NEAR(pixels[0][0], 20 / 5.0F, 1e-5F);
    EXPECT_EQ(pixels[3], (Pixel{}));
}

TEST_F(PassTest, OutputIsStraightInTheHostsOrderAndScale) {
    const float kSixteen = 65535.0F / 32768.0F;
    const auto eight = Converted(
        1, {{0.25F, 0.5F, 0.125F, 0.5F}, {3, 0, 0.5F, 1}, {1, 1, 1, 0.0099F}, {0.01F, 0, 0.005F, 0.01F}});
    EXPECT_EQ(eight[0], (Pixel{0.5F, 0.5F, 1, 0.25F}));
    EXPECT_EQ(eight[1], (Pixel{1, 3, 0, 0.5F})) << "nothing is clamped";
    EXPECT_EQ(eight[2], (Pixel{})) << "alpha under a hundredth is cut";
    EXPECT_EQ(eight[3], (Pixel{0.01F, 1, 0, 0.5F})) << "a hundredth is divided";
    const auto sixteen = Converted(kSixteen, std::vector<Pixel>(4, Pixel{1, 0.5F, 0, 1}));
    EXPECT_NEAR(sixteen[0][0] * 65535, 32768, 1e-2F);
    EXPECT_NEAR(sixteen[0][2] * 65535, 16384, 1e-2F);
}

class DownloadTest : public PassTest {
  protected:
    /// outputTexture as the output pass leaves it: alpha, red, green, blue.
    void FillOutput(const std::vector<Pixel>& texels) {
        glBindTexture(GL_TEXTURE_2D, Record().outputTexture);
        glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, Record().width, Record().height, GL_RGBA, GL_FLOAT,
                        texels.data());
        glBindTexture(GL_TEXTURE_2D, 0);
        AESDK_OpenGL_BindTarget(Record(), Record().outputTexture);
    }

    void Download(TinyWorld& input, TinyWorld& output, PF_PixelFormat format) {
        AEGP_SuiteHandler suites(host_.in_data.pica_basicP);
        DownloadOutput(Record(), suites, &input.def, &output.def, &host_.in_data, PixelFormatInfo(format));
    }

    /// Row padding, and what lies right of and below a frame of this size.
    static void ExpectUntouchedBeyond(const TinyWorld& world, A_long width, A_long height) {
        const auto rowbytes = static_cast<size_t>(world.def.rowbytes);
        const size_t written = static_cast<size_t>(std::min(world.def.width, width)) * world.pixelSize;
        for (size_t i = 0; i < world.bytes.size(); ++i) {
            const bool inside = i % rowbytes < written && i / rowbytes < static_cast<size_t>(height);
            if (inside) continue;
            ASSERT_EQ(world.bytes[i], std::byte{0xA5}) << i;
        }
    }

    TinyHost host_;
};

// A frame of 4 x 2 and output worlds as large, smaller and larger.
TEST_F(DownloadTest, RowsArriveAtEveryDepthAndSmallerWorldsGetTheTopLeftPart) {
    AESDK_OpenGL_PrepareResources(Record(), 4, 2, 1);
    std::vector<Pixel> texels;
    for (int i = 0; i < 8; ++i) {
        const float v = static_cast<float>(i) / 8;
        texels.push_back({v, v + 0.03125F, v + 0.0625F, 0.125F - v / 8});
    }
    FillOutput(texels);
    for (const auto& [w, h] : {std::pair(4, 2), std::pair(3, 1), std::pair(6, 3)}) {
        TinyWorld input(4, 2, 4);
        TinyWorld eight(w, h, 4, 20);
        TinyWorld sixteen(w, h, 8, 20);
        TinyWorld floats(w, h, 16, 20);
        Download(input, eight, PF_PixelFormat_ARGB32);
        Download(input, sixteen, PF_PixelFormat_ARGB64);
        Download(input, floats, PF_PixelFormat_ARGB128);
        for (int i = 0; i < std::min(w, 4) * std::min(h, 2) * 4; ++i) {
            const int x = i / 4 % std::min(w, 4);
            const int y = i / 4 / std::min(w, 4);
            const float wanted = texels[static_cast<size_t>(y * 4 + x)][static_cast<size_t>(i % 4)];
            EXPECT_EQ(eight.At<uint8_t>(x, y, i % 4), std::lround(wanted * 255)) << x << ' ' << y;
            EXPECT_EQ(sixteen.At<uint16_t>(x, y, i % 4), std::lround(wanted * 65535)) << x << ' ' << y;
            EXPECT_EQ(floats.At<float>(x, y, i % 4), wanted) << x << ' ' << y;
        }
        for (const TinyWorld* world : {&eight, &sixteen, &floats})
            ExpectUntouchedBeyond(*world, 4, 2);
    }
    EXPECT_EQ(host_.blocks.size(), 0u);
    EXPECT_EQ(host_.heldLocks, 0);
}

TEST_F(DownloadTest, FailuresAreThrownAndSkipTheCleanUp) {
    FillOutput(std::vector<Pixel>(4));
    TinyWorld input(4, 1, 4);
    TinyWorld output(4, 1, 16);
    const auto download = [&] { return ErrorOf([&] { Download(input, output, PF_PixelFormat_ARGB128); }); };
    host_.failures = {{"host_new_handle", 1}};
    EXPECT_EQ(download(), PF_Err_OUT_OF_MEMORY);
    EXPECT_EQ(host_.blocks.size(), 0u);
    host_.failures = {{"acquire PF Handle Suite", 1}};
    EXPECT_EQ(download(), 516);
    EXPECT_EQ(host_.blocks.size(), 0u);
    host_.failures = {{"iterate", 77}};
    EXPECT_EQ(download(), 77);
    EXPECT_EQ(host_.blocks.size(), 1u);
    EXPECT_EQ(host_.heldLocks, 1);
    host_.failures = {{"acquire PF iterateFloat Suite", 1}};
    EXPECT_EQ(download(), 516);
    EXPECT_EQ(host_.blocks.size(), 2u);
}

TEST_F(DownloadTest, GettersResultIsNotTestedAndAWorldOfAnotherDepthStaysAsItIs) {
    FillOutput(std::vector<Pixel>(4, Pixel{1, 1, 1, 1}));
    TinyWorld input(4, 1, 4);
    TinyWorld eight(4, 1, 4);
    TinyWorld sixteen(4, 1, 8);
    host_.failures = {{"get_pixel_data8", 5}};
    Download(input, eight, PF_PixelFormat_ARGB32);
    EXPECT_EQ(eight.At<uint8_t>(3, 0, 3), 255);
    Download(input, sixteen, PF_PixelFormat_ARGB32);
    EXPECT_EQ(sixteen.bytes, std::vector<std::byte>(32, std::byte{0xA5}));
}

TEST_F(PassTest, IncompleteFramebufferIsReportedToTheUser) {
    TinyHost host;
    AESDK_OpenGL_BindTarget(Record(), Record().resultTexture);
    ReportFramebufferStatus(&host.in_data, &host.out_data);
    EXPECT_EQ(host.out_data.out_flags, 0);
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, 0, 0);
    host.out_data.out_flags = 1;
    EXPECT_EQ(ErrorOf([&] { ReportFramebufferStatus(&host.in_data, &host.out_data); }), 4);
    EXPECT_EQ(host.out_data.out_flags, 1 | 256);
    EXPECT_STREQ(host.out_data.return_msg, "Framebuffer incomplete, missing attachment!");
}

}  // namespace
}  // namespace flumo::tests
