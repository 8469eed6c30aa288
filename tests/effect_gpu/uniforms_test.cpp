// What the main program is given for one frame: uniforms, textures, geometry, and the state around it.
#include <glbinding/Binding.h>
#include <glbinding/CallbackMask.h>
#include <glbinding/gl/gl.h>

#include <cmath>

#include "effect/gpu/program.h"
#include "effect/gpu/resources.h"
#include "effect/gradient/gradient.h"
#include "effect/render/bind_uniforms.h"
#include "effect/shaders/shader_texts.h"
#include "tests/effect_gpu/gl_fixture.h"
#include "tests/effect_gpu/tiny_host.h"

using namespace gl;

namespace flumo::tests {
namespace {

/// What was bound when the image was drawn.
struct AtDraw {
    std::array<GLint, 5> units{};
    std::array<GLint, 4> viewport{};
    int heldLocks = -1;
    bool blending = false;
};

/// A fragment program in the main one's place: it names what the real one leaves out or would draw slowly.
constexpr const char* kProbeText = R"(#version 330
in vec4 out_pos;
in vec2 out_uvs;
uniform vec2 size, scale;
uniform sampler2D inputTexture1, inputTexture2, inputTexture3, linesGradientTexture, noiseGradientTexture;
uniform int useLayer1, useLayer2, useLayer3;
out vec4 colourOut;
void main() {
    vec4 sum = texture(inputTexture1, out_uvs) + texture(inputTexture2, out_uvs) +
               texture(inputTexture3, out_uvs) + texture(linesGradientTexture, out_uvs) +
               texture(noiseGradientTexture, out_uvs);
    float unused = 1e-30 * (sum.r + size.x + size.y + min(scale.x + scale.y, 1.0) + float(useLayer1 + useLayer2 + useLayer3));
    colourOut = vec4(1.0, 0.5, out_uvs.x + unused, 0.5);
}
)";

class UniformsTest : public GlTest {
  protected:
    static constexpr A_long kWidth = 6;
    static constexpr A_long kHeight = 4;

    void SetUp() override {
        GlTest::SetUp();
        AESDK_OpenGL_PrepareResources(Record(), kWidth, kHeight, 1);
        host_.in_data.width = kWidth;
        host_.in_data.height = kHeight;
        snapshot_.checkedOut.resize(3);
        for (int i = 0; i < 3; ++i)
            (snapshot_.*kSlots[static_cast<size_t>(i)]) = i;
        snapshot_.noiseGradient = &noiseBlock_;
        snapshot_.linesGradient = &linesBlock_;
    }

    void TearDown() override {
        if (probe_ != 0) {
            Record().mainProgram = mainProgram_;
            glDeleteProgram(probe_);
        }
        GlTest::TearDown();
    }

    void UseProbe() {
        const std::array<int, 2> attributes = {kAttributePosition, kAttributeUVs};
        mainProgram_ = Record().mainProgram;
        probe_ = AESDK_OpenGL_BuildProgram(kUvVertexText, kProbeText, attributes);
        Record().mainProgram = probe_;
    }

    void Draw(A_long originX = 0, A_long originY = 0, float multiplier = 1) {
        AEGP_SuiteHandler suites(host_.in_data.pica_basicP);
        glClearColor(0, 0, 0, 0);
        BindUniformsAndDraw(&host_.in_data, &host_.out_data, suites, Record(), snapshot_, kWidth, kHeight,
                            originX, originY, multiplier);
    }

    /// Draws, and looks around at the first draw call.
    AtDraw DrawAndLook() {
        AtDraw seen;
        auto& draw = glbinding::Binding::DrawArrays;
        draw.setBeforeCallback([&](GLenum, GLint, GLsizei) {
            if (seen.heldLocks < 0) seen = Look();
        });
        draw.addCallbackMask(glbinding::CallbackMask::Before);
        Draw();
        draw.setCallbackMask(glbinding::CallbackMask::None);
        draw.clearBeforeCallback();
        return seen;
    }

    std::vector<float> Uniform(GLuint program, const char* name, size_t count) {
        std::vector<float> values(count);
        const GLint location = glGetUniformLocation(program, name);
        EXPECT_NE(location, -1) << name;
        if (location != -1) glGetUniformfv(program, location, values.data());
        return values;
    }

