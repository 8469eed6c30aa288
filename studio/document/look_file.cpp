#include "studio/document/look_file.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <fstream>

#include "base/failure.h"
#include "job/render_job.h"
#include "media/new_file.h"
#include "scene/scene_text.h"

namespace flumo::studio {
namespace {

scene::Scene scene_in_header(const std::filesystem::path& path, const scene::ControlCatalog& catalog) {
    job::RenderRequest request;
    request.from = path;
    request.output = media::OutputPattern("/dev/null");
    job::RenderJob job = job::make_render_job(request, catalog);
    return {
        {}, job.size, static_cast<int>(job.depth), std::move(job.frames), job.rate, std::move(job.tracks)};
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
    return scene::scene_text({scene.description, {}, {}, {}, {}, scene.tracks});
}

scene::Scene parse_look(std::string_view text, const scene::ControlCatalog& catalog) {
    return scene::parse_scene(text, "clipboard", catalog);
}

}  // namespace flumo::studio
