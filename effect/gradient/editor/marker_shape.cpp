#include "effect/gradient/editor/marker_shape.h"

namespace flumo {
namespace {

constexpr MarkerStep Line(float x, float y) {
    return {false, {{{}, {}, {x, y}}}};
}

constexpr MarkerStep Curve(DRAWBOT_PointF32 control1, DRAWBOT_PointF32 control2, DRAWBOT_PointF32 end) {
    return {true, {control1, control2, end}};
}

// The marker is 10 wide and 15 high.
constexpr std::array kRightLinear = {Line(5, 7.5F), Line(0, 15)};
constexpr std::array kRightSin = {Curve({2.5F, 0}, {5, 3.75F}, {5, 7.5F}),
                                  Curve({5, 11.25F}, {2.5F, 15}, {0, 15})};
constexpr std::array kRightEdge = {Line(5, 0), Line(5, 15), Line(0, 15)};

constexpr std::array kLeftLinear = {Line(-5, 7.5F)};
constexpr std::array kLeftSin = {Curve({-2.5F, 15}, {-5, 11.25F}, {-5, 7.5F}),
                                 Curve({-5, 3.75F}, {-2.5F, 0}, {0, 0})};
constexpr std::array kLeftEdge = {Line(-5, 15), Line(-5, 0)};

}  // namespace

std::span<const MarkerStep> MarkerRightHalf(int32_t kind) {
    switch (kind) {
        case kStopLinear:
            return kRightLinear;
        case kStopSin:
            return kRightSin;
        case kStopEdge:
            return kRightEdge;
        default:
            return {};
    }
}

std::span<const MarkerStep> MarkerLeftHalf(int32_t kind) {
    switch (kind) {
        case kStopLinear:
            return kLeftLinear;
        case kStopSin:
            return kLeftSin;
        case kStopEdge:
            return kLeftEdge;
        default:
            return {};
    }
}

}  // namespace flumo
