#include "effect/render/frame_look.h"

#include <cmath>
#include <span>

#include "effect/params/noise_generator.h"

namespace flumo {

namespace {

using P = ParamSnapshot;

constexpr int kStaysAsDeclared = -1;

// A part that is off becomes a constant and is left out of the program. One that is on stays as the text
// declares it: as a constant it would save nothing, and the compiler would merge its factors with those
// around it, which changes last bits.
int OffOrAsDeclared(bool on) {
    return on ? kStaysAsDeclared : 0;
}

/// The switches that are on at exactly 1.
template <auto Field>
bool IsOne(const P& p) {
    return static_cast<int>(p.*Field) == 1;
}

template <auto Field>
int Switch(const P& p) {
    return OffOrAsDeclared(IsOne<Field>(p));
}

/// A choice from 1 to Last; all other values give 0, as they draw the same.
template <auto Field, int Last>
int Choice(const P& p) {
    const A_long value = p.*Field;
    return value >= 1 && value <= Last ? static_cast<int>(value) : 0;
}

// Tests the value of the uniform: a tiny percentage may be 0 in single precision.
bool IsZeroPercent(double value) {
    return static_cast<float>(value * 0.01) == 0.0F;
}

template <auto Field>
int Amplitude(const P& p) {
    return OffOrAsDeclared(!IsZeroPercent(p.*Field));
}

// Infinity times an amplitude of 0 is NaN, so the part stays for an infinite width.
int LineWidthsJitter(const P& p) {
    const bool isFinite = std::abs(p.lineWidth) < 1e30;
    return OffOrAsDeclared(!isFinite || !IsZeroPercent(p.widthRandomize));
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

// Fluid and Smoke are never negative, so a threshold up to 0 masks nothing.
bool LinesAreMasked(const P& p) {
    const bool neverNegative = p.linesAlphaNoiseType == 1 || p.linesAlphaNoiseType == 3;
    return !(neverNegative && p.linesAlphaThreshold <= 0 && AlphaNoiseIsFinite(p));
}

int LinesMasked(const P& p) {
    return OffOrAsDeclared(LinesAreMasked(p));
}

struct SwitchRow {
    const char* type;
    const char* name;
    int (*value)(const P& p);
};

constexpr SwitchRow kFrameSwitches[] = {
    {"int", "noiseType", Choice<&P::noiseType, kNoiseGeneratorCount>},
    {"int", "loopEvolution", Switch<&P::loopEvolution>},
    {"int", "noiseVisible", Switch<&P::noiseVisible>},
    {"float", "linesVisible", Switch<&P::linesVisible>},
};

constexpr SwitchRow kColourSwitches[] = {
    {"int", "noiseBottomCroppingEnabled", Switch<&P::noiseBottomCroppingEnabled>},
    {"int", "noiseTopCroppingEnabled", Switch<&P::noiseTopCroppingEnabled>},
    {"int", "colorizeMode", Choice<&P::colorizeMode, 4>},
    {"bool", "positionsJitter", Amplitude<&P::gradientRandomizeAmplitude>},
};

constexpr SwitchRow kLineSwitches[] = {
    {"int", "linesBottomCroppingEnabled", Switch<&P::linesBottomCroppingEnabled>},
    {"int", "linesTopCroppingEnabled", Switch<&P::linesTopCroppingEnabled>},
    {"int", "linesBlendMode", Choice<&P::linesBlendMode, 3>},
    {"bool", "linesJitter", Amplitude<&P::linesRandomize>},
    {"bool", "lineWidthsJitter", LineWidthsJitter},
    {"bool", "lineColorsJitter", Amplitude<&P::gradientRandomize>},
    {"bool", "linesMasked", LinesMasked},
};

constexpr SwitchRow kMaskSwitches[] = {
    {"bool", "lineMasksJitter", Amplitude<&P::alphaRandomize>},
    {"int", "linesAlphaNoiseType", Choice<&P::linesAlphaNoiseType, kNoiseGeneratorCount>},
    {"int", "linesAlphaNoiseLoopEvolution", Switch<&P::linesAlphaNoiseLoopEvolution>},
};

void Add(Look& look, const char* type, const char* name, int value) {
    if (value != kStaysAsDeclared) look.push_back({type, name, value});
}

void Add(Look& look, std::span<const SwitchRow> rows, const P& snapshot) {
    for (const SwitchRow& row : rows)
        Add(look, row.type, row.name, row.value(snapshot));
}

}  // namespace

Look LookOfFrame(ParamSnapshot& snapshot) {
    Look look;
    Add(look, "int", "useLayer1", OffOrAsDeclared(SnapshotLayer1(snapshot) != nullptr));
    Add(look, "int", "useLayer2", OffOrAsDeclared(SnapshotLayer2(snapshot) != nullptr));
    Add(look, "int", "useLayer3", OffOrAsDeclared(SnapshotLayer3(snapshot) != nullptr));
    Add(look, kFrameSwitches, snapshot);
    if (IsOne<&P::noiseVisible>(snapshot)) Add(look, kColourSwitches, snapshot);
    if (IsOne<&P::linesVisible>(snapshot)) {
        Add(look, kLineSwitches, snapshot);
        if (LinesAreMasked(snapshot)) Add(look, kMaskSwitches, snapshot);
    }
    return look;
}

}  // namespace flumo
