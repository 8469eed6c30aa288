#include "cli/commands/scene_command.h"

#include <CLI/CLI.hpp>

#include "base/failure.h"
#include "cli/files/text_file.h"
#include "cli/options/look_options.h"
#include "cli/options/module_option.h"
#include "job/request_scene.h"
#include "job/session.h"
#include "scene/scene_text.h"

namespace flumo::cli {
namespace {

constexpr const char* kFooter = R"(
Examples:
  flumo scene --set NoiseType=Smoke --set Scale=40 --gradient 'Gradient=0:#000,1:#f80' -o look.json
      a look that was found with options, as a file
  flumo scene --duration 4 --loop --set 'LinesOffset=0:0,4s:100:ease' -o loop.json
      motion
  flumo scene --scene look.json --size 3840x2160 | flumo render --scene - -o large.png
      a scene with another size, to another program)";

}  // namespace

void add_scene_options(CLI::App& command, SceneOptions& options) {
    add_look_options(command, options.request);
    command.add_option("-o,--output", options.output, "File to write, or - for standard output")
        ->type_name("FILE")
        ->default_str("-")
        ->group("Output");
    const auto set_module = [&options](const std::string& text) { options.module = parse_module(text); };
    command.add_option_function<std::string>("--module", set_module, "The effect to load")
        ->type_name("FILE")
        ->default_str("beside flumo, then in ../lib/flumo")
        ->group("Output");
    command.footer(kFooter);
}

ExitStatus write_scene(const SceneOptions& options, const StdoutGuard& output) {
    refuse_contradictions(options.request);
    job::Session session(options.module, job::Use::kControlsAlone);
    media::FrameNotes ignored;
    const std::string text =
        scene::scene_text(job::scene_of_request(options.request, session.catalog(), ignored));
    if (options.output.empty() || options.output == "-") {
        output.write(text);
    } else {
        write_text_file(options.output, text);
    }
    return ExitStatus::kDone;
}

}  // namespace flumo::cli
