// Runs on the machine that builds, whatever the module is built for: writes the property list for the resource
// compiler. usage: write_pipl FILE
#include <cstdio>
#include <fstream>

#include "effect/entry/pipl.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s FILE\n", argv[0]);
        return 2;
    }
    static constexpr auto kList = flumo::ComposePipl();
    std::ofstream file(argv[1], std::ios::binary);
    file.write(reinterpret_cast<const char*>(kList.data()), static_cast<std::streamsize>(kList.size()));
    file.close();
    if (!file) std::fprintf(stderr, "%s: cannot write %s\n", argv[0], argv[1]);
    return file ? 0 : 1;
}
