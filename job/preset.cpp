#include "job/preset.h"

#include <algorithm>
#include <array>

#include "base/failure.h"
#include "base/text_list.h"

namespace flumo::job {
namespace {

namespace fs = std::filesystem;

fs::path preset_folder() {
    std::error_code ignored;
    const fs::path program = fs::read_symlink("/proc/self/exe", ignored).parent_path();
    const std::array places = {program / "presets", program.parent_path() / "share" / "flumo" / "presets"};
    for (const fs::path& place : places) {
        if (fs::is_directory(place, ignored)) return place;
    }
    throw input_failure("no presets in \"" + places[0].string() + "\" or \"" + places[1].string() + "\"");
}

}  // namespace

std::vector<Preset> presets() {
    std::vector<Preset> all;
    for (const fs::directory_entry& entry : fs::directory_iterator(preset_folder())) {
        if (entry.path().extension() == ".json") all.push_back({entry.path().stem().string(), entry.path()});
    }
    std::ranges::sort(all, {}, &Preset::name);
    return all;
}

fs::path preset_file(std::string_view name) {
    std::vector<std::string> names;
    for (const Preset& preset : presets()) {
        if (equal_ignoring_case(preset.name, name)) return preset.file;
        names.push_back(preset.name);
    }
    const auto nearest = nearest_word(name, names);
    throw usage_failure("unknown preset " + in_quotes(name) +
                        (nearest ? "; did you mean " + *nearest + "?" : ": expected one of " + join(names)));
}

}  // namespace flumo::job
