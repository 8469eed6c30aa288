// Looks near a look: random changes that repeat from a seed, and rows of chosen values.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "scene/control.h"
#include "scene/track.h"

namespace flumo::scene {

/// A look that differs from another one.
struct Variation {
    Tracks tracks;
    std::vector<std::string> changes;  ///< what differs, one text a control, such as "Scale 63.2"
};

/// The controls that a list such as "OffsetX,Evolution,Gradient" names; "Offset" stands for OffsetX and
/// OffsetY. Throws Failure (usage) for an unknown name and for a layer.
std::vector<const Control*> controls_to_vary(std::string_view list, const ControlCatalog& catalog);

struct VariationSettings {
    std::span<const Control* const> controls;
    double strength = 0.3;  ///< 0 changes nothing, 1 as much as makes sense
    uint64_t seed = 1;
};

/// Variation number `index` of the tracks. What a control becomes follows from seed, index and control alone.
/// Numbers move within a range that suits the control: offsets by up to ten units of noise, angles by two
/// turns, scales by two octaves, others by half of their slider, each times the strength; keyframes move
/// together. Stops of gradients move and change colour. `default_of` gives the value of a control without a
/// track.
Variation vary(const Tracks& tracks, const VariationSettings& settings, uint32_t index,
               const std::function<ControlValue(const Control&)>& default_of);

/// The values of one control, one after the other.
struct Sweep {
    const Control* control = nullptr;
    std::vector<double> values;
    std::vector<std::string> words;  ///< the values as they were written
};

/// Reads "Scale=50,100,200". Throws Failure (usage), also for gradients and layers.
Sweep parse_sweep(std::string_view text, const ControlCatalog& catalog);

/// Every combination of the sweeps' values, the last sweep's changing fastest.
std::vector<Variation> swept(const Tracks& tracks, std::span<const Sweep> sweeps);

}  // namespace flumo::scene
