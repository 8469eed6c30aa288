#include "studio/document/look_file.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <fstream>

#include "base/failure.h"
#include "media/new_file.h"
#include "media/picture_file.h"
#include "scene/scene_text.h"

namespace flumo::studio {
namespace {

scene::Scene scene_in_header(const std::filesystem::path& path, const scene::ControlCatalog& catalog) {
    const media::FrameNotes notes = media::read_notes(path);
    if (notes.scene.empty()) throw input_failure(path.string() + ": no scene of flumo in its header");
    return scene::parse_scene(notes.scene, path, catalog);
}

}  // namespace

bool holds_scene_in_header(const std::filesystem::path& path) {
    constexpr std::array kEndings = {".exr", ".png", ".mp4", ".mov", ".mkv", ".webm", ".gif"};
    std::string ending = path.extension().string();
    std::ranges::transform(ending, ending.begin(),
                           [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return std::ranges::find(kEndings, ending) != kEndings.end();
}

scene::Scene read_look(const std::filesystem::path& path, const scene::ControlCatalog& catalog) {
    return holds_scene_in_header(path) ? scene_in_header(path, catalog) : scene::read_scene(path, catalog);
}

void write_text_file(const std::filesystem::path& path, std::string_view text) {
    media::NewFile file(path);
    std::ofstream stream(file.temporary(), std::ios::binary);
    stream.write(text.data(), static_cast<std::streamsize>(text.size()));
    stream.close();
    if (!stream) throw output_failure("cannot write \"" + path.string() + "\": the disk may be full");
    file.commit();
}

std::string look_text(const scene::Scene& scene) {
    scene::Scene look;
    look.description = scene.description;
    look.tracks = scene.tracks;
    return scene::scene_text(look);
}

scene::Scene parse_look(std::string_view text, const scene::ControlCatalog& catalog) {
    return scene::parse_scene(text, "clipboard", catalog);
}

}  // namespace flumo::studio
