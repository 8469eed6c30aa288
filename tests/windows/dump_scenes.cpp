// Renders the scenes through the module of this platform and writes their channels, for the other platform's
// test to compare with. usage: dump_scenes MODULE FOLDER
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>

#include "tests/windows/scenes.h"

namespace {

void dump(const char* module_path, const std::filesystem::path& folder) {
    const flumo::host::Module module(module_path);
    flumo::host::Host host(module);
    host.start();
    for (const auto& scene : flumo::tests::scenes()) {
        std::ofstream file(folder / (scene.name + ".raw"), std::ios::binary);
        file.exceptions(std::ios::failbit | std::ios::badbit);
        const auto frame = render_scene(host, scene);
        file.write(reinterpret_cast<const char*>(frame.data()),
                   static_cast<std::streamsize>(frame.size() * sizeof(float)));
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s MODULE FOLDER\n", argv[0]);
        return 2;
    }
    try {
        dump(argv[1], argv[2]);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s: %s\n", argv[0], error.what());
        return 1;
    }
    return 0;
}
