// Part of the build. usage: write_shotcut_descriptions METADATA_FILE CONTROLS_FILE
#include <cstdio>
#include <fstream>

#include "frei0r/shotcut/descriptions.h"

namespace {

bool write_text(const char* path, const std::string& text) {
    std::ofstream file(path);
    file << text;
    file.close();
    if (!file) std::fprintf(stderr, "cannot write %s\n", path);
    return !file.fail();
}

}  // namespace

int main(int argc, char** argv) {
    using namespace flumo::frei0r;
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s METADATA_FILE CONTROLS_FILE\n", argv[0]);
        return 2;
    }
    const flumo::scene::ControlCatalog catalog = registered_controls();
    const std::vector<Parameter> parameters = make_parameters(PluginKind::kFilter, catalog);
    const bool is_written = write_text(argv[1], shotcut_metadata(parameters)) &&
                            write_text(argv[2], shotcut_controls(parameters));
    return is_written ? 0 : 1;
}
