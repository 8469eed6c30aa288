// All control values at one frame's time: checked out once, read by the drawing, checked in once.
#pragma once

#include <vector>

#include "effect_api/effect.h"
#include "effect_api/params.h"

namespace flumo {

/// One frame's values, on the stack of one render call. Numbers are the host's with only the type
/// changed: percents and pixels are not divided, angles (degrees) not wrapped, popups count from 1.
/// Widths differ between like controls, and the uniforms rely on them. Gradient handles and layers
/// are the host's and valid until ReleaseParamSnapshot.
struct ParamSnapshot {
    A_long noiseType = 0;
    double noiseContrast = 0;
    double noiseBrightness = 0;
    double evolution = 0;
    A_u_char loopEvolution = 0;
    A_long complexity = 0;
    double speed = 0;
    double scale = 0;
    double scaleX = 0;
    double scaleY = 0;
    A_long linesCount = 0;
    double lineWidth = 0;
    PF_ArbitraryH noiseGradient = nullptr;
    double linesVisible = 0;
    double noiseVisible = 0;
    A_long colorizeMode = 0;
    double reflectionScale = 0;
    A_u_char noiseBottomCroppingEnabled = 0;
    double noiseBottomCroppingThreshold = 0;
    double noiseBottomCroppingFeather = 0;
    A_u_char noiseTopCroppingEnabled = 0;
    double noiseTopCroppingThreshold = 0;
    double noiseTopCroppingFeather = 0;
    double alphaThreshold = 0;
    double noiseGradientOffset = 0;
    double noiseGradientScale = 0;
    double noiseGradientScaleBase = 0;
    A_long noiseGradientLoop = 0;
    double gradientRandomizeAmplitude = 0;
    double gradientRandomizeFrequency = 0;
    double layer1Mult = 0;
    double layer2Mult = 0;
    double layer1LightnessInvert = 0;
    double layer2LightnessInvert = 0;
    double layer1AlphaInvert = 0;
    double layer2AlphaInvert = 0;
    A_long linesBlendMode = 0;
    double offsetX = 0;
    double offsetY = 0;
    A_long linesLoop = 0;
    double linesOffset = 0;
    A_u_char linesBottomCroppingEnabled = 0;
    double linesBottomCroppingThreshold = 0;
    double linesBottomCroppingFeather = 0;
    A_u_char linesTopCroppingEnabled = 0;
    double linesTopCroppingThreshold = 0;
    double linesTopCroppingFeather = 0;
    PF_ArbitraryH linesGradient = nullptr;
    double linesGradientOffset = 0;
    double linesGradientScale = 0;
    double linesGradientScaleBase = 0;
    A_long linesGradientLoop = 0;
    double linesAlpha = 0;
    A_long linesAlphaNoiseType = 0;
    double linesAlphaThreshold = 0;
    double linesAlphaNoiseOffsetX = 0;
    double linesAlphaNoiseOffsetY = 0;
    double linesAlphaNoiseEvolution = 0;
    A_u_char linesAlphaNoiseLoopEvolution = 0;
    A_long linesAlphaNoiseComplexity = 0;
    double linesAlphaNoiseSpeed = 0;
    double linesAlphaNoiseScale = 0;
    double linesAlphaNoiseScaleX = 0;
    double linesAlphaNoiseScaleY = 0;
    double linesRandomize = 0;
    double widthRandomize = 0;
    double gradientRandomize = 0;
    double alphaRandomize = 0;
    A_long seed = 0;
    /// Not owned; set before the snapshot is taken.
    PF_InData* in_data = nullptr;
    /// One slot for each control that was read, in reading order.
    std::vector<PF_ParamDef> checkedOut{};
    /// Indices of the layers in checkedOut, which may move its slots while it grows; -1 for a layer that
    /// could not be checked out.
    A_long layer1Slot = 0;
    A_long layer2Slot = 0;
    A_long layer3Slot = 0;
};

/// Checks out all controls but group starts and ends at the time of snapshot.in_data. After the first
/// failure nothing more is asked of the host, but every control still gets its slot; the result is that
/// first error.
PF_Err TakeParamSnapshot(ParamSnapshot& snapshot);

/// Checks all slots in, up to the host's first error, which is returned, and empties checkedOut. Slots that
/// were never checked out are checked in too.
PF_Err ReleaseParamSnapshot(ParamSnapshot& snapshot, PF_InData* in_data);

/// The layer that the control holds, or null when none is chosen. The pixels are the host's.
PF_LayerDef* SnapshotLayer1(ParamSnapshot& snapshot);
PF_LayerDef* SnapshotLayer2(ParamSnapshot& snapshot);
PF_LayerDef* SnapshotLayer3(ParamSnapshot& snapshot);

}  // namespace flumo