    static GLenum TypeOf(GLuint program, const char* name) {
        GLuint index = 0;
        GLint type = 0;
        glGetUniformIndices(program, 1, &name, &index);
        glGetActiveUniformsiv(program, 1, &index, GL_UNIFORM_TYPE, &type);
        return static_cast<GLenum>(type);
    }

    static constexpr std::array kSlots = {&ParamSnapshot::layer1Slot, &ParamSnapshot::layer2Slot,
                                          &ParamSnapshot::layer3Slot};
    TinyHost host_;
    ParamSnapshot snapshot_;

  private:
    AtDraw Look() {
        AtDraw seen{.heldLocks = host_.heldLocks, .blending = glIsEnabled(GL_BLEND) == GL_TRUE};
        glGetIntegerv(GL_VIEWPORT, seen.viewport.data());
        for (unsigned unit = 0; unit < 5; ++unit) {
            glActiveTexture(GL_TEXTURE0 + unit);
            glGetIntegerv(GL_TEXTURE_BINDING_2D, &seen.units[unit]);
        }
        return seen;
    }

    GradientStopMap noiseStops_ = {{0.0F, {kStopLinear, 1, 0, 0, 1}}};
    GradientStopMap linesStops_ = {{0.0F, {kStopLinear, 0, 1, 0, 1}}};
    GradientRecord noiseRecord_{&noiseStops_};
    GradientRecord linesRecord_{&linesStops_};
    void* noiseBlock_ = &noiseRecord_;
    void* linesBlock_ = &linesRecord_;
    GLuint probe_ = 0;
    GLuint mainProgram_ = 0;
};

/// All controls away from their defaults and from each other. Percentages and thousandths are such that a
/// product in single precision gives another number.
void FillSnapshot(ParamSnapshot& s) {
    s.noiseType = 3, s.noiseContrast = 110, s.noiseBrightness = -25, s.evolution = 765.5;
    s.loopEvolution = 201, s.complexity = 2, s.speed = 19, s.scale = 250, s.scaleX = 80, s.scaleY = 40;
    s.linesCount = 11, s.lineWidth = 7, s.linesVisible = 0.75, s.noiseVisible = 1.9, s.colorizeMode = 2;
    s.reflectionScale = 3.25, s.noiseBottomCroppingEnabled = 202, s.noiseBottomCroppingThreshold = 15;
    s.noiseBottomCroppingFeather = 18, s.noiseTopCroppingEnabled = 203, s.noiseTopCroppingThreshold = 20;
    s.noiseTopCroppingFeather = 23, s.alphaThreshold = 27, s.noiseGradientOffset = 5;
    s.noiseGradientScale = 9, s.noiseGradientScaleBase = 10, s.noiseGradientLoop = 65537;
    s.gradientRandomizeAmplitude = 30, s.gradientRandomizeFrequency = 33, s.layer1Mult = 1.5;
    s.layer2Mult = 2.5, s.layer1LightnessInvert = 2.9, s.layer2LightnessInvert = 3.9;
    s.layer1AlphaInvert = 4.9, s.layer2AlphaInvert = -5.9, s.linesBlendMode = 3, s.offsetX = 21;
    s.offsetY = 37, s.linesLoop = 65538, s.linesOffset = 36, s.linesBottomCroppingEnabled = 204;
    s.linesBottomCroppingThreshold = 40, s.linesBottomCroppingFeather = 43, s.linesTopCroppingEnabled = 205;
    s.linesTopCroppingThreshold = 46, s.linesTopCroppingFeather = 49, s.linesGradientOffset = 54;
    s.linesGradientScale = 60, s.linesGradientScaleBase = 66, s.linesGradientLoop = 65539;
    s.linesAlpha = 67, s.linesAlphaNoiseType = 4, s.linesAlphaThreshold = 72, s.linesAlphaNoiseOffsetX = 38;
    s.linesAlphaNoiseOffsetY = 41, s.linesAlphaNoiseEvolution = -400.25, s.linesAlphaNoiseLoopEvolution = 206;
    s.linesAlphaNoiseComplexity = 1, s.linesAlphaNoiseSpeed = 42, s.linesAlphaNoiseScale = 250;
    s.linesAlphaNoiseScaleX = 80, s.linesAlphaNoiseScaleY = 40, s.linesRandomize = 73, s.widthRandomize = 79;
    s.gradientRandomize = 33, s.alphaRandomize = 80, s.seed = 16777217;
}

struct UniformRow {
    const char* name;
    GLenum type;
    std::vector<float> values;
};

TEST_F(UniformsTest, EachUniformOfAFrame) {
    const UniformRow rows[] = {
        {"ModelviewProjection", GL_FLOAT_MAT4, {2.0F / 6, 0, 0, 0, 0, 0.5F, 0, 0, 0, 0, 1, 0, -1, -1, 0, 1}},
        {"multiplier16bit", GL_FLOAT, {1.999969482421875F}},
        {"noiseGradientOffset", GL_FLOAT, {0.05F}},
        {"noiseGradientScale", GL_FLOAT, {0.09F}},
        {"noiseGradientScaleBase", GL_FLOAT, {0.1F}},
        {"noiseBottomCroppingEnabled", GL_INT, {202}},
        {"noiseBottomCroppingThreshold", GL_FLOAT, {0.15F}},
        {"noiseBottomCroppingFeather", GL_FLOAT, {0.18F}},
        {"noiseTopCroppingEnabled", GL_INT, {203}},
        {"noiseTopCroppingThreshold", GL_FLOAT, {0.2F}},
        {"noiseTopCroppingFeather", GL_FLOAT, {0.23F}},
        {"alphaThreshold", GL_FLOAT, {0.27F}},
        {"layer1Mult", GL_FLOAT, {1.5F}},
        {"layer2Mult", GL_FLOAT, {2.5F}},
        {"layer1LightnessInvert", GL_INT, {2}},
        {"layer2LightnessInvert", GL_INT, {3}},
        {"layer1AlphaInvert", GL_INT, {4}},
        {"layer2AlphaInvert", GL_INT, {-5}},
        {"offsetX", GL_FLOAT, {0.021F}},
        {"offsetY", GL_FLOAT, {0.037F}},
        {"noiseType", GL_INT, {3}},
        {"noiseContrast", GL_FLOAT, {110}},
        {"noiseBrightness", GL_FLOAT, {-25}},
        {"evolution", GL_FLOAT, {765.5F}},
        {"loopEvolution", GL_INT, {201}},
        {"complexity", GL_INT, {2}},
        {"fluidSpeed", GL_FLOAT, {0.019F}},
        {"scale", GL_FLOAT_VEC2, {0.5F, 1.0F}},
        {"noiseVisible", GL_INT, {1}},
        {"colorizeMode", GL_INT, {2}},
        {"linesBlendMode", GL_INT, {3}},
        {"linesCount", GL_INT, {11}},
        {"linesWidth", GL_FLOAT, {3.5F}},
        {"linesVisible", GL_FLOAT, {0.75F}},
        {"noiseGradientLoop", GL_INT, {65537}},
        {"gradientRandomizeAmplitude", GL_FLOAT, {0.3F}},
        {"gradientRandomizeFrequency", GL_FLOAT, {0.33F}},
        {"reflectionScale", GL_FLOAT, {3.25F}},
        {"linesOffset", GL_FLOAT, {0.36F}},
        {"linesLoop", GL_INT, {65538}},
        {"linesBottomCroppingEnabled", GL_INT, {204}},
        {"linesBottomCroppingThreshold", GL_FLOAT, {0.4F}},
        {"linesBottomCroppingFeather", GL_FLOAT, {0.43F}},
        {"linesTopCroppingEnabled", GL_INT, {205}},
        {"linesTopCroppingThreshold", GL_FLOAT, {0.46F}},
        {"linesTopCroppingFeather", GL_FLOAT, {0.49F}},
        {"linesGradientOffset", GL_FLOAT, {0.54F}},
        {"linesGradientScale", GL_FLOAT, {0.6F}},
        {"linesGradientScaleBase", GL_FLOAT, {0.66F}},
        {"linesGradientLoop", GL_INT, {65539}},
        {"linesAlpha", GL_FLOAT, {0.67F}},
        {"linesAlphaNoiseType", GL_INT, {4}},
        {"linesAlphaThreshold", GL_FLOAT, {0.72F}},
        {"linesAlphaNoiseOffset", GL_FLOAT_VEC2, {0.038F, 0.041F}},
        {"linesAlphaNoiseEvolution", GL_FLOAT, {-400.25F}},
        {"linesAlphaNoiseLoopEvolution", GL_INT, {206}},
        {"linesAlphaNoiseComplexity", GL_INT, {1}},
        {"linesAlphaNoiseSpeed", GL_FLOAT, {0.042F}},
        {"linesAlphaNoiseScale", GL_FLOAT_VEC2, {2.0F, 1.0F}},
        {"linesRandomize", GL_FLOAT, {0.73F}},
        {"widthRandomize", GL_FLOAT, {0.79F}},
        {"gradientRandomize", GL_FLOAT, {3.3F}},
        {"alphaRandomize", GL_FLOAT, {0.8F}},
        {"randomSeed", GL_FLOAT, {16777216}},
        {"useLayer1", GL_INT, {0}},
        {"useLayer2", GL_INT, {0}},
        {"useLayer3", GL_INT, {0}},
        {"inputTexture1", GL_SAMPLER_2D, {0}},
        {"inputTexture2", GL_SAMPLER_2D, {1}},
        {"inputTexture3", GL_SAMPLER_2D, {2}},
        {"linesGradientTexture", GL_SAMPLER_2D, {3}},
        {"noiseGradientTexture", GL_SAMPLER_2D, {4}},
    };
    FillSnapshot(snapshot_);
    host_.in_data.downsample_x = {1, 2};
    host_.in_data.downsample_y = {1, 4};
    const CallCounter counter;
    Draw(0, 0, 1.999969482421875F);
    EXPECT_EQ(counter.Calls("glGetUniformLocation"), 73 + 3) << "of the image and of the reduction";
    const GLuint program = Record().mainProgram;
    for (const UniformRow& row : rows) {
        EXPECT_EQ(Uniform(program, row.name, row.values.size()), row.values) << row.name;
        EXPECT_EQ(TypeOf(program, row.name), row.type) << row.name;
    }
    EXPECT_EQ(std::size(rows), 72u) << "every uniform but size, which the program does not read";
}

TEST_F(UniformsTest, SizeIsSentAndScaleOfZeroIsInfinite) {
    UseProbe();
    Draw();
    EXPECT_EQ(Uniform(Record().mainProgram, "size", 2), (std::vector<float>{6, 4}));
    EXPECT_EQ(Uniform(Record().mainProgram, "scale", 2), (std::vector<float>{HUGE_VALF, HUGE_VALF}));
}

TEST_F(UniformsTest, TexturesOfAFrameAreOnTheirUnitsAndGoWithIt) {
    struct Row {
        double noiseVisible;
        double linesVisible;
        std::array<bool, 3> layers;
        std::array<bool, 5> bound;
    };
    const Row rows[] = {
        {0, 0, {false, false, false}, {false, false, false, false, false}},
        {0, 1, {false, false, false}, {false, false, false, true, false}},
        {1, 0, {true, false, true}, {true, false, true, false, true}},
        {1, 1, {false, true, false}, {false, true, false, true, true}},
    };
    UseProbe();
    TinyWorld layer(3, 2, 4);
    for (const Row& row : rows) {
        snapshot_.noiseVisible = row.noiseVisible;
        snapshot_.linesVisible = row.linesVisible;
        for (size_t i = 0; i < 3; ++i) {
            snapshot_.checkedOut[i].u.ld = row.layers[i] ? layer.def : PF_LayerDef{};
        }
        AtDraw seen;
        int deleted = 0;
        {
            const CallCounter counter;
            seen = DrawAndLook();
            deleted = counter.Calls("glDeleteTextures");
        }
        int bound = 0;
        for (size_t unit = 0; unit < 5; ++unit) {
            EXPECT_EQ(seen.units[unit] != 0, row.bound[unit]) << unit;
            bound += row.bound[unit] ? 1 : 0;
            if (seen.units[unit] != 0) {
                EXPECT_EQ(glIsTexture(static_cast<GLuint>(seen.units[unit])), GL_FALSE);
            }
        }
        EXPECT_EQ(deleted, bound);
        for (size_t i = 0; i < 3; ++i) {
            const std::string use = "useLayer" + std::to_string(i + 1);
            EXPECT_EQ(Uniform(Record().mainProgram, use.c_str(), 1)[0], row.layers[i] ? 1 : 0) << use;
        }
    }
}

TEST_F(UniformsTest, DrawsAtDoubleSizeUnderBothLocksAndLeavesTheReducedImage) {
    UseProbe();
    const AtDraw seen = DrawAndLook();
    EXPECT_EQ(seen.viewport, (std::array<GLint, 4>{0, 0, 12, 8}));
    EXPECT_EQ(seen.heldLocks, 2);
    EXPECT_TRUE(seen.blending);
    EXPECT_EQ(host_.heldLocks, 0);
    for (const Pixel& pixel : ReadTexture(Record().resultTexture)) {
        EXPECT_EQ(pixel[0], 0.5F) << "premultiplied";
        EXPECT_EQ(pixel[1], 0.25F);
        EXPECT_EQ(pixel[3], 0.5F);
    }
    std::array<GLint, 4> viewport{};
    glGetIntegerv(GL_VIEWPORT, viewport.data());
    EXPECT_EQ(viewport, (std::array<GLint, 4>{0, 0, 6, 4}));
    const std::pair<GLenum, GLint> left[] = {{GL_CURRENT_PROGRAM, 0}, {GL_VERTEX_ARRAY_BINDING, 0}};
    for (const auto& [what, value] : left) {
        GLint found = -1;
        glGetIntegerv(what, &found);
        EXPECT_EQ(found, value);
    }
    EXPECT_EQ(glIsEnabled(GL_BLEND), GL_FALSE);
    GLint target = 0;
    glGetFramebufferAttachmentParameteriv(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0,
                                          GL_FRAMEBUFFER_ATTACHMENT_OBJECT_NAME, &target);
    EXPECT_EQ(static_cast<GLuint>(target), Record().resultTexture);
}

TEST_F(UniformsTest, CoordinatesPlaceTheFrameInsideTheWholeLayer) {
    struct Row {
        A_long layerWidth;
        A_long layerHeight;
        PF_RationalScale x;
        PF_RationalScale y;
        A_long originX;
        A_long originY;
        std::array<float, 4> wanted;  // u0, v0, u1, v1
    };
    const Row rows[] = {
        {6, 4, {1, 1}, {1, 1}, 0, 0, {0, 0, 1, 1}},
        {12, 16, {1, 2}, {1, 4}, 0, 0, {0, 0, 1, 1}},
        {100, 200, {1, 1}, {1, 1}, 10, 20, {0.1F, 0.1F, 0.16F, 0.12F}},
        {100, 200, {1, 2}, {1, 1}, -3, 20, {-0.06F, 0.1F, 0.06F, 0.12F}},
    };
    UseProbe();
    for (const Row& row : rows) {
        host_.in_data.width = row.layerWidth;
        host_.in_data.height = row.layerHeight;
        host_.in_data.downsample_x = row.x;
        host_.in_data.downsample_y = row.y;
        Draw(row.originX, row.originY);
        const auto [u0, v0, u1, v1] = row.wanted;
        const std::array<float, 20> wanted = {0, 0, 0, u0, v0, 6, 0, 0, u1, v0,
                                              0, 4, 0, u0, v1, 6, 4, 0, u1, v1};
        std::array<float, 20> found{};
        glBindBuffer(GL_ARRAY_BUFFER, Record().frameVertexBuffer);
        glGetBufferSubData(GL_ARRAY_BUFFER, 0, sizeof(found), found.data());
        glBindBuffer(GL_ARRAY_BUFFER, 0);
        EXPECT_EQ(found, wanted) << row.layerWidth << ' ' << row.originX;
    }
}

TEST_F(UniformsTest, GradientWithoutALockIsAnErrorOnlyWhereItIsShown) {
    UseProbe();
    snapshot_.noiseGradient = nullptr;
    snapshot_.linesVisible = 1;
    Draw();
    snapshot_.noiseVisible = 1;
    EXPECT_THROW(Draw(), PF_Err);
    EXPECT_EQ(host_.heldLocks, 0) << "the other lock is given back on the way out";
}

}  // namespace
}  // namespace flumo::tests
