#include "effect/render/frame_look.h"

#include <cmath>

namespace flumo {

namespace {

using P = ParamSnapshot;

// Numbers as the uniforms have them: a tiny percentage may be 0 there.
float Percent(double value) {
    return static_cast<float>(value * 0.01);
}

/// The switches that the text compares with 1 and nothing else.
template <auto Field>
int IsOne(const P& p) {
    return static_cast<int>(p.*Field) == 1 ? 1 : 0;
}

constexpr int kStaysUniform = -1;

// A loop that is on stays a uniform: known as a constant, its factors would be merged with those of the
// noise, and the last bits would be others.
template <auto Field>
int LoopIsOff(const P& p) {
    return IsOne<Field>(p) != 0 ? kStaysUniform : 0;
}

/// A choice from 1 to Last; all others are alike.
template <auto Field, int Last>
int Choice(const P& p) {
    const A_long value = p.*Field;
    return value >= 1 && value <= Last ? static_cast<int>(value) : 0;
}

int LinesLoop(const P& p) {
    return p.linesLoop == 0 ? 0 : 1;
}

template <auto Field>
int IsNotZero(const P& p) {
    return Percent(p.*Field) != 0.0F ? 1 : 0;
}

// A width that is infinite, or that may become so, jitters by what is not a number, at any amplitude.
int LineWidthsJitter(const P& p) {
    return IsNotZero<&P::widthRandomize>(p) != 0 || !(std::abs(p.lineWidth) < 1e30) ? 1 : 0;
}

bool IsModerate(double value) {
    return std::abs(value) < 1e6;
}

bool AlphaNoiseIsFinite(const P& p) {
    return IsModerate(p.linesAlphaNoiseEvolution) && IsModerate(p.linesAlphaNoiseSpeed) &&
           IsModerate(p.linesAlphaNoiseScale * p.linesAlphaNoiseScaleX * 0.0001) &&
           IsModerate(p.linesAlphaNoiseScale * p.linesAlphaNoiseScaleY * 0.0001) &&
           IsModerate(p.linesAlphaNoiseOffsetX) && IsModerate(p.linesAlphaNoiseOffsetY) &&
           IsModerate(p.alphaRandomize);
}

// Fluid and Smoke are never negative, so no threshold up to 0 masks anything.
int LinesMasked(const P& p) {
    const bool neverNegative = p.linesAlphaNoiseType == 1 || p.linesAlphaNoiseType == 3;
    return neverNegative && p.linesAlphaThreshold <= 0 && AlphaNoiseIsFinite(p) ? 0 : 1;
}

struct SwitchRow {
    const char* type;
    const char* name;
    int (*value)(const P& p);
};

constexpr SwitchRow kHeightSwitches[] = {
    {"int", "noiseType", Choice<&P::noiseType, 4>},
    {"int", "loopEvolution", LoopIsOff<&P::loopEvolution>},
    {"int", "noiseVisible", IsOne<&P::noiseVisible>},
    {"float", "linesVisible", IsOne<&P::linesVisible>},
};

constexpr SwitchRow kColorSwitches[] = {
    {"int", "noiseBottomCroppingEnabled", IsOne<&P::noiseBottomCroppingEnabled>},
    {"int", "noiseTopCroppingEnabled", IsOne<&P::noiseTopCroppingEnabled>},
    {"int", "colorizeMode", Choice<&P::colorizeMode, 4>},
    {"int", "noiseGradientLoop", IsOne<&P::noiseGradientLoop>},
    {"bool", "positionsJitter", IsNotZero<&P::gradientRandomizeAmplitude>},
};

constexpr SwitchRow kLineSwitches[] = {
    {"int", "linesBottomCroppingEnabled", IsOne<&P::linesBottomCroppingEnabled>},
    {"int", "linesTopCroppingEnabled", IsOne<&P::linesTopCroppingEnabled>},
    {"int", "linesLoop", LinesLoop},
    {"int", "linesBlendMode", Choice<&P::linesBlendMode, 3>},
    {"int", "linesGradientLoop", IsOne<&P::linesGradientLoop>},
    {"bool", "linesJitter", IsNotZero<&P::linesRandomize>},
    {"bool", "lineWidthsJitter", LineWidthsJitter},
    {"bool", "lineColorsJitter", IsNotZero<&P::gradientRandomize>},
    {"bool", "linesMasked", LinesMasked},
};

constexpr SwitchRow kMaskSwitches[] = {
    {"bool", "lineMasksJitter", IsNotZero<&P::alphaRandomize>},
    {"int", "linesAlphaNoiseType", Choice<&P::linesAlphaNoiseType, 4>},
    {"int", "linesAlphaNoiseLoopEvolution", LoopIsOff<&P::linesAlphaNoiseLoopEvolution>},
};

template <size_t Count>
void Add(Look& look, const SwitchRow (&rows)[Count], const P& snapshot) {
    for (const SwitchRow& row : rows) {
        const int value = row.value(snapshot);
        if (value != kStaysUniform) look.push_back({row.type, row.name, value});
    }
}

}  // namespace

Look LookOfFrame(ParamSnapshot& snapshot) {
    const bool layer1 = SnapshotLayer1(snapshot) != nullptr;
    const bool layer2 = SnapshotLayer2(snapshot) != nullptr;
    const bool layer3 = SnapshotLayer3(snapshot) != nullptr;
    Look look = {{"int", "useLayer1", layer1}, {"int", "useLayer2", layer2}, {"int", "useLayer3", layer3}};
    Add(look, kHeightSwitches, snapshot);
    if (IsOne<&P::noiseVisible>(snapshot) != 0) Add(look, kColorSwitches, snapshot);
    if (IsOne<&P::linesVisible>(snapshot) != 0) {
        Add(look, kLineSwitches, snapshot);
        if (LinesMasked(snapshot) != 0) Add(look, kMaskSwitches, snapshot);
    }
    return look;
}

}  // namespace flumo
