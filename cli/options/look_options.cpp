#include "cli/options/look_options.h"

#include <CLI/CLI.hpp>

#include "base/frame_rate.h"
#include "base/parse_number.h"
#include "base/text_list.h"
#include "cli/options/option_table.h"
#include "scene/depth.h"
#include "scene/frame_list.h"

namespace flumo::cli {
namespace {

using job::RenderRequest;

job::Assignment parse_assignment(const std::string& option, const std::string& text) {
    const std::size_t mark = text.find('=');
    if (mark == 0 || text.empty())
        throw usage_failure(option + " " + in_quotes(text) + ": expected Id=value");
    // What the control takes is known when the effect is loaded.
    job::Assignment assignment;
    assignment.id = text.substr(0, mark);
    assignment.is_gradient = option == "--gradient";
    assignment.written = option + " " + printable(assignment.id);
    if (mark != std::string::npos) assignment.value = text.substr(mark + 1);
    return assignment;
}

void set_size(RenderRequest& request, const std::string& text) {
    request.size = parse_frame_size(text);
}

void set_resolution(RenderRequest& request, const std::string& text) {
    request.resolution = parse_resolution(text);
}

void set_depth(RenderRequest& request, const std::string& text) {
    const auto depth = parse_number<long>(text);
    if (!depth) throw usage_failure("depth " + in_quotes(text) + ": expected 8, 16 or 32");
    request.depth = scene::checked_depth(*depth);
}

void set_frames(RenderRequest& request, const std::string& text) {
    request.frames = scene::parse_frame_list(text);
}

void set_duration(RenderRequest& request, const std::string& text) {
    const auto seconds = parse_number<double>(text.ends_with('s') ? text.substr(0, text.size() - 1) : text);
    if (!seconds || !(*seconds > 0) || *seconds > 1e6)
        throw usage_failure("duration " + in_quotes(text) + ": expected seconds above 0, such as 4 or 2.5");
    request.duration = *seconds;
}

void set_rate(RenderRequest& request, const std::string& text) {
    request.rate = parse_frame_rate(text);
}

void set_scene(RenderRequest& request, const std::string& text) {
    request.scene = text;
}

void set_from(RenderRequest& request, const std::string& text) {
    request.from = text;
}

void set_preset(RenderRequest& request, const std::string& text) {
    request.preset = text;
}

void set_control(RenderRequest& request, const std::string& text) {
    request.assignments.push_back(parse_assignment("--set", text));
}

void set_gradient(RenderRequest& request, const std::string& text) {
    request.assignments.push_back(parse_assignment("--gradient", text));
}

void set_loop(RenderRequest& request, const std::string&) {
    request.loop = true;
}

void set_layer1(RenderRequest& request, const std::string& text) {
    request.assignments.push_back({"--layer1", "Layer1", text});
}

void set_layer2(RenderRequest& request, const std::string& text) {
    request.assignments.push_back({"--layer2", "Layer2", text});
}

void set_layer3(RenderRequest& request, const std::string& text) {
    request.assignments.push_back({"--layer3", "Layer3", text});
}

constexpr OptionRow<RenderRequest> kRows[] = {
    {"Frame", "--size", "WxH", "Size in pixels", "1920x1080", set_size},
    {"Frame", "--resolution", "R",
     "Render a smaller picture of the same look: full, half, third,\nquarter or N/D", "full", set_resolution},
    {"Frame", "--depth", "BITS", "Bits per channel in the effect: 8, 16 or 32 (float)",
     "32 for .exr, 16 for .mov and .mkv, else 8", set_depth},
    {"Frame", "--frames", "LIST", "Frames to render, such as 7, 1-100, 1-100x2, 1,5,9", "0", set_frames},
    {"Frame", "--duration", "SECONDS", "Frames from 0 on for so long, instead of --frames", "", set_duration},
    {"Frame", "--fps", "N[/D]", "Frames per second, such as 25 or 30000/1001", "25", set_rate},
    {"Look", "--scene", "FILE",
     "A scene file (JSON): size, depth, frames, fps and controls,\nwhich the other options override; - reads "
     "standard input",
     "", set_scene},
    {"Look", "--preset", "NAME", "A scene that comes with flumo; `flumo presets` lists them", "", set_preset},
    {"Look", "--from", "FILE", "The scene in a picture or video that flumo wrote: the same\nframes again", "",
     set_from},
    {"Look", "--set", "Id=VALUE",
     "Value of a control: a number, a popup's name, on or off; or\nkeyframes TIME:VALUE[:INTERPOLATION], "
     "such "
     "as 0:0,4s:360,\nwith frames or seconds and linear, hold or ease; repeatable",
     "", set_control, Repeats::kAllCount},
    {"Look", "--gradient", "Id=STOPS",
     "Stops of Gradient or LinesGradient as position[:kind]:colour\nwith kinds linear, sin (usual) and edge; "
     "or the effect's text\nor stored form; or @FILE; repeatable",
     "", set_gradient, Repeats::kAllCount},
    {"Look", "--loop", "",
     "Move Evolution by a whole turn over all frames, so that the\nlast one leads to the first", "",
     set_loop},
    {"Layers", "--layer1", "FILE",
     "Picture that multiplies the noise: a file, a sequence such as\nplate.####.exr, or a video; and "
     ",offset=N ,end=loop",
     "none", set_layer1},
    {"Layers", "--layer2", "FILE", "Picture that is added to the noise", "none", set_layer2},
    {"Layers", "--layer3", "FILE", "Picture for the colorize modes from a layer", "none", set_layer3},
};

}  // namespace

void add_look_options(CLI::App& command, RenderRequest& request) {
    add_option_rows(command, request, std::span<const OptionRow<RenderRequest>>(kRows));
}

void refuse_contradictions(const RenderRequest& request) {
    if (!request.scene.empty() + !request.from.empty() + !request.preset.empty() > 1)
        throw usage_failure("--scene, --preset and --from each name a scene: expected one of them");
    if (request.frames && request.duration)
        throw usage_failure("--frames and --duration each name frames: expected one of them");
}

}  // namespace flumo::cli
