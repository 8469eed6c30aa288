// The controls as users and saved projects know them, written down a second time: what the effect declares
// is compared with these rows, so that a slip in its table shows.
#pragma once

#include "effect_api/params.h"

namespace flumo::test {

struct ControlFact {
    PF_ParamIndex index;
    const char* id;
    A_long disk_id;
    PF_ParamType type;
    const char* name = "";
    float value = 0;
    float valid_min = 0;
    /// A popup's number of choices.
    float valid_max = 0;
    float slider_min = 0;
    float slider_max = 0;
    bool percent = false;
};

inline constexpr ControlFact kControlFacts[] = {
    {1, "NoiseGroupBegin", 14, PF_Param_GROUP_START, "Base Noise"},
    {2, "NoiseType", 24, PF_Param_POPUP, "Noise Type", 1, 1, 5},
    {3, "NoiseContrast", 12, PF_Param_FLOAT_SLIDER, "Noise Contrast", 100, -1000, 10000, -100, 100},
    {4, "NoiseBrightness", 13, PF_Param_FLOAT_SLIDER, "Noise Brightness", 0, -1000, 10000, -100, 100},
    {5, "OffsetX", 25, PF_Param_FLOAT_SLIDER, "Offset X", 0, -1000000, 1000000, -100, 100},
    {6, "OffsetY", 28, PF_Param_FLOAT_SLIDER, "Offset Y", 0, -1000000, 1000000, -100, 100},
    {7, "Evolution", 62, PF_Param_ANGLE, "Evolution"},
    {8, "LoopEvolution", 63, PF_Param_CHECKBOX, "Loop Evolution"},
    {9, "Complexity", 4, PF_Param_SLIDER, "Complexity", 4, 1, 100, 1, 100},
    {10, "Speed", 5, PF_Param_FLOAT_SLIDER, "Speed", 10, -1000000, 1000000, -100, 100},
    {11, "Scale", 6, PF_Param_FLOAT_SLIDER, "Scale", 100, -1000000, 1000000, -100, 100, true},
    {12, "ScaleX", 64, PF_Param_FLOAT_SLIDER, "Scale X", 100, -1000000, 1000000, -100, 100, true},
    {13, "ScaleY", 65, PF_Param_FLOAT_SLIDER, "Scale Y", 100, -1000000, 1000000, -100, 100, true},
    {14, "Layer1Mult", 20, PF_Param_FLOAT_SLIDER, "Layer Multiplier", 1, -10, 10, 0, 1},
    {15, "Layer1", 21, PF_Param_LAYER, "Layer Multiply"},
    {16, "Layer1LightnessInvert", 42, PF_Param_CHECKBOX, "Layer Lightness Invert"},
    {17, "Layer1AlphaInvert", 96, PF_Param_CHECKBOX, "Layer Alpha Invert"},
    {18, "Layer2Mult", 22, PF_Param_FLOAT_SLIDER, "Layer Multiplier", 1, -10, 10, 0, 1},
    {19, "Layer2", 23, PF_Param_LAYER, "Layer Add"},
    {20, "Layer2LightnessInvert", 27, PF_Param_CHECKBOX, "Layer Lightness Invert"},
    {21, "Layer2AlphaInvert", 97, PF_Param_CHECKBOX, "Layer Alpha Invert"},
    {22, "NoiseGroupEnd", 15, PF_Param_GROUP_END},
    {23, "ColorizeGroupBegin", 29, PF_Param_GROUP_START, "Colorize Noise"},
    {24, "NoiseVisible", 61, PF_Param_CHECKBOX, "Draw Noise", 1},
    {25, "ColorizeMode", 50, PF_Param_POPUP, "Colorize Mode", 1, 1, 3},
    {26, "Gradient", 49, PF_Param_ARBITRARY_DATA, "Noise Gradient"},
    {27, "NoiseCroppingGroupBegin", 116, PF_Param_GROUP_START, "Noise Cut"},
    {28, "NoiseBottomCroppingEnabled", 109, PF_Param_CHECKBOX, "Noise Bottom Cut Enabled", 1},
    {29, "NoiseBottomCroppingThreshold", 106, PF_Param_FLOAT_SLIDER, "Noise Bottom Cut Threshold", -1,
     -1000000, 1000000, -100, 100, true},
    {30, "NoiseBottomCroppingFeather", 107, PF_Param_FLOAT_SLIDER, "Noise Bottom Cut Feather", 0, 0, 1000000,
     0, 100, true},
    {31, "NoiseTopCroppingEnabled", 108, PF_Param_CHECKBOX, "Noise Top Cut Enabled"},
    {32, "NoiseTopCroppingThreshold", 104, PF_Param_FLOAT_SLIDER, "Noise Top Cut Threshold", 99, -1000000,
     1000000, 0, 100, true},
    {33, "NoiseTopCroppingFeather", 105, PF_Param_FLOAT_SLIDER, "Noise Top Cut Feather", 0, 0, 1000000, 0,
     100, true},
    {34, "NoiseCroppingGroupEnd", 117, PF_Param_GROUP_END},
    {35, "AlphaTreshold", 36, PF_Param_FLOAT_SLIDER, "Alpha Threshold", 5, 0, 100, 0, 100, true},
    {36, "Layer3", 41, PF_Param_LAYER, "Layer Gradient"},
    {37, "NoiseGradientOffset", 38, PF_Param_FLOAT_SLIDER, "Noise Gradient Offset", 0, -100000, 100000, -100,
     100, true},
    {38, "NoiseGradientScale", 98, PF_Param_FLOAT_SLIDER, "Noise Gradient Scale", 100, -1000000, 1000000,
     -100, 100, true},
    {39, "NoiseGradientScaleBase", 99, PF_Param_FLOAT_SLIDER, "Noise Gradient Scale Base", 0, -1000000,
     1000000, -100, 100, true},
    {40, "NoiseGradientLoop", 43, PF_Param_CHECKBOX, "Noise Gradient Loop"},
    {41, "GradientRandomizeAmplitude", 102, PF_Param_FLOAT_SLIDER, "Gradient Randomize Amplitude", 0,
     -1000000, 1000000, 0, 100, true},
    {42, "GradientRandomizeFrequency", 103, PF_Param_FLOAT_SLIDER, "Gradient Randomize Frequency", 100,
     -1000000, 1000000, 0, 100, true},
    {43, "ReflectionScale", 57, PF_Param_FLOAT_SLIDER, "Reflection Scale", 1.4F, 0, 100000, 0, 1},
    {44, "ColorizeGroupEnd", 39, PF_Param_GROUP_END},
    {45, "LinesGroupBegin", 17, PF_Param_GROUP_START, "Lines"},
    {46, "LinesVisible", 18, PF_Param_CHECKBOX, "Draw Lines"},
    {47, "LinesBlendMode", 95, PF_Param_POPUP, "Lines Blend Mode", 1, 1, 3},
    {48, "LinesCount", 7, PF_Param_SLIDER, "Lines Count", 4, 1, 1000, 1, 100},
    {49, "LineWidth", 8, PF_Param_FLOAT_SLIDER, "Line Width", 5, 0, 10000, 0, 100},
    {50, "LinesOffset", 44, PF_Param_FLOAT_SLIDER, "Lines Offset", 0, -100000, 100000, -100, 100, true},
    {51, "LinesLoop", 45, PF_Param_CHECKBOX, "Offset loop"},
    {52, "LinesCroppingGroupBegin", 118, PF_Param_GROUP_START, "Lines Cut"},
    {53, "LinesBottomCroppingEnabled", 110, PF_Param_CHECKBOX, "Lines Bottom Cut Enabled"},
    {54, "LinesBottomCroppingThreshold", 111, PF_Param_FLOAT_SLIDER, "Lines Bottom Cut Threshold", -1,
     -1000000, 1000000, -100, 100, true},
    {55, "LinesBottomCroppingFeather", 112, PF_Param_FLOAT_SLIDER, "Lines Bottom Cut Feather", 0, 0, 1000000,
     0, 100, true},
    {56, "LinesTopCroppingEnabled", 113, PF_Param_CHECKBOX, "Lines Top Cut Enabled"},
    {57, "LinesTopCroppingThreshold", 114, PF_Param_FLOAT_SLIDER, "Lines Top Cut Threshold", 99, -1000000,
     1000000, 0, 100, true},
    {58, "LinesTopCroppingFeather", 115, PF_Param_FLOAT_SLIDER, "Lines Top Cut Feather", 0, 0, 1000000, 0,
     100, true},
    {59, "LinesCroppingGroupEnd", 119, PF_Param_GROUP_END},
    {60, "LinesGradient", 58, PF_Param_ARBITRARY_DATA, "Lines Gradient"},
    {61, "LinesGradientOffset", 59, PF_Param_FLOAT_SLIDER, "Lines Gradient Offset", 0, -100000, 100000, -100,
     100, true},
    {62, "LinesGradientScale", 101, PF_Param_FLOAT_SLIDER, "Lines Gradient Scale", 100, -1000000, 1000000,
     -100, 100, true},
    {63, "LinesGradientScaleBase", 100, PF_Param_FLOAT_SLIDER, "Lines Gradient Scale Base", 0, -1000000,
     1000000, -100, 100, true},
    {64, "LinesGradientLoop", 60, PF_Param_CHECKBOX, "Lines Gradient Loop"},
    {65, "LinesAlpha", 94, PF_Param_FLOAT_SLIDER, "Lines Alpha", 100, 0, 100, 0, 100, true},
    {66, "LinesAlphaNoiseGroupBegin", 82, PF_Param_GROUP_START, "Lines Alpha Noise"},
    {67, "LinesAlphaNoiseType", 67, PF_Param_POPUP, "Alpha Noise Type", 1, 1, 5},
    {68, "LinesAlphaThreshold", 68, PF_Param_FLOAT_SLIDER, "Lines Alpha Threshold", 0, 0, 100, 0, 100},
    {69, "LinesAlphaNoiseOffsetX", 83, PF_Param_FLOAT_SLIDER, "Alpha Noise Offset X", 0, -1000000, 1000000,
     -100, 100},
    {70, "LinesAlphaNoiseOffsetY", 84, PF_Param_FLOAT_SLIDER, "Alpha Noise Offset Y", 0, -1000000, 1000000,
     -100, 100},
    {71, "LinesAlphaNoiseEvolution", 85, PF_Param_ANGLE, "Alpha Noise Evolution"},
    {72, "LinesAlphaNoiseLoopEvolution", 86, PF_Param_CHECKBOX, "Alpha Noise Loop Evolution"},
    {73, "LinesAlphaNoiseComplexity", 87, PF_Param_SLIDER, "Alpha Noise Complexity", 4, 1, 100, 1, 100},
    {74, "LinesAlphaNoiseSpeed", 88, PF_Param_FLOAT_SLIDER, "Alpha Noise Speed", 10, -1000000, 1000000, -100,
     100},
    {75, "LinesAlphaNoiseScale", 89, PF_Param_FLOAT_SLIDER, "Alpha Noise Scale", 100, -1000000, 1000000, -100,
     100, true},
    {76, "LinesAlphaNoiseScaleX", 90, PF_Param_FLOAT_SLIDER, "Alpha Noise Scale X", 100, -1000000, 1000000,
     -100, 100, true},
    {77, "LinesAlphaNoiseScaleY", 91, PF_Param_FLOAT_SLIDER, "Alpha Noise Scale Y", 100, -1000000, 1000000,
     -100, 100, true},
    {78, "AlphaRandomize", 93, PF_Param_FLOAT_SLIDER, "Alpha Randomize", 0, -100000, 100000, -100, 100, true},
    {79, "LinesAlphaNoiseGroupEnd", 92, PF_Param_GROUP_END},
    {80, "RandomizeGroupBegin", 51, PF_Param_GROUP_START, "Randomize"},
    {81, "LinesRandomize", 47, PF_Param_FLOAT_SLIDER, "Lines Randomize", 0, -100000, 100000, -100, 100, true},
    {82, "WidthRandomize", 52, PF_Param_FLOAT_SLIDER, "Width Randomize", 0, -100000, 100000, -100, 100, true},
    {83, "GradientRandomize", 53, PF_Param_FLOAT_SLIDER, "Gradient Randomize", 0, -100000, 100000, -100, 100,
     true},
    {84, "Seed", 54, PF_Param_SLIDER, "Random Seed", 0, 0, 100000, 0, 100},
    {85, "RandomizeGroupEnd", 55, PF_Param_GROUP_END},
    {86, "LinesGroupEnd", 19, PF_Param_GROUP_END},
};

}  // namespace flumo::test
