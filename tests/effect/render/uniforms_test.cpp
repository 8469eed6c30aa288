// What the main program is given for a frame, read back from it behind the draw.
#include <glbinding/gl/gl.h>
#include <gmock/gmock.h>

#include <cmath>
#include <set>

#include "effect/gpu/gl/program.h"
#include "effect/shaders/shader_texts.h"
#include "tests/effect/render/gl_scope.h"
#include "tests/effect/render/looks.h"

using namespace gl;

namespace flumo::test {
namespace {

using enum Section;

/// A uniform, the settings that make it, and its value.
struct Row {
    const char* name;
    GLenum type;
    std::vector<std::pair<Section, double>> settings;
    std::vector<float> values;
};

// All controls away from their defaults and from each other. Percentages and thousandths are such that a
// product in single precision gives another number. Switches that are kept as bytes lose what a byte cannot
// hold, those that are kept as numbers of 32 bits do not, and the rest become 0 or 1.
const Row kRows[] = {
    {"ModelviewProjection", GL_FLOAT_MAT4, {}, {2.0F / 3, 0, 0, 0, 0, 2, 0, 0, 0, 0, 1, 0, -1, -1, 0, 1}},
    {"multiplier16bit", GL_FLOAT, {}, {1.999969482421875F}},
    {"noiseGradientOffset", GL_FLOAT, {{NoiseGradientOffset, 5}}, {0.05F}},
    {"noiseGradientScale", GL_FLOAT, {{NoiseGradientScale, 9}}, {0.09F}},
    {"noiseGradientScaleBase", GL_FLOAT, {{NoiseGradientScaleBase, 10}}, {0.1F}},
    {"noiseBottomCroppingEnabled", GL_INT, {{NoiseBottomCroppingEnabled, 512 + 202}}, {202}},
    {"noiseBottomCroppingThreshold", GL_FLOAT, {{NoiseBottomCroppingThreshold, 15}}, {0.15F}},
    {"noiseBottomCroppingFeather", GL_FLOAT, {{NoiseBottomCroppingFeather, 18}}, {0.18F}},
    {"noiseTopCroppingEnabled", GL_INT, {{NoiseTopCroppingEnabled, 203}}, {203}},
    {"noiseTopCroppingThreshold", GL_FLOAT, {{NoiseTopCroppingThreshold, 20}}, {0.2F}},
    {"noiseTopCroppingFeather", GL_FLOAT, {{NoiseTopCroppingFeather, 23}}, {0.23F}},
    {"alphaThreshold", GL_FLOAT, {{AlphaTreshold, 27}}, {0.27F}},
    {"layer1Mult", GL_FLOAT, {{Layer1Mult, 1.5}}, {1.5F}},
    {"layer2Mult", GL_FLOAT, {{Layer2Mult, 2.5}}, {2.5F}},
    {"layer1LightnessInvert", GL_INT, {{Layer1LightnessInvert, 2}}, {1}},
    {"layer2LightnessInvert", GL_INT, {{Layer2LightnessInvert, 3}}, {1}},
    {"layer1AlphaInvert", GL_INT, {{Layer1AlphaInvert, 256}}, {1}},
    {"layer2AlphaInvert", GL_INT, {{Layer2AlphaInvert, -5}}, {1}},
    {"offsetX", GL_FLOAT, {{OffsetX, 21}}, {0.021F}},
    {"offsetY", GL_FLOAT, {{OffsetY, 37}}, {0.037F}},
    {"noiseType", GL_INT, {{NoiseType, 4}}, {4}},
    {"noiseContrast", GL_FLOAT, {{NoiseContrast, 110}}, {110}},
    {"noiseBrightness", GL_FLOAT, {{NoiseBrightness, -25}}, {-25}},
    {"evolution", GL_FLOAT, {{Evolution, 765.5}}, {765.5F}},
    {"loopEvolution", GL_INT, {{LoopEvolution, 201}}, {201}},
    {"complexity", GL_INT, {{Complexity, 2}}, {2}},
    {"fluidSpeed", GL_FLOAT, {{Speed, 19}}, {0.019F}},
    {"scale", GL_FLOAT_VEC2, {{Scale, 250}, {ScaleX, 80}, {ScaleY, 40}}, {0.5F, 1}},
    {"noiseVisible", GL_INT, {{NoiseVisible, 7}}, {1}},
    {"colorizeMode", GL_INT, {{ColorizeMode, 2}}, {2}},
    {"linesBlendMode", GL_INT, {{LinesBlendMode, 3}}, {3}},
    {"linesCount", GL_INT, {{LinesCount, 11}}, {11}},
    {"linesWidth", GL_FLOAT, {{LineWidth, 7}}, {3.5F}},
    {"linesVisible", GL_FLOAT, {{LinesVisible, 9}}, {1}},
    {"noiseGradientLoop", GL_INT, {{NoiseGradientLoop, 65537}}, {65537}},
    {"gradientRandomizeAmplitude", GL_FLOAT, {{GradientRandomizeAmplitude, 30}}, {0.3F}},
    {"gradientRandomizeFrequency", GL_FLOAT, {{GradientRandomizeFrequency, 33}}, {0.33F}},
    {"reflectionScale", GL_FLOAT, {{ReflectionScale, 3.25}}, {3.25F}},
    {"linesOffset", GL_FLOAT, {{LinesOffset, 36}}, {0.36F}},
    {"linesLoop", GL_INT, {{LinesLoop, 65538}}, {65538}},
    {"linesBottomCroppingEnabled", GL_INT, {{LinesBottomCroppingEnabled, 204}}, {204}},
    {"linesBottomCroppingThreshold", GL_FLOAT, {{LinesBottomCroppingThreshold, 40}}, {0.4F}},
    {"linesBottomCroppingFeather", GL_FLOAT, {{LinesBottomCroppingFeather, 43}}, {0.43F}},
    {"linesTopCroppingEnabled", GL_INT, {{LinesTopCroppingEnabled, 205}}, {205}},
    {"linesTopCroppingThreshold", GL_FLOAT, {{LinesTopCroppingThreshold, 46}}, {0.46F}},
    {"linesTopCroppingFeather", GL_FLOAT, {{LinesTopCroppingFeather, 49}}, {0.49F}},
    {"linesGradientOffset", GL_FLOAT, {{LinesGradientOffset, 54}}, {0.54F}},
    {"linesGradientScale", GL_FLOAT, {{LinesGradientScale, 60}}, {0.6F}},
    {"linesGradientScaleBase", GL_FLOAT, {{LinesGradientScaleBase, 66}}, {0.66F}},
    {"linesGradientLoop", GL_INT, {{LinesGradientLoop, 65539}}, {65539}},
    {"linesAlpha", GL_FLOAT, {{LinesAlpha, 67}}, {0.67F}},
    {"linesAlphaNoiseType", GL_INT, {{LinesAlphaNoiseType, 3}}, {3}},
    {"linesAlphaThreshold", GL_FLOAT, {{LinesAlphaThreshold, 72}}, {0.72F}},
    {"linesAlphaNoiseOffset",
     GL_FLOAT_VEC2,
     {{LinesAlphaNoiseOffsetX, 38}, {LinesAlphaNoiseOffsetY, 41}},
     {0.038F, 0.041F}},
    {"linesAlphaNoiseEvolution", GL_FLOAT, {{LinesAlphaNoiseEvolution, -400.25}}, {-400.25F}},
    {"linesAlphaNoiseLoopEvolution", GL_INT, {{LinesAlphaNoiseLoopEvolution, 206}}, {206}},
    {"linesAlphaNoiseComplexity", GL_INT, {{LinesAlphaNoiseComplexity, 1}}, {1}},
    {"linesAlphaNoiseSpeed", GL_FLOAT, {{LinesAlphaNoiseSpeed, 42}}, {0.042F}},
    {"linesAlphaNoiseScale",
     GL_FLOAT_VEC2,
     {{LinesAlphaNoiseScale, 250}, {LinesAlphaNoiseScaleX, 80}, {LinesAlphaNoiseScaleY, 40}},
     {2, 1}},
    {"linesRandomize", GL_FLOAT, {{LinesRandomize, 73}}, {0.73F}},
    {"widthRandomize", GL_FLOAT, {{WidthRandomize, 79}}, {0.79F}},
    {"gradientRandomize", GL_FLOAT, {{GradientRandomize, 33}}, {3.3F}},
    {"alphaRandomize", GL_FLOAT, {{AlphaRandomize, 81}}, {0.81F}},
    {"randomSeed", GL_FLOAT, {{Seed, 16777217}}, {16777216}},
    {"useLayer1", GL_INT, {}, {0}},
    {"useLayer2", GL_INT, {}, {1}},
    {"useLayer3", GL_INT, {}, {0}},
    {"inputTexture1", GL_SAMPLER_2D, {}, {0}},
    {"inputTexture2", GL_SAMPLER_2D, {}, {1}},
    {"inputTexture3", GL_SAMPLER_2D, {}, {2}},
    {"linesGradientTexture", GL_SAMPLER_2D, {}, {3}},
    {"noiseGradientTexture", GL_SAMPLER_2D, {}, {4}},
};

std::vector<float> uniform(GLuint program, const char* name, size_t count) {
    std::vector<float> values(count);
    const GLint location = glGetUniformLocation(program, name);
    EXPECT_NE(location, -1) << name;
    if (location != -1) glGetUniformfv(program, location, values.data());
    return values;
}

/// Names and types of all uniforms that the compiler kept.
std::map<std::string, GLenum> active_uniforms(GLuint program) {
    GLint count = 0;
    glGetProgramiv(program, GL_ACTIVE_UNIFORMS, &count);
    std::map<std::string, GLenum> found;
    for (GLuint i = 0; i < static_cast<GLuint>(count); ++i) {
        char name[64];
        GLint size = 0;
        GLenum type{};
        glGetActiveUniform(program, i, sizeof name, nullptr, &size, &type, name);
        found[name] = type;
    }
    return found;
}

TEST(Uniforms, OfAFrame) {
    const MainProgramScope main_program;
    Look look = {{Layer2, flat_layer({1, 1, 1, 1})}};
    std::map<std::string, GLenum> types;
    for (const Row& row : kRows) {
        look.insert(row.settings.begin(), row.settings.end());
        types[row.name] = row.type;
    }
    host::FrameRequest request{.width = 6, .height = 4, .depth = host::Depth::k16};
    request.downsample_x = {1, 2};
    request.downsample_y = {1, 4};
    shoot({look, request});
    const GlScope gl;
    EXPECT_EQ(active_uniforms(gl->mainProgram), types) << "all but size, which the program does not read";
    for (const Row& row : kRows)
        EXPECT_EQ(uniform(gl->mainProgram, row.name, row.values.size()), row.values) << row.name;
    EXPECT_THAT(kMainFragmentText, testing::HasSubstr("\nuniform int useLayer4;"));
}

TEST(Uniforms, ScaleOfZeroIsInfinite) {
    const MainProgramScope main_program;
    shoot({{{Scale, 0}}, {.width = 1, .height = 1}});
    const GlScope gl;
    EXPECT_EQ(uniform(gl->mainProgram, "scale", 2), (std::vector{HUGE_VALF, HUGE_VALF}));
}

// A program in the main one's place shows what the real one does not read.
TEST(Uniforms, SizeIsSent) {
    const MainProgramScope main_program;
    const GlScope gl;
    const std::array<int, 2> attributes = {kAttributePosition, kAttributeUVs};
    const char* text =
        "#version 330\nin vec4 out_pos;\nin vec2 out_uvs;\nuniform vec2 size;\nout vec4 colourOut;\n"
        "void main() { colourOut = vec4(size, 0.0, 1.0); }\n";
    const GLuint probe = AESDK_OpenGL_BuildProgram(kUvVertexText, text, attributes);
    const GLuint main = std::exchange(gl->mainProgram, probe);
    const auto instance = instance_of({});
    const host::World frame = instance->render({.width = 6, .height = 4, .depth = host::Depth::k32});
    EXPECT_EQ(frame.rgba(5, 3), (host::Rgba{6, 4, 0, 1}));
    gl->mainProgram = main;
    glDeleteProgram(probe);
}

// What a frame does not show is not uploaded: no layer that is not chosen, no ramp of a feature that is off.
TEST(Uniforms, TexturesAreMadeForWhatShows) {
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
    const host::FrameRequest request{.width = 5, .height = 3};
    shoot({{}, request});
    for (const Case& it : cases) {
        const CallCounter counter;
        shoot({it.look, request});
        EXPECT_EQ(counter.calls("glGenTextures"), it.textures);
        EXPECT_EQ(counter.calls("glDeleteTextures"), it.textures);
    }
}

}  // namespace
}  // namespace flumo::test
