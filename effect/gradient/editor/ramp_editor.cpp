#include "effect/gradient/editor/ramp_editor.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>

#include "effect/gradient/value/sample_gradient.h"

namespace flumo {
namespace {

constexpr float kHitPixels = 10.0F;
constexpr float kNudge = 0.001F;

struct Hit {
    GradientStopMap::iterator stop;
    A_long ordinal;
};

// The ramp position of a pixel counted from the ramp's left end; not finite on a ramp of width 0.
float RampPosition(const RampGeometry& ramp, int64_t pixels) {
    return static_cast<float>(pixels) / static_cast<float>(ramp.w);
}

Hit FindHit(GradientStopMap& stops, const RampGeometry& ramp, float t) {
    const float tolerance = kHitPixels / static_cast<float>(ramp.w);
    const auto hit = std::find_if(stops.begin(), stops.end(),
                                  [&](const auto& entry) { return std::abs(entry.first - t) < tolerance; });
    return {hit, static_cast<A_long>(std::distance(stops.begin(), hit))};
}

int32_t NextKind(int32_t kind) {
    switch (kind) {
        case kStopLinear:
            return kStopSin;
        case kStopSin:
            return kStopEdge;
        case kStopEdge:
            return kStopLinear;
        default:
            return kind;
    }
}

ClickOutcome CycleKind(GradientStop& stop) {
    stop.kind = NextKind(stop.kind);
    return {.action = ClickAction::kHandled, .changed = true};
}

ClickOutcome StartDrag(const RampGeometry& ramp, A_long x, const Hit& hit) {
    // The hit was within ten pixels of x, so its pixel fits.
    const auto pixel = static_cast<A_long>(hit.stop->first * static_cast<float>(ramp.w));
    return {.action = ClickAction::kStartDrag,
            .drag = {.offset = pixel + ramp.x0 - x, .ordinal = hit.ordinal, .stop = hit.stop->second}};
}

// The new stop repeats the colour that the ramp already shows there.
ClickOutcome AddStop(GradientStopMap& stops, float t) {
    A_long kind = kStopSin;
    const GradientSample colour = SampleGradient(stops, t, &kind);
    stops[t] = {kind, colour.r, colour.g, colour.b, colour.a};
    return {.action = ClickAction::kHandled, .changed = true};
}

// The first free position from t on, going towards the middle of the ramp.
float FreePosition(const GradientStopMap& stops, float t) {
    const float step = t < 0.5F ? 1.0F : -1.0F;
    float key = t;
    while (stops.contains(key))
        key += step * kNudge;
    return key;
}

}  // namespace

ClickOutcome ClickRamp(GradientStopMap& stops, const RampGeometry& ramp, A_long x, A_long clicks,
                       bool cycleKind) {
    // A control without width for a ramp has no positions to hit or to add at.
    if (x < ramp.left || x > ramp.right || ramp.w <= 0) return {};
    const float t = RampPosition(ramp, int64_t{x} - ramp.x0);
    const Hit hit = FindHit(stops, ramp, t);
    const bool isHit = hit.stop != stops.end();

    if (cycleKind) return isHit ? CycleKind(hit.stop->second) : ClickOutcome{};
    if (clicks == 1) return isHit ? StartDrag(ramp, x, hit) : ClickOutcome{};
    if (clicks != 2) return {};
    if (!isHit) return AddStop(stops, t);
    return {.action = ClickAction::kPickColour, .picked = &hit.stop->second};
}

bool DragRamp(GradientStopMap& stops, const RampGeometry& ramp, DragState& drag, A_long x, A_long y) {
    // fmin and fmax also turn the NaN of a ramp of width 0 into an end.
    const float t = std::fmax(std::fmin(RampPosition(ramp, int64_t{drag.offset} + x - ramp.x0), 1.0F), 0.0F);
    bool changed = false;
    if (drag.ordinal != kLiftedOff) {
        // Other negative ordinals become numbers above the last stop's.
        if (static_cast<size_t>(drag.ordinal) >= stops.size()) return false;
        const auto dragged = std::next(stops.begin(), drag.ordinal);
        // A pointer that moves straight down from an unchanged position does not lift the stop.
        if (dragged->first == t) return false;
        stops.erase(dragged);
        changed = true;
    }
    if (y > ramp.bottom) {
        drag.ordinal = kLiftedOff;
        return changed;
    }
    const auto placed = stops.emplace(FreePosition(stops, t), drag.stop).first;
    drag.ordinal = static_cast<A_long>(std::distance(stops.begin(), placed));
    return true;
}

}  // namespace flumo
