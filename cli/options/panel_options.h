// The options of `flumo panel`.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "base/frame_size.h"
#include "cli/options/pointer_script.h"
#include "cli/terminal/gradient_report.h"
#include "host/panel/panel.h"
#include "scene/gradient/gradient_stops.h"

namespace CLI {
class App;
}

namespace flumo::cli {

/// What the command line says; what it leaves out is empty.
struct PanelRequest {
    std::string control;
    std::optional<std::string> gradient;  ///< a spelling of gradient_text.h, perhaps with Id= before it
    std::filesystem::path load;           ///< a file of stored bytes
    std::optional<FrameSize> size;        ///< in panel pixels; the registered size where left out
    double scale = 1;
    host::PixelLayout layout = host::PixelLayout::kBgra;
    std::filesystem::path script;      ///< "-" is standard input
    std::vector<PointerEvent> events;  ///< those of --event, after those of the script
    host::PickedColour pick{};
    GradientForm print = GradientForm::kText;
    std::filesystem::path save;
    std::filesystem::path picture;
    std::filesystem::path module;
};

/// Adds the options to `command`; parsing fills `request`, which must outlive it.
void add_panel_options(CLI::App& command, PanelRequest& request);

}  // namespace flumo::cli
