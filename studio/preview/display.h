// How pixels become a picture on the screen.
#pragma once

#include <QColor>
#include <QImage>
#include <QString>

#include "host/values/world.h"

namespace flumo::studio {

enum class Channels { kRgb, kRed, kGreen, kBlue, kAlpha, kLuminance };

/// An 8-bit image of the world, one pixel for one. RGB keeps its transparency; all others are opaque greys.
/// Luminance has the weights of Rec. 709 on the values as they stand. Values outside 0 to 1 are clamped.
QImage display_image(const host::World& world, Channels channels);

/// "R 0.125  G 1  B 0  A 1" with as many digits as the depth has.
QString pixel_text(const host::World& world, int x, int y);

}  // namespace flumo::studio
