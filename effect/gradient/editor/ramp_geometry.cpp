#include "effect/gradient/editor/ramp_geometry.h"

#include <algorithm>

namespace flumo {
namespace {

constexpr A_long kSideMargin = 6;
constexpr A_long kMarkerStrip = 16;

}  // namespace

RampGeometry MakeRampGeometry(const PF_Rect& frame) {
    const A_long x0 = frame.left + kSideMargin;
    const A_long markerTop = std::max(frame.top, frame.bottom - kMarkerStrip);
    return {.left = frame.left,
            .top = frame.top,
            .right = frame.right,
            .bottom = frame.bottom,
            .x0 = x0,
            .w = frame.right - x0 - kSideMargin,
            .markerTop = markerTop,
            .h = markerTop - frame.top};
}

}  // namespace flumo
