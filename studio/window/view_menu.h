// The menu of what is shown of the frame and how.
#pragma once

#include "studio/preview/preview.h"
#include "studio/preview/preview_panel.h"

class QMenu;

namespace flumo::studio {

/// What is chosen is remembered.
void fill_view_menu(QMenu& menu, PreviewPanel& panel, Preview& preview);

/// What was chosen the last time: colours, memory for frames.
void restore_view_settings(Preview& preview);

}  // namespace flumo::studio
