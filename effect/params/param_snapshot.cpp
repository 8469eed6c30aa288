#include "effect/params/param_snapshot.h"

#include <cstddef>
#include <iterator>

#include "effect/params/param_ids.h"

namespace flumo {
namespace {

/// Reads one kind of control into one width of field.
using Store = void (*)(ParamSnapshot& snapshot, const PF_ParamDef& def);

template <double ParamSnapshot::*kField>
void Real(ParamSnapshot& snapshot, const PF_ParamDef& def) {
    snapshot.*kField = def.u.fs_d.value;
}

template <A_long ParamSnapshot::*kField>
void Whole(ParamSnapshot& snapshot, const PF_ParamDef& def) {
    snapshot.*kField = def.u.sd.value;
}

template <A_long ParamSnapshot::*kField>
void Choice(ParamSnapshot& snapshot, const PF_ParamDef& def) {
    snapshot.*kField = def.u.pd.value;
}

/// From 16.16 fixed point; full turns stay.
template <double ParamSnapshot::*kField>
void Degrees(ParamSnapshot& snapshot, const PF_ParamDef& def) {
    snapshot.*kField = def.u.ad.value * (1.0 / 65536.0);
}

template <A_u_char ParamSnapshot::*kField>
void SwitchByte(ParamSnapshot& snapshot, const PF_ParamDef& def) {
    snapshot.*kField = static_cast<A_u_char>(def.u.bd.value);
}

template <A_long ParamSnapshot::*kField>
void Switch32(ParamSnapshot& snapshot, const PF_ParamDef& def) {
    snapshot.*kField = def.u.bd.value;
}

template <double ParamSnapshot::*kField>
void SwitchReal(ParamSnapshot& snapshot, const PF_ParamDef& def) {
    snapshot.*kField = def.u.bd.value != 0 ? 1.0 : 0.0;
}

template <PF_ArbitraryH ParamSnapshot::*kField>
void Handle(ParamSnapshot& snapshot, const PF_ParamDef& def) {
    snapshot.*kField = def.u.arb_d.value;
}

struct Read {
    Section section;
    Store store;
};

/// In reading order, which is not the order of the controls.
constexpr Read kReads[] = {
    {Section::NoiseVisible, SwitchReal<&ParamSnapshot::noiseVisible>},
    {Section::NoiseType, Choice<&ParamSnapshot::noiseType>},
    {Section::NoiseContrast, Real<&ParamSnapshot::noiseContrast>},
    {Section::NoiseBrightness, Real<&ParamSnapshot::noiseBrightness>},
    {Section::OffsetX, Real<&ParamSnapshot::offsetX>},
    {Section::OffsetY, Real<&ParamSnapshot::offsetY>},
    {Section::Evolution, Degrees<&ParamSnapshot::evolution>},
    {Section::LoopEvolution, SwitchByte<&ParamSnapshot::loopEvolution>},
    {Section::Complexity, Whole<&ParamSnapshot::complexity>},
    {Section::Speed, Real<&ParamSnapshot::speed>},
    {Section::Scale, Real<&ParamSnapshot::scale>},
    {Section::ScaleX, Real<&ParamSnapshot::scaleX>},
    {Section::ScaleY, Real<&ParamSnapshot::scaleY>},
    {Section::LinesVisible, SwitchReal<&ParamSnapshot::linesVisible>},
    {Section::ColorizeMode, Choice<&ParamSnapshot::colorizeMode>},
    {Section::NoiseBottomCroppingEnabled, SwitchByte<&ParamSnapshot::noiseBottomCroppingEnabled>},
    {Section::NoiseBottomCroppingThreshold, Real<&ParamSnapshot::noiseBottomCroppingThreshold>},
    {Section::NoiseBottomCroppingFeather, Real<&ParamSnapshot::noiseBottomCroppingFeather>},
    {Section::NoiseTopCroppingEnabled, SwitchByte<&ParamSnapshot::noiseTopCroppingEnabled>},
    {Section::NoiseTopCroppingThreshold, Real<&ParamSnapshot::noiseTopCroppingThreshold>},
    {Section::NoiseTopCroppingFeather, Real<&ParamSnapshot::noiseTopCroppingFeather>},
    {Section::AlphaTreshold, Real<&ParamSnapshot::alphaThreshold>},
    {Section::Layer1Mult, Real<&ParamSnapshot::layer1Mult>},
    {Section::Layer2Mult, Real<&ParamSnapshot::layer2Mult>},
    {Section::Layer1LightnessInvert, SwitchReal<&ParamSnapshot::layer1LightnessInvert>},
    {Section::Layer2LightnessInvert, SwitchReal<&ParamSnapshot::layer2LightnessInvert>},
    {Section::Layer1AlphaInvert, SwitchReal<&ParamSnapshot::layer1AlphaInvert>},
    {Section::Layer2AlphaInvert, SwitchReal<&ParamSnapshot::layer2AlphaInvert>},
    {Section::NoiseGradientOffset, Real<&ParamSnapshot::noiseGradientOffset>},
    {Section::NoiseGradientScale, Real<&ParamSnapshot::noiseGradientScale>},
    {Section::NoiseGradientScaleBase, Real<&ParamSnapshot::noiseGradientScaleBase>},
    {Section::NoiseGradientLoop, Switch32<&ParamSnapshot::noiseGradientLoop>},
    {Section::GradientRandomizeAmplitude, Real<&ParamSnapshot::gradientRandomizeAmplitude>},
    {Section::GradientRandomizeFrequency, Real<&ParamSnapshot::gradientRandomizeFrequency>},
    {Section::ReflectionScale, Real<&ParamSnapshot::reflectionScale>},
    {Section::LinesBlendMode, Choice<&ParamSnapshot::linesBlendMode>},
    {Section::LinesCount, Whole<&ParamSnapshot::linesCount>},
    {Section::LineWidth, Real<&ParamSnapshot::lineWidth>},
    {Section::LinesLoop, Switch32<&ParamSnapshot::linesLoop>},
    {Section::LinesOffset, Real<&ParamSnapshot::linesOffset>},
    {Section::LinesBottomCroppingEnabled, SwitchByte<&ParamSnapshot::linesBottomCroppingEnabled>},
    {Section::LinesBottomCroppingThreshold, Real<&ParamSnapshot::linesBottomCroppingThreshold>},
    {Section::LinesBottomCroppingFeather, Real<&ParamSnapshot::linesBottomCroppingFeather>},
    {Section::LinesTopCroppingEnabled, SwitchByte<&ParamSnapshot::linesTopCroppingEnabled>},
    {Section::LinesTopCroppingThreshold, Real<&ParamSnapshot::linesTopCroppingThreshold>},
    {Section::LinesTopCroppingFeather, Real<&ParamSnapshot::linesTopCroppingFeather>},
    {Section::LinesGradientOffset, Real<&ParamSnapshot::linesGradientOffset>},
    {Section::LinesGradientScale, Real<&ParamSnapshot::linesGradientScale>},
    {Section::LinesGradientScaleBase, Real<&ParamSnapshot::linesGradientScaleBase>},
    {Section::LinesGradientLoop, Switch32<&ParamSnapshot::linesGradientLoop>},
    {Section::LinesAlpha, Real<&ParamSnapshot::linesAlpha>},
    {Section::LinesAlphaNoiseType, Choice<&ParamSnapshot::linesAlphaNoiseType>},
    {Section::LinesAlphaThreshold, Real<&ParamSnapshot::linesAlphaThreshold>},
    {Section::LinesAlphaNoiseOffsetX, Real<&ParamSnapshot::linesAlphaNoiseOffsetX>},
    {Section::LinesAlphaNoiseOffsetY, Real<&ParamSnapshot::linesAlphaNoiseOffsetY>},
    {Section::LinesAlphaNoiseEvolution, Degrees<&ParamSnapshot::linesAlphaNoiseEvolution>},
    {Section::LinesAlphaNoiseLoopEvolution, SwitchByte<&ParamSnapshot::linesAlphaNoiseLoopEvolution>},
    {Section::LinesAlphaNoiseComplexity, Whole<&ParamSnapshot::linesAlphaNoiseComplexity>},
    {Section::LinesAlphaNoiseSpeed, Real<&ParamSnapshot::linesAlphaNoiseSpeed>},
    {Section::LinesAlphaNoiseScale, Real<&ParamSnapshot::linesAlphaNoiseScale>},
    {Section::LinesAlphaNoiseScaleX, Real<&ParamSnapshot::linesAlphaNoiseScaleX>},
    {Section::LinesAlphaNoiseScaleY, Real<&ParamSnapshot::linesAlphaNoiseScaleY>},
    {Section::LinesRandomize, Real<&ParamSnapshot::linesRandomize>},
    {Section::WidthRandomize, Real<&ParamSnapshot::widthRandomize>},
    {Section::GradientRandomize, Real<&ParamSnapshot::gradientRandomize>},
    {Section::AlphaRandomize, Real<&ParamSnapshot::alphaRandomize>},
    {Section::Seed, Whole<&ParamSnapshot::seed>},
    {Section::Gradient, Handle<&ParamSnapshot::noiseGradient>},
    {Section::LinesGradient, Handle<&ParamSnapshot::linesGradient>},
};

struct LayerRead {
    Section section;
    A_long ParamSnapshot::*slot;
};

/// Read last.
constexpr LayerRead kLayerReads[] = {
    {Section::Layer1, &ParamSnapshot::layer1Slot},
    {Section::Layer2, &ParamSnapshot::layer2Slot},
    {Section::Layer3, &ParamSnapshot::layer3Slot},
};

constexpr size_t kSlotCount = std::size(kReads) + std::size(kLayerReads);

consteval size_t CountValues() {
    size_t values = 0;
    for (const Control& control : kControls) {
        values += control.kind != ControlKind::GroupStart && control.kind != ControlKind::GroupEnd;
    }
    return values;
}
static_assert(kSlotCount == CountValues(), "every control that holds a value is read");

/// Appends a slot and checks the control out into it, unless `err` holds an earlier failure.
/// Whether the slot now holds the control; otherwise `err` holds the failure.
bool CheckOut(ParamSnapshot& snapshot, Section section, PF_Err& err) {
    PF_ParamDef& slot = snapshot.checkedOut.emplace_back();
    if (err != PF_Err_NONE) return false;
    const PF_InData& in = *snapshot.in_data;
    err = in.inter.checkout_param(in.effect_ref, ParamIndexOf(section), in.current_time, in.time_step,
                                  in.time_scale, &slot);
    return err == PF_Err_NONE;
}

PF_LayerDef* ChosenLayer(ParamSnapshot& snapshot, A_long slot) {
    if (slot < 0) return nullptr;
    PF_LayerDef& layer = snapshot.checkedOut[static_cast<size_t>(slot)].u.ld;
    return layer.data ? &layer : nullptr;
}

}  // namespace

PF_Err TakeParamSnapshot(ParamSnapshot& snapshot) {
    PF_Err err = PF_Err_NONE;
    snapshot.checkedOut.reserve(kSlotCount);
    for (const Read& read : kReads) {
        if (CheckOut(snapshot, read.section, err)) read.store(snapshot, snapshot.checkedOut.back());
    }
    for (const LayerRead& read : kLayerReads) {
        snapshot.*read.slot = -1;
        if (CheckOut(snapshot, read.section, err)) {
            snapshot.*read.slot = static_cast<A_long>(snapshot.checkedOut.size()) - 1;
        }
    }
    return err;
}

PF_Err ReleaseParamSnapshot(ParamSnapshot& snapshot, PF_InData* in_data) {
    PF_Err err = PF_Err_NONE;
    for (PF_ParamDef& slot : snapshot.checkedOut) {
        if (err == PF_Err_NONE) err = in_data->inter.checkin_param(in_data->effect_ref, &slot);
    }
    snapshot.checkedOut.clear();
    return err;
}

PF_LayerDef* SnapshotLayer1(ParamSnapshot& snapshot) {
    return ChosenLayer(snapshot, snapshot.layer1Slot);
}

PF_LayerDef* SnapshotLayer2(ParamSnapshot& snapshot) {
    return ChosenLayer(snapshot, snapshot.layer2Slot);
}

PF_LayerDef* SnapshotLayer3(ParamSnapshot& snapshot) {
    return ChosenLayer(snapshot, snapshot.layer3Slot);
}

}  // namespace flumo
