#include "effect/render/uniforms.h"

#include <glbinding/gl33core/gl.h>

#include "effect/render/screen_matrix.h"

using namespace gl33core;

namespace flumo {

namespace {

using Frame = FrameUniforms;
using P = ParamSnapshot;

// Products are formed in double precision; only the result is rounded.
void SetFloat(GLint location, double value) {
    glUniform1f(location, static_cast<float>(value));
}

void SetFloats(GLint location, double x, double y) {
    glUniform2f(location, static_cast<float>(x), static_cast<float>(y));
}

template <auto Field>
void Plain(GLint location, const Frame& frame) {
    SetFloat(location, frame.snapshot.*Field);
}

template <auto Field>
void Percent(GLint location, const Frame& frame) {
    SetFloat(location, frame.snapshot.*Field * 0.01);
}

template <auto Field>
void Thousandth(GLint location, const Frame& frame) {
    SetFloat(location, frame.snapshot.*Field * 0.001);
}

/// Integers and switch bytes as they are; switches held as doubles are truncated.
template <auto Field>
void Integer(GLint location, const Frame& frame) {
    glUniform1i(location, static_cast<GLint>(frame.snapshot.*Field));
}

void Projection(GLint location, const Frame& frame) {
    const Matrix4 matrix = ScreenMatrix(frame.width, frame.height);
    glUniformMatrix4fv(location, 1, GL_FALSE, matrix.data());
}

void Multiplier(GLint location, const Frame& frame) {
    glUniform1f(location, frame.multiplier16bit);
}

void Size(GLint location, const Frame& frame) {
    glUniform2f(location, static_cast<float>(frame.width), static_cast<float>(frame.height));
}

// A reciprocal: a larger Scale zooms in. Zero gives infinity, unguarded.
void Scale(GLint location, const Frame& frame) {
    const P& p = frame.snapshot;
    SetFloats(location, 10000 / (p.scale * p.scaleX), 10000 / (p.scale * p.scaleY));
}

// A product, the opposite sense of the main noise.
void LinesAlphaNoiseScale(GLint location, const Frame& frame) {
    const P& p = frame.snapshot;
    SetFloats(location, p.linesAlphaNoiseScale * p.linesAlphaNoiseScaleX * 0.0001,
              p.linesAlphaNoiseScale * p.linesAlphaNoiseScaleY * 0.0001);
}

void LinesAlphaNoiseOffset(GLint location, const Frame& frame) {
    const P& p = frame.snapshot;
    SetFloats(location, p.linesAlphaNoiseOffsetX * 0.001, p.linesAlphaNoiseOffsetY * 0.001);
}

// The only length in pixels, and the only uniform that follows the host's resolution.
void LinesWidth(GLint location, const Frame& frame) {
    SetFloat(location, double{frame.downsampleX} * frame.snapshot.lineWidth);
}

// Alone among the randomisers ten times the percentage.
void GradientRandomize(GLint location, const Frame& frame) {
    SetFloat(location, frame.snapshot.gradientRandomize * 0.01 * 10);
}

struct UniformRow {
    const char* name;
    void (*set)(GLint location, const Frame& frame);
};

// In the order in which they are set. Like controls differ on purpose in factor and in type: offsets and
// speeds go by thousandths, contrast and brightness stay percentages, linesVisible is a float.
constexpr UniformRow kUniforms[] = {
    {"ModelviewProjection", Projection},
    {"multiplier16bit", Multiplier},
    {"size", Size},
    {"noiseGradientOffset", Percent<&P::noiseGradientOffset>},
    {"noiseGradientScale", Percent<&P::noiseGradientScale>},
    {"noiseGradientScaleBase", Percent<&P::noiseGradientScaleBase>},
    {"noiseBottomCroppingEnabled", Integer<&P::noiseBottomCroppingEnabled>},
    {"noiseBottomCroppingThreshold", Percent<&P::noiseBottomCroppingThreshold>},
    {"noiseBottomCroppingFeather", Percent<&P::noiseBottomCroppingFeather>},
    {"noiseTopCroppingEnabled", Integer<&P::noiseTopCroppingEnabled>},
    {"noiseTopCroppingThreshold", Percent<&P::noiseTopCroppingThreshold>},
    {"noiseTopCroppingFeather", Percent<&P::noiseTopCroppingFeather>},
    {"alphaThreshold", Percent<&P::alphaThreshold>},
    {"layer1Mult", Plain<&P::layer1Mult>},
    {"layer2Mult", Plain<&P::layer2Mult>},
    {"layer1LightnessInvert", Integer<&P::layer1LightnessInvert>},
    {"layer2LightnessInvert", Integer<&P::layer2LightnessInvert>},
    {"layer1AlphaInvert", Integer<&P::layer1AlphaInvert>},
    {"layer2AlphaInvert", Integer<&P::layer2AlphaInvert>},
    {"offsetX", Thousandth<&P::offsetX>},
    {"offsetY", Thousandth<&P::offsetY>},
    {"noiseType", Integer<&P::noiseType>},
    {"noiseContrast", Plain<&P::noiseContrast>},
    {"noiseBrightness", Plain<&P::noiseBrightness>},
    {"evolution", Plain<&P::evolution>},
    {"loopEvolution", Integer<&P::loopEvolution>},
    {"complexity", Integer<&P::complexity>},
    {"fluidSpeed", Thousandth<&P::speed>},
    {"scale", Scale},
    {"noiseVisible", Integer<&P::noiseVisible>},
    {"colorizeMode", Integer<&P::colorizeMode>},
    {"linesBlendMode", Integer<&P::linesBlendMode>},
    {"linesCount", Integer<&P::linesCount>},
    {"linesWidth", LinesWidth},
    {"linesVisible", Plain<&P::linesVisible>},
    {"noiseGradientLoop", Integer<&P::noiseGradientLoop>},
    {"gradientRandomizeAmplitude", Percent<&P::gradientRandomizeAmplitude>},
    {"gradientRandomizeFrequency", Percent<&P::gradientRandomizeFrequency>},
    {"reflectionScale", Plain<&P::reflectionScale>},
    {"linesOffset", Percent<&P::linesOffset>},
    {"linesLoop", Integer<&P::linesLoop>},
    {"linesBottomCroppingEnabled", Integer<&P::linesBottomCroppingEnabled>},
    {"linesBottomCroppingThreshold", Percent<&P::linesBottomCroppingThreshold>},
    {"linesBottomCroppingFeather", Percent<&P::linesBottomCroppingFeather>},
    {"linesTopCroppingEnabled", Integer<&P::linesTopCroppingEnabled>},
    {"linesTopCroppingThreshold", Percent<&P::linesTopCroppingThreshold>},
    {"linesTopCroppingFeather", Percent<&P::linesTopCroppingFeather>},
    {"linesGradientOffset", Percent<&P::linesGradientOffset>},
    {"linesGradientScale", Percent<&P::linesGradientScale>},
    {"linesGradientScaleBase", Percent<&P::linesGradientScaleBase>},
    {"linesGradientLoop", Integer<&P::linesGradientLoop>},
    {"linesAlpha", Percent<&P::linesAlpha>},
    {"linesAlphaNoiseType", Integer<&P::linesAlphaNoiseType>},
    {"linesAlphaThreshold", Percent<&P::linesAlphaThreshold>},
    {"linesAlphaNoiseOffset", LinesAlphaNoiseOffset},
    {"linesAlphaNoiseEvolution", Plain<&P::linesAlphaNoiseEvolution>},
    {"linesAlphaNoiseLoopEvolution", Integer<&P::linesAlphaNoiseLoopEvolution>},
    {"linesAlphaNoiseComplexity", Integer<&P::linesAlphaNoiseComplexity>},
    {"linesAlphaNoiseSpeed", Thousandth<&P::linesAlphaNoiseSpeed>},
    {"linesAlphaNoiseScale", LinesAlphaNoiseScale},
    {"linesRandomize", Percent<&P::linesRandomize>},
    {"widthRandomize", Percent<&P::widthRandomize>},
    {"gradientRandomize", GradientRandomize},
    {"alphaRandomize", Percent<&P::alphaRandomize>},
    {"randomSeed", Plain<&P::seed>},
};

}  // namespace

void SetFrameUniforms(GLuint program, const FrameUniforms& frame) {
    for (const UniformRow& row : kUniforms)
        row.set(glGetUniformLocation(program, row.name), frame);
}

}  // namespace flumo
