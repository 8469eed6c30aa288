// The colours and spaces of all windows.
#pragma once

#include <QPalette>
#include <QString>

namespace flumo::studio {

/// Logical pixels: every margin and gap is a multiple.
inline constexpr int kGrid = 4;

enum class Theme { kDark, kLight };

QPalette palette_of(Theme theme);

/// For the whole program.
void apply_theme(Theme theme);

}  // namespace flumo::studio
