#include <dlfcn.h>
#include <elf.h>

#include <cstring>
#include <fstream>

#include "host/module/module_error.h"
#include "host/module/module_library.h"

namespace flumo::host {

namespace {

/// The loader maps a module's segments without comparing them with the file's size. Reading a page that the
/// file does not have then ends the process by SIGBUS, so a file that was cut short is refused before.
/// What is no ELF file of 64 bits is left to the loader's own message.
void require_whole_segments(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    Elf64_Ehdr header{};
    file.read(reinterpret_cast<char*>(&header), sizeof header);
    if (!file || std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0 ||
        header.e_ident[EI_CLASS] != ELFCLASS64 || header.e_phentsize != sizeof(Elf64_Phdr)) {
        return;
    }
    const std::uintmax_t size = std::filesystem::file_size(path);
    file.seekg(static_cast<std::streamoff>(header.e_phoff));
    for (int i = 0; i < header.e_phnum; ++i) {
        Elf64_Phdr segment{};
        file.read(reinterpret_cast<char*>(&segment), sizeof segment);
        const bool is_whole = file && segment.p_offset <= size && segment.p_filesz <= size - segment.p_offset;
        if (!file || (segment.p_type == PT_LOAD && !is_whole))
            throw ModuleError(path.string() + ": not a loadable module: the file is cut short");
    }
}

}  // namespace

ModuleLibrary::ModuleLibrary(const std::filesystem::path& path) {
    require_whole_segments(path);
    // An absolute path keeps the loader from searching its own folders.
    handle_ = dlopen(std::filesystem::absolute(path).c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!handle_) throw ModuleError(path.string() + ": not a loadable module: " + dlerror());
}

ModuleLibrary::~ModuleLibrary() {
    dlclose(handle_);
}

void* ModuleLibrary::symbol(const char* name) const {
    return dlsym(handle_, name);
}

}  // namespace flumo::host
