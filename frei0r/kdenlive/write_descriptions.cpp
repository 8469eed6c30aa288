// Part of the build. usage: write_kdenlive_descriptions GENERATOR_FILE EFFECT_FILE
#include <cstdio>
#include <fstream>

#include "frei0r/kdenlive/descriptions.h"

namespace flumo::frei0r {
namespace {

bool write_description(PluginKind kind, const char* path) {
    const scene::ControlCatalog catalog = registered_controls();
    std::ofstream file(path);
    file << kdenlive_description(kind, make_parameters(kind, catalog));
    file.close();
    if (!file) std::fprintf(stderr, "cannot write %s\n", path);
    return !file.fail();
}

}  // namespace
}  // namespace flumo::frei0r

int main(int argc, char** argv) {
    using namespace flumo::frei0r;
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s GENERATOR_FILE EFFECT_FILE\n", argv[0]);
        return 2;
    }
    const bool is_written =
        write_description(PluginKind::kSource, argv[1]) && write_description(PluginKind::kFilter, argv[2]);
    return is_written ? 0 : 1;
}
