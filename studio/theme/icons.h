// Icons in the colour of a button's text, sharp at every density.
#pragma once

#include <QIcon>

namespace flumo::studio {

enum class Icon { kFirst, kLast, kPlay, kPause, kLoop, kAddKey, kDeleteKey };

/// Follows the program's palette, also when that changes.
QIcon icon(Icon icon);

}  // namespace flumo::studio
