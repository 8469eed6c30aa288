#include "cli/session.h"

#include <array>

#include "cli/exit_status.h"
#include "cli/text_list.h"

namespace flumo::cli {
namespace {

namespace fs = std::filesystem;

host::Module load_module(const fs::path& path) try {
    host::Module module(path);
    // An effect that does not register is none.
    static_cast<void>(module.register_plugin());
    return module;
} catch (const host::ModuleError& error) {
    throw input_failure(error.what());
}

Failure start_failure(const host::HostError& error) {
    if (error.command() != PF_Cmd_GLOBAL_SETUP) return {ExitStatus::kFrameFailed, error.what()};
    return {ExitStatus::kNoOpenGl, std::string("the effect found no usable OpenGL 3.3: ") + error.what()};
}

std::vector<host::Control> start(host::Host& host) try {
    host.start();
    return host.controls();
} catch (const host::HostError& error) {
    throw start_failure(error);
}

}  // namespace

fs::path module_path(const fs::path& given) {
    if (!given.empty()) return given;
    std::error_code ignored;
    const fs::path folder = fs::read_symlink("/proc/self/exe", ignored).parent_path();
    const std::array places = {folder / "Flumo.so", folder.parent_path() / "lib" / "flumo" / "Flumo.so"};
    for (const fs::path& place : places) {
        if (fs::exists(place, ignored)) return place;
    }
    throw input_failure("no effect at " + in_quotes(places[0].string()) + " or " +
                        in_quotes(places[1].string()) + "; --module names it");
}

Session::Session(const fs::path& given_module)
    : module_(load_module(module_path(given_module))), host_(module_), catalog_(start(host_)) {}

}  // namespace flumo::cli
