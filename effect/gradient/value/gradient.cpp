#include "effect/gradient/value/gradient.h"

namespace flumo {

GradientStopMap WhiteGradient() {
    const GradientStop white{kStopSin, 1.0F, 1.0F, 1.0F, 1.0F};
    return {{0.0F, white}, {1.0F, white}};
}

}  // namespace flumo
