#include "cli/commands/info_command.h"

#include <CLI/CLI.hpp>
#include <chrono>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <optional>
#include <sstream>

#include "base/failure.h"
#include "base/text_list.h"
#include "cli/commands/flag_names.h"
#include "cli/options/module_option.h"
#include "host/instance.h"
#include "host/module/host_error.h"
#include "job/session.h"

namespace flumo::cli {
namespace {

using nlohmann::ordered_json;

constexpr const char* kFooter = R"(
Examples:
  flumo info
  flumo info --json | jq -r .openGl.renderer
  flumo info --check --json | jq .check
      before a long run: status 4 when this machine cannot render)";

struct VersionParts {
    A_u_long version;
    A_u_long subversion;
    A_u_long bug_fix;
    A_u_long stage;
    A_u_long build;
};

VersionParts unpack(A_u_long packed) {
    const auto bits = [packed](A_u_long shift, A_u_long mask) { return (packed >> shift) & mask; };
    const A_u_long high = bits(PF_Vers_VERS_HIGH_SHIFT, PF_Vers_VERS_HIGH_BITS);
    return {bits(PF_Vers_VERS_SHIFT, PF_Vers_VERS_BITS) | (high << PF_Vers_VERS_LOW_SHIFT),
            bits(PF_Vers_SUBVERS_SHIFT, PF_Vers_SUBVERS_BITS),
            bits(PF_Vers_BUGFIX_SHIFT, PF_Vers_BUGFIX_BITS), bits(PF_Vers_STAGE_SHIFT, PF_Vers_STAGE_BITS),
            bits(PF_Vers_BUILD_SHIFT, PF_Vers_BUILD_BITS)};
}

std::string version_text(A_u_long packed) {
    constexpr const char* kStages[] = {"develop", "alpha", "beta", "release"};
    const VersionParts parts = unpack(packed);
    return std::to_string(parts.version) + "." + std::to_string(parts.subversion) + "." +
           std::to_string(parts.bug_fix) + " " + kStages[parts.stage] + " build " +
           std::to_string(parts.build);
}

// The effect prints a block of "OpenGL Name: value" lines for each context; one block is enough.
ordered_json driver_of(const std::string& printed) {
    constexpr std::string_view kPrefix = "OpenGL ";
    ordered_json driver = ordered_json::object();
    std::istringstream lines(printed);
    for (std::string line; std::getline(lines, line);) {
        const std::size_t colon = line.find(':');
        if (!line.starts_with(kPrefix) || colon == std::string::npos) continue;
        std::string name = line.substr(kPrefix.size(), colon - kPrefix.size());
        name[0] = static_cast<char>(name[0] - 'A' + 'a');
        const std::size_t value = line.find_first_not_of(' ', colon + 1);
        if (value != std::string::npos && !driver.contains(name)) driver[name] = line.substr(value);
    }
    return driver;
}

std::string api_text(const host::Registration& registration) {
    return std::to_string(registration.api_major) + "." + std::to_string(registration.api_minor);
}

// `printed` is what the effect wrote on standard output when it was set up.
ordered_json info_json(job::Session& session, const std::string& printed) {
    const host::Registration registration = session.module().register_plugin();
    const host::EffectIdentity& identity = session.host().identity();
    return {
        {"name", registration.name},
        {"matchName", registration.match_name},
        {"category", registration.category},
        {"entryPoint", registration.entry_point},
        {"module", session.module().path().string()},
        {"version", identity.version},
        {"versionText", version_text(identity.version)},
        {"interfaceVersion", api_text(registration)},
        {"controls", session.catalog().controls().size()},
        {"outFlags", {{"value", identity.flags}, {"names", out_flag_names(identity.flags)}}},
        {"outFlags2", {{"value", identity.flags2}, {"names", out_flag2_names(identity.flags2)}}},
        {"openGl", driver_of(printed)},
    };
}

std::string info_text(job::Session& session, const std::string& printed) {
    const host::Registration registration = session.module().register_plugin();
    const host::EffectIdentity& identity = session.host().identity();
    std::ostringstream text;
    text << "name               " << registration.name << "\n"
         << "match name         " << registration.match_name << "\n"
         << "category           " << registration.category << "\n"
         << "entry point        " << registration.entry_point << "\n"
         << "module             " << session.module().path().string() << "\n"
         << "version            " << version_text(identity.version) << " (" << identity.version << ")\n"
         << "interface version  " << api_text(registration) << "\n"
         << "controls           " << session.catalog().controls().size() << "\n"
         << "out flags          " << identity.flags << ": " << join(out_flag_names(identity.flags)) << "\n"
         << "out flags 2        " << identity.flags2 << ": " << join(out_flag2_names(identity.flags2))
         << "\n";
    const ordered_json driver = driver_of(printed);
    for (const auto& [name, value] : driver.items()) {
        text << "OpenGL " << name << std::string(12 - std::min<std::size_t>(name.size(), 11), ' ')
             << value.get<std::string>() << "\n";
    }
    return text.str();
}

struct Verdict {
    bool passed = false;
    std::string text;
};

// Makes a context, compiles the programs and renders a small frame.
Verdict check_rendering(job::Session& session) try {
    const auto began = std::chrono::steady_clock::now();
    host::FrameRequest request;
    request.width = request.height = 16;
    request.depth = host::Depth::k32;
    const host::World world = session.host().new_instance()->render(request);
    // The default look is opaque.
    if (world.width() == 0 || world.rgba(8, 8)[3] != 1.0F)
        return {false, "OpenGL works, but the frame is empty"};
    const auto took =
        std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - began);
    return {true, "context, programs and a 16x16 frame in " + std::to_string(took.count()) + " ms"};
} catch (const host::HostError& error) {
    return {false, std::string("no frame can be rendered: ") + error.what()};
}

ordered_json verdict_json(const Verdict& verdict) {
    return {{"passed", verdict.passed}, {"message", verdict.text}};
}

ExitStatus tell_verdict(const Verdict& verdict) {
    std::fprintf(stderr, "flumo: check %s: %s\n", verdict.passed ? "passed" : "failed", verdict.text.c_str());
    return verdict.passed ? ExitStatus::kDone : ExitStatus::kNoOpenGl;
}

}  // namespace

void add_info_options(CLI::App& command, InfoOptions& options) {
    command.footer(kFooter);
    command.add_flag("--json", options.json, "Write JSON");
    command.add_flag("--check", options.check, "Also compile the programs and render a small frame");
    const auto set_module = [&options](const std::string& text) { options.module = parse_module(text); };
    command.add_option_function<std::string>("--module", set_module, "The effect to load")
        ->type_name("FILE")
        ->default_str("beside flumo, then in ../lib/flumo");
}

ExitStatus info(const InfoOptions& options, const StdoutGuard& output) try {
    job::Session session(options.module);
    const auto verdict = options.check ? std::optional(check_rendering(session)) : std::nullopt;
    const std::string printed = output.captured();
    if (options.json) {
        ordered_json object = info_json(session, printed);
        if (verdict) object["check"] = verdict_json(*verdict);
        output.write(object.dump(2) + "\n");
    } else {
        output.write(info_text(session, printed));
    }
    return verdict ? tell_verdict(*verdict) : ExitStatus::kDone;
} catch (const Failure& failure) {
    if (!options.check || failure.kind() != FailureKind::kNoOpenGl) throw;
    const Verdict verdict{false, failure.what()};
    if (options.json) output.write(ordered_json{{"check", verdict_json(verdict)}}.dump(2) + "\n");
    return tell_verdict(verdict);
}

}  // namespace flumo::cli
