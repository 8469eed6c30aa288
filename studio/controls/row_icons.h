// The small signs of a control's row, in the colours of the window.
#pragma once

#include <QIcon>
#include <QPalette>

namespace flumo::studio {

/// A diamond: faint for a control without keyframes, outlined between them, filled at one.
QIcon keyframe_icon(const QPalette& palette, bool animated, bool at_this_frame);
/// An arrow back.
QIcon reset_icon(const QPalette& palette);

}  // namespace flumo::studio
