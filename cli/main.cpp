// flumo: renders pictures with the effect, through the stand-in host.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

#include "cli/commands/check_command.h"
#include "cli/commands/completion_command.h"
#include "cli/commands/controls_command.h"
#include "cli/commands/info_command.h"
#include "cli/commands/panel_command.h"
#include "cli/commands/presets_command.h"
#include "cli/commands/render_command.h"
#include "cli/commands/scene_command.h"
#include "cli/commands/variations_command.h"
#include "cli/options/help_format.h"
#include "cli/options/panel_options.h"
#include "cli/options/render_options.h"
#include "cli/options/unknown_word.h"
#include "cli/terminal/failure_status.h"
#include "cli/terminal/stdout_guard.h"
#include "cli/terminal/stop_signal.h"

namespace flumo::cli {
namespace {

constexpr const char* kVersion = "flumo " FLUMO_VERSION "\n";

constexpr const char* kFooter = R"(
Examples:
  flumo render -o look.png      the shortest picture: the default look at 1920x1080
  flumo render --help           sizes, sequences, controls, gradients, layers, scenes
  flumo panel Gradient -o panel.png
                                the gradient editor as the effect paints it, and mouse events for it
  flumo render --preset smoke -o smoke.png
                                a look that comes with flumo; flumo presets lists them
  flumo variations --preset smoke -o 'var.##.png' --sheet sheet.png
                                twelve looks near it, on one sheet
  flumo scene --set Scale=40 -o look.json
                                options as a scene file
  flumo controls                every control with its range and default
  flumo info --json             identity, flags and OpenGL driver for scripts
  flumo check                   tests the effect with everything that a host may do with it

Exit status: 0 done, 1 a frame or event failed or a check found something, 2 usage, 3 an input cannot be read,
4 no usable OpenGL, 5 the output cannot be written, 130 or 143 stopped by a signal.)";

constexpr const char* kPresetsFooter = R"(
Examples:
  flumo presets
  flumo render --preset smoke --size 1280x720 -o smoke.png
  flumo scene --preset smoke -o mine.json     a copy to change)";

constexpr const char* kCompletionFooter = R"(
Examples:
  flumo completion bash > ~/.local/share/bash-completion/completions/flumo
  flumo completion zsh > ~/.zfunc/_flumo
  flumo completion fish > ~/.config/fish/completions/flumo.fish)";

// --help and --version arrive as errors of the parser, too.
ExitStatus answer_parse_error(const CLI::App& app, const CLI::ParseError& error, const StdoutGuard& output) {
    std::ostringstream text;
    if (error.get_exit_code() == 0) {
        app.exit(error, text, text);
        output.write(text.str());
        return ExitStatus::kDone;
    }
    throw usage_failure(std::string(error.what()) + " (--help tells more)");
}

// Options act in the order in which they are written, so everything before a word that does not exist is
// parsed before that word is refused.
void parse(CLI::App& app, std::vector<std::string> words) {
    const auto unknown = find_unknown_word(app, words);
    if (unknown) words.resize(unknown->position);
    std::ranges::reverse(words);
    try {
        app.parse(words);
    } catch (const CLI::RequiredError&) {
        if (!unknown) throw;
    }
    if (unknown) throw Failure(unknown->failure);
}

ExitStatus run(std::vector<std::string> words, const StdoutGuard& output) {
    CLI::App app("Renders pictures with the Flumo effect: an animated procedural image from a command line.");
    app.name("flumo");
    app.set_version_flag("--version", kVersion);
    app.require_subcommand(0, 1);
    app.footer(kFooter);
    app.formatter(std::make_shared<HelpFormat>());

    RenderOptions render_options;
    PanelRequest panel_request;
    ControlsOptions controls_options;
    InfoOptions info_options;
    CLI::App* render_command = app.add_subcommand("render", "Render frames into picture files");
    CLI::App* panel_command = app.add_subcommand("panel", "Draw a gradient's editor and play events on it");
    CLI::App* controls_command = app.add_subcommand("controls", "List the effect's controls");
    CLI::App* info_command =
        app.add_subcommand("info", "Show the effect's identity, flags and OpenGL driver");
    add_render_options(*render_command, render_options);
    VariationsOptions variations_options;
    CLI::App* variations_command =
        app.add_subcommand("variations", "Render looks near a look, with a contact sheet");
    add_variations_options(*variations_command, variations_options);
    SceneOptions scene_options;
    CLI::App* scene_command = app.add_subcommand("scene", "Write the scene file that options describe");
    add_scene_options(*scene_command, scene_options);
    CLI::App* presets_command = app.add_subcommand("presets", "List the scenes that come with flumo");
    presets_command->footer(kPresetsFooter);
    add_panel_options(*panel_command, panel_request);
    add_controls_options(*controls_command, controls_options);
    add_info_options(*info_command, info_options);
    CheckOptions check_options;
    CLI::App* check_command = app.add_subcommand("check", "Test an effect module as a host would use it");
    add_check_options(*check_command, check_options);
    CLI::App* completion = app.add_subcommand("completion", "Write a shell's completion script");
    std::string shell;
    completion->add_option("SHELL", shell, "bash, zsh or fish")->required();
    completion->footer(kCompletionFooter);
    try {
        parse(app, std::move(words));
    } catch (const CLI::ParseError& error) {
        return answer_parse_error(app, error, output);
    }
    if (completion->parsed()) {
        output.write(completion_script(app, shell));
        return ExitStatus::kDone;
    }
    if (controls_command->parsed()) return controls(controls_options, output);
    if (info_command->parsed()) return info(info_options, output);
    if (variations_command->parsed()) return variations(variations_options, output);
    if (scene_command->parsed()) return write_scene(scene_options, output);
    if (presets_command->parsed()) return list_presets(output);
    if (render_command->parsed()) return render(render_options, output);
    if (panel_command->parsed()) return panel(panel_request, output);
    if (check_command->parsed()) {
        watch_stop_signals();
        return check(check_options, output);
    }
    throw usage_failure("expected a command, such as: flumo render -o look.png");
}

ExitStatus run_and_report(std::vector<std::string> words, const StdoutGuard& output) try {
    return run(std::move(words), output);
} catch (const Failure& failure) {
    std::fprintf(stderr, "flumo: %s\n", failure.what());
    return status_of(failure);
} catch (const std::exception& error) {
    std::fprintf(stderr, "flumo: %s\n", error.what());
    return ExitStatus::kFrameFailed;
}

}  // namespace
}  // namespace flumo::cli

int main(int argc, char** argv) try {
    const flumo::cli::StdoutGuard output;
    flumo::cli::ignore_write_signals();
    return static_cast<int>(flumo::cli::run_and_report({argv + 1, argv + argc}, output));
} catch (const flumo::Failure& failure) {
    std::fprintf(stderr, "flumo: %s\n", failure.what());
    return static_cast<int>(flumo::cli::status_of(failure));
}
