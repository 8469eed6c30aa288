#pragma once

#include <array>

namespace flumo::test {

using Pair = std::array<float, 2>;

// The uniforms of the main program under their own names, at what the controls' defaults give.
struct MainUniforms {
    float multiplier16bit = 1;
    Pair size{0, 0};
    float noiseGradientOffset = 0;
    float noiseGradientScale = 1;
    float noiseGradientScaleBase = 0;
    int noiseBottomCroppingEnabled = 1;
    float noiseBottomCroppingThreshold = -0.01f;
    float noiseBottomCroppingFeather = 0;
    int noiseTopCroppingEnabled = 0;
    float noiseTopCroppingThreshold = 0.99f;
    float noiseTopCroppingFeather = 0;
    float alphaThreshold = 0.05f;
    float layer1Mult = 1;
    float layer2Mult = 1;
    int layer1LightnessInvert = 0;
    int layer2LightnessInvert = 0;
    int layer1AlphaInvert = 0;
    int layer2AlphaInvert = 0;
    float offsetX = 0;
    float offsetY = 0;
    int noiseType = 1;
    float noiseContrast = 100;
    float noiseBrightness = 0;
    float evolution = 0;
    int loopEvolution = 0;
    int complexity = 4;
    float fluidSpeed = 0.01f;
    Pair scale{1, 1};
    int noiseVisible = 1;
    int colorizeMode = 1;
    int linesBlendMode = 1;
    int linesCount = 4;
    float linesWidth = 5;
    float linesVisible = 0;
    int noiseGradientLoop = 0;
    float gradientRandomizeAmplitude = 0;
    float gradientRandomizeFrequency = 1;
    float reflectionScale = 1.4f;
    float linesOffset = 0;
    int linesLoop = 0;
    int linesBottomCroppingEnabled = 0;
    float linesBottomCroppingThreshold = -0.01f;
    float linesBottomCroppingFeather = 0;
    int linesTopCroppingEnabled = 0;
    float linesTopCroppingThreshold = 0.99f;
    float linesTopCroppingFeather = 0;
    float linesGradientOffset = 0;
    float linesGradientScale = 1;
    float linesGradientScaleBase = 0;
    int linesGradientLoop = 0;
    float linesAlpha = 1;
    int linesAlphaNoiseType = 1;
    float linesAlphaThreshold = 0;
    Pair linesAlphaNoiseOffset{0, 0};
    float linesAlphaNoiseEvolution = 0;
    int linesAlphaNoiseLoopEvolution = 0;
    int linesAlphaNoiseComplexity = 4;
    float linesAlphaNoiseSpeed = 0.01f;
    Pair linesAlphaNoiseScale{1, 1};
    float linesRandomize = 0;
    float widthRandomize = 0;
    float gradientRandomize = 0;
    float alphaRandomize = 0;
    float randomSeed = 0;
    int useLayer1 = 0;
    int useLayer2 = 0;
    int useLayer3 = 0;

    // Calls visit(name, value) for each.
    template <class Visit>
    void each(Visit visit) const;
};

template <class Visit>
void MainUniforms::each(Visit visit) const {
    visit("multiplier16bit", multiplier16bit);
    visit("size", size);
    visit("noiseGradientOffset", noiseGradientOffset);
    visit("noiseGradientScale", noiseGradientScale);
    visit("noiseGradientScaleBase", noiseGradientScaleBase);
    visit("noiseBottomCroppingEnabled", noiseBottomCroppingEnabled);
    visit("noiseBottomCroppingThreshold", noiseBottomCroppingThreshold);
    visit("noiseBottomCroppingFeather", noiseBottomCroppingFeather);
    visit("noiseTopCroppingEnabled", noiseTopCroppingEnabled);
    visit("noiseTopCroppingThreshold", noiseTopCroppingThreshold);
    visit("noiseTopCroppingFeather", noiseTopCroppingFeather);
    visit("alphaThreshold", alphaThreshold);
    visit("layer1Mult", layer1Mult);
    visit("layer2Mult", layer2Mult);
    visit("layer1LightnessInvert", layer1LightnessInvert);
    visit("layer2LightnessInvert", layer2LightnessInvert);
    visit("layer1AlphaInvert", layer1AlphaInvert);
    visit("layer2AlphaInvert", layer2AlphaInvert);
    visit("offsetX", offsetX);
    visit("offsetY", offsetY);
    visit("noiseType", noiseType);
    visit("noiseContrast", noiseContrast);
    visit("noiseBrightness", noiseBrightness);
    visit("evolution", evolution);
    visit("loopEvolution", loopEvolution);
    visit("complexity", complexity);
    visit("fluidSpeed", fluidSpeed);
    visit("scale", scale);
    visit("noiseVisible", noiseVisible);
    visit("colorizeMode", colorizeMode);
    visit("linesBlendMode", linesBlendMode);
    visit("linesCount", linesCount);
    visit("linesWidth", linesWidth);
    visit("linesVisible", linesVisible);
    visit("noiseGradientLoop", noiseGradientLoop);
    visit("gradientRandomizeAmplitude", gradientRandomizeAmplitude);
    visit("gradientRandomizeFrequency", gradientRandomizeFrequency);
    visit("reflectionScale", reflectionScale);
    visit("linesOffset", linesOffset);
    visit("linesLoop", linesLoop);
    visit("linesBottomCroppingEnabled", linesBottomCroppingEnabled);
    visit("linesBottomCroppingThreshold", linesBottomCroppingThreshold);
    visit("linesBottomCroppingFeather", linesBottomCroppingFeather);
    visit("linesTopCroppingEnabled", linesTopCroppingEnabled);
    visit("linesTopCroppingThreshold", linesTopCroppingThreshold);
    visit("linesTopCroppingFeather", linesTopCroppingFeather);
    visit("linesGradientOffset", linesGradientOffset);
    visit("linesGradientScale", linesGradientScale);
    visit("linesGradientScaleBase", linesGradientScaleBase);
    visit("linesGradientLoop", linesGradientLoop);
    visit("linesAlpha", linesAlpha);
    visit("linesAlphaNoiseType", linesAlphaNoiseType);
    visit("linesAlphaThreshold", linesAlphaThreshold);
    visit("linesAlphaNoiseOffset", linesAlphaNoiseOffset);
    visit("linesAlphaNoiseEvolution", linesAlphaNoiseEvolution);
    visit("linesAlphaNoiseLoopEvolution", linesAlphaNoiseLoopEvolution);
    visit("linesAlphaNoiseComplexity", linesAlphaNoiseComplexity);
    visit("linesAlphaNoiseSpeed", linesAlphaNoiseSpeed);
    visit("linesAlphaNoiseScale", linesAlphaNoiseScale);
    visit("linesRandomize", linesRandomize);
    visit("widthRandomize", widthRandomize);
    visit("gradientRandomize", gradientRandomize);
    visit("alphaRandomize", alphaRandomize);
    visit("randomSeed", randomSeed);
    visit("useLayer1", useLayer1);
    visit("useLayer2", useLayer2);
    visit("useLayer3", useLayer3);
}

}  // namespace flumo::test
