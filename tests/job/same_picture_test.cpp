// One picture from the program, from the host library, and from a second copy of the module.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include "base/child_process.h"
#include "job/look.h"
#include "job/session.h"
#include "media/picture/exr_file.h"
#include "media/picture_file.h"
#include "media/world_picture.h"
#include "tests/support/scratch_folder.h"

namespace flumo::job {
namespace {

constexpr const char* kGradient = "0:#0b1026,0.6:sin:#ff6a00,1:#ffffff80";

host::World render_with_host(const std::filesystem::path& module, host::Depth depth) {
    Session session(module);
    const auto instance = session.host().new_instance();
    scene::Tracks tracks;
    for (const auto& [id, value] : {std::pair("NoiseType", "Smoke"), std::pair("LinesVisible", "on"),
                                    std::pair("Evolution", "45"), std::pair("Gradient", kGradient)}) {
        const scene::Control& control = session.catalog().find(id);
        tracks[control.index] = {&control, {{0, scene::parse_control_value(control, value)}}};
    }
    apply_tracks(*instance, tracks, depth);
    host::FrameRequest request;
    request.width = 61;
    request.height = 35;
    request.depth = depth;
    return instance->render(request);
}

void render_with_program(const std::string& depth, const std::string& output) {
    const auto result = run_child({FLUMO_PROGRAM, "render", "--size", "61x35", "--depth", depth, "--set",
                                   "NoiseType=Smoke", "--set", "LinesVisible=on", "--set", "Evolution=45",
                                   "--gradient", std::string("Gradient=") + kGradient, "-o", output});
    ASSERT_TRUE(result && result->status == 0) << result->errors;
}

// At the end of the process libEGL unloads the driver, and what Mesa holds until then would be a leak to a
// leak checker.
void keep_driver_loaded() {
    dlopen("libEGL_mesa.so.0", RTLD_NOW | RTLD_NODELETE);
}

TEST(SamePicture, ThroughProgramHostAndASecondLoad) {
    keep_driver_loaded();
    const flumo::test::ScratchFolder folder;
    // A copy is a module of its own to the loader, with its own statics.
    std::filesystem::copy_file(FLUMO_MODULE, folder / "Second.so");
    for (const auto& [name, depth] : {std::pair("8", host::Depth::k8), std::pair("16", host::Depth::k16)}) {
        render_with_program(name, folder / "a.png");
        const host::World first = render_with_host(FLUMO_MODULE, depth);
        EXPECT_TRUE(first.same_picture(render_with_host(folder / "Second.so", depth))) << name;
        EXPECT_TRUE(media::read_picture(folder / "a.png").samples == media::picture_of(first).samples)
            << name;
    }
    render_with_program("32", folder / "a.exr");
    media::Picture floats = media::picture_of(render_with_host(FLUMO_MODULE, host::Depth::k32));
    media::premultiply(floats);
    EXPECT_TRUE(media::read_exr(folder / "a.exr").samples == floats.samples);
}

}  // namespace
}  // namespace flumo::job
