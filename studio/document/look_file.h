// Looks as files and as text.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "scene/control.h"
#include "scene/scene.h"
#include "studio/document/scene_state.h"

namespace flumo::studio {

/// Whether the ending is that of a picture or video, which may hold a scene in its header.
bool holds_scene_in_header(const std::filesystem::path& path);

/// A scene file, or the scene in the header of a picture or video of flumo's. Throws Failure.
scene::Scene read_look(const std::filesystem::path& path, const scene::ControlCatalog& catalog);

/// Writes a scene file, whole or not at all. Throws Failure (unwritable output), naming the file.
void write_text_file(const std::filesystem::path& path, std::string_view text);

/// The look alone, for the clipboard: without size, depth, frames and rate.
std::string look_text(const scene::Scene& scene);

/// What look_text() wrote, or any scene file's text; layers are relative to the present folder. Throws
/// Failure.
scene::Scene parse_look(std::string_view text, const scene::ControlCatalog& catalog);

}  // namespace flumo::studio
