// Runs on the machine that builds, whatever the module is built for: writes the property list as a resource
// script, in 16-bit words. usage: write_pipl FILE
#include <cstdio>
#include <fstream>

#include "effect/entry/pipl.h"

namespace {

void WriteScript(std::ostream& out) {
    static constexpr auto kList = flumo::ComposePipl();
    out << "LANGUAGE 0x09, 0x01\n" << flumo::kPiplId << " PIPL\nBEGIN\n";
    for (size_t i = 0; i < kList.size(); i += 2) {
        out << "    " << (kList[i] | kList[i + 1] << 8) << (i + 2 < kList.size() ? ",\n" : "\n");
    }
    out << "END\n";
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s FILE\n", argv[0]);
        return 2;
    }
    std::ofstream file(argv[1]);
    WriteScript(file);
    file.close();
    if (!file) std::fprintf(stderr, "%s: cannot write %s\n", argv[0], argv[1]);
    return file ? 0 : 1;
}
