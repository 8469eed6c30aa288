#include "frei0r/number.h"

#include <algorithm>
#include <cmath>

namespace flumo::frei0r {
namespace {

using scene::ControlKind;

constexpr double kWholeTurn = 360;
/// Part of the whole scale.
constexpr double kSwing = 0.15;
/// Values are rounded to this part of a unit, so that what reads 55.5 in a panel is the 55.5 of a scene file.
constexpr double kPartsOfUnit = 1e6;

double tidy(double value, double default_value) {
    const double rounded = std::round(value * kPartsOfUnit) / kPartsOfUnit;
    return std::abs(rounded - default_value) < 1 / kPartsOfUnit ? default_value : rounded;
}

NumberScale slider_scale(const scene::Control& control) {
    const double first = std::min(control.slider.min, control.default_value);
    const double last = std::max(control.slider.max, control.default_value);
    const bool whole = control.kind != ControlKind::kFloatSlider;
    return {first, last, scene::accepted_range(control), whole, control.default_value};
}

}  // namespace

std::optional<double> NumberScale::value_at(double fraction) const {
    if (!std::isfinite(fraction)) return std::nullopt;
    const double value = first + fraction * (last - first);
    const double swing = kSwing * (last - first);
    if (value < valid.min - swing || value > valid.max + swing) return std::nullopt;
    const double inside = std::clamp(value, valid.min, valid.max);
    return whole ? std::round(inside) : tidy(inside, default_value);
}

NumberScale number_scale(const scene::Control& control) {
    switch (control.kind) {
        case ControlKind::kAngle:
            return {0, kWholeTurn, scene::accepted_range(control), false, control.default_value};
        case ControlKind::kPopup:
            return choice_scale(scene::offered_choices(control).size(),
                                static_cast<std::size_t>(control.default_value));
        default:
            return slider_scale(control);
    }
}

NumberScale choice_scale(std::size_t count, std::size_t default_choice) {
    const auto last = static_cast<double>(count);
    return {1, last, {1, last}, true, static_cast<double>(default_choice)};
}

}  // namespace flumo::frei0r
