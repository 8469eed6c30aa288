// flumo: renders pictures with the effect, through the stand-in host.
#include <CLI/CLI.hpp>
#include <cstdio>
#include <sstream>
#include <string>

#include "cli/commands/check_command.h"
#include "cli/commands/completion_command.h"
#include "cli/commands/controls_command.h"
#include "cli/commands/info_command.h"
#include "cli/commands/panel_command.h"
#include "cli/commands/render_command.h"
#include "cli/options/help_format.h"
#include "cli/options/panel_options.h"
#include "cli/options/render_options.h"
#include "cli/terminal/exit_status.h"
#include "cli/terminal/stdout_guard.h"
#include "cli/terminal/stop_signal.h"
#include "job/session.h"

namespace flumo::cli {
namespace {

constexpr const char* kVersion = "flumo " FLUMO_VERSION "\n";

constexpr const char* kFooter = R"(
Examples:
  flumo render -o look.png      the shortest picture: the default look at 1920x1080
  flumo render --help           sizes, sequences, controls, gradients, layers, scenes
  flumo panel Gradient -o panel.png
                                the gradient editor as the effect paints it, and a pointer to play on it
  flumo controls                every control with its range and default
  flumo info --json             identity, flags and OpenGL driver for scripts
  flumo check                   plays the effect through everything that a host may do with it

Exit status: 0 done, 1 a frame or event failed or a check found something, 2 usage, 3 an input cannot be read,
4 no usable OpenGL, 5 the output cannot be written, 130 or 143 stopped by a signal.)";

constexpr const char* kControlsFooter = R"(
Examples:
  flumo controls | grep Lines
  flumo controls --json | jq '.[] | select(.kind == "popup") | .choices')";

constexpr const char* kInfoFooter = R"(
Examples:
  flumo info
  flumo info --json | jq -r .openGl.renderer
  flumo info --check            before a long run: status 4 when this machine cannot render)";

constexpr const char* kCompletionFooter = R"(
Examples:
  flumo completion bash > ~/.local/share/bash-completion/completions/flumo
  flumo completion zsh > ~/.zfunc/_flumo
  flumo completion fish > ~/.config/fish/completions/flumo.fish)";

struct ListOptions {
    std::filesystem::path module;
    bool json = false;
    bool check = false;
};

void add_list_options(CLI::App& command, ListOptions& options, const char* footer) {
    command.footer(footer);
    command.add_flag("--json", options.json, "Write JSON");
    command.add_option("--module", options.module, "The effect to load")
        ->type_name("FILE")
        ->default_str("beside flumo, then in ../lib/flumo");
}

ExitStatus list_controls(const ListOptions& options, const StdoutGuard& output) {
    job::Session session(options.module);
    output.write(options.json ? controls_as_json(session) : controls_as_text(session));
    return ExitStatus::kDone;
}

ExitStatus show_info(const ListOptions& options, const StdoutGuard& output) {
    job::Session session(options.module);
    if (options.check) {
        const auto took = static_cast<int>(check_rendering(session));
        std::fprintf(stderr, "flumo: check passed: context, programs and a 16x16 frame in %d ms\n", took);
    }
    const std::string printed = output.captured();
    output.write(options.json ? info_as_json(session, printed) : info_as_text(session, printed));
    return ExitStatus::kDone;
}

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

ExitStatus run(int argc, char** argv, const StdoutGuard& output) {
    CLI::App app("Renders pictures with the Flumo effect: an animated procedural image from a command line.");
    app.name("flumo");
    app.set_version_flag("--version", kVersion);
    app.require_subcommand(0, 1);
    app.footer(kFooter);
    app.formatter(std::make_shared<HelpFormat>());

    RenderOptions render_options;
    PanelRequest panel_request;
    ListOptions list_options;
    CLI::App* render_command = app.add_subcommand("render", "Render frames into picture files");
    CLI::App* panel_command = app.add_subcommand("panel", "Draw a gradient's editor and play events on it");
    CLI::App* controls_command = app.add_subcommand("controls", "List the effect's controls");
    CLI::App* info_command =
        app.add_subcommand("info", "Show the effect's identity, flags and OpenGL driver");
    add_render_options(*render_command, render_options);
    add_panel_options(*panel_command, panel_request);
    add_list_options(*controls_command, list_options, kControlsFooter);
    add_list_options(*info_command, list_options, kInfoFooter);
    info_command->add_flag("--check", list_options.check, "Also compile and render a tiny frame");
    CheckOptions check_options;
    CLI::App* check_command = app.add_subcommand("check", "Judge an effect module by playing a host's part");
    add_check_options(*check_command, check_options);
    CLI::App* completion = app.add_subcommand("completion", "Write a shell's completion script");
    std::string shell;
    completion->add_option("SHELL", shell, "bash, zsh or fish")->required();
    completion->footer(kCompletionFooter);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return answer_parse_error(app, error, output);
    }
    if (completion->parsed()) {
        output.write(completion_script(app, shell));
        return ExitStatus::kDone;
    }
    if (controls_command->parsed()) return list_controls(list_options, output);
    if (info_command->parsed()) return show_info(list_options, output);
    if (render_command->parsed()) return render(render_options, output);
    if (panel_command->parsed()) return panel(panel_request, output);
    if (check_command->parsed()) return check(check_options, output);
    throw usage_failure("expected a command, such as: flumo render -o look.png");
}

ExitStatus run_and_report(int argc, char** argv, const StdoutGuard& output) try {
    return run(argc, argv, output);
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
    flumo::cli::watch_stop_signals();
    return static_cast<int>(flumo::cli::run_and_report(argc, argv, output));
} catch (const flumo::Failure& failure) {
    std::fprintf(stderr, "flumo: %s\n", failure.what());
    return static_cast<int>(flumo::cli::status_of(failure));
}
