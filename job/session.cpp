#include "job/session.h"

#include <dlfcn.h>

#include <array>
#include <exception>

#include "base/failure.h"
#include "base/text_list.h"

namespace flumo::job {
namespace {

namespace fs = std::filesystem;

// A module that is unloaded takes the OpenGL driver and its threads with it; at the end of a program that is
// all risk and no gain.
void keep_loaded(const fs::path& path) {
    void* const again = dlopen(fs::absolute(path).c_str(), RTLD_NOW | RTLD_NOLOAD | RTLD_NODELETE);
    if (again) dlclose(again);
}

host::Module load_module(const fs::path& path) try {
    host::Module module(path);
    keep_loaded(path);
    // An effect that does not register is none.
    static_cast<void>(module.register_plugin());
    return module;
} catch (const host::ModuleError& error) {
    throw input_failure(error.what());
}

Failure start_failure(const host::HostError& error) {
    if (error.command() != PF_Cmd_GLOBAL_SETUP) return {FailureKind::kFrameFailed, error.what()};
    return {FailureKind::kNoOpenGl, std::string("the effect found no usable OpenGL 3.3: ") + error.what()};
}

// The effect makes its OpenGL context in global set-up; parameter set-up works without.
std::vector<host::Control> start(host::Host& host, Use use) try {
    if (use == Use::kRendering) host.global_setup();
    host.params_setup();
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
                        in_quotes(places[1].string()));
}

Session::Session(const fs::path& given_module, Use use)
    : module_(load_module(module_path(given_module))), host_(module_), catalog_(start(host_, use)) {}

// Without global set-up there is no set-down that would give back the defaults of the gradients.
Session::~Session() {
    try {
        host_.release_controls();
    } catch (const std::exception&) {
        // The process goes on without them.
    }
}

}  // namespace flumo::job
