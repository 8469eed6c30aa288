#include "cli/options/panel_options.h"

#include <CLI/CLI.hpp>
#include <cmath>

#include "base/parse_number.h"
#include "base/text_list.h"
#include "cli/options/module_option.h"
#include "cli/options/option_table.h"

namespace flumo::cli {
namespace {

constexpr const char* kFooter = R"(
Examples:
  flumo panel Gradient -o panel.png
      the default gradient as the effect paints it, 150x50
  flumo panel Gradient --stops '0:linear:#000,0.5:edge:#f60,1:#fff' --scale 2 -o sharp.png
      other stops, for a sharp screen
  flumo panel Gradient --event 'double-click 75,20' --event 'double-click 75,40' --pick '#ff8800'
      add a stop in the middle, then give it a colour; the stops after each event
  flumo panel LinesGradient --script moves.txt --print json -o after.png
      a longer session; lines of the script are events, # starts a remark
  flumo panel Gradient --stops @fire.txt --save fire.bin
  flumo panel Gradient --load fire.bin --print hex | cut -f2
      between text, the bytes that projects store, and their digits

Events: click X,Y and double-click X,Y and ctrl-click X,Y press; drag X,Y moves while a click on a stop holds
it, release lets it go; pick COLOUR|cancel|fail answers the colour picker from then on. X and Y are panel
pixels from the upper left corner. What the gestures do: docs/panel.md.

Exit status: 0 done, 1 the effect failed, 2 usage, 3 an input cannot be read, 4 no usable OpenGL, 5 an output
cannot be written.)";

constexpr double kLargestScale = 16;

double parse_scale(std::string_view text) {
    const auto scale = parse_number<double>(text);
    if (!scale || !(*scale > 0) || *scale > kLargestScale) {
        throw usage_failure("scale " + in_quotes(text) + ": expected a number above 0 and up to 16");
    }
    return *scale;
}

host::PixelLayout parse_layout(std::string_view text) {
    if (text == "argb") return host::PixelLayout::kArgb;
    if (text == "bgra") return host::PixelLayout::kBgra;
    if (text == "none") return host::PixelLayout::kNeither;
    throw usage_failure("layout " + in_quotes(text) + ": expected argb, bgra or none");
}

std::filesystem::path parse_picture_name(const std::string& text) {
    std::filesystem::path path = text;
    if (!equal_ignoring_case(path.extension().string(), ".png")) {
        throw usage_failure("output " + in_quotes(text) + ": expected a name that ends in .png");
    }
    return path;
}

const OptionRow<PanelRequest> kRows[] = {
    {"Gradient", "--gradient,--stops", "STOPS",
     "Stops as `flumo render` takes them: position[:kind]:colour,\nthe effect's text or stored form, or "
     "@FILE",
     "the default", [](auto& request, const std::string& text) { request.gradient = text; }},
    {"Gradient", "--load", "FILE", "The gradient from a file of stored bytes", "",
     [](auto& request, const std::string& text) { request.load = text; }},
    {"Panel", "--size", "WxH", "Size of the control in panel pixels", "150x50",
     [](auto& request, const std::string& text) { request.size = parse_frame_size(text); }},
    {"Panel", "--scale", "FACTOR", "Image pixels per panel pixel", "1",
     [](auto& request, const std::string& text) { request.scale = parse_scale(text); }},
    {"Panel", "--layout", "LAYOUT", "Byte order that the panel takes: argb, bgra or none", "bgra",
     [](auto& request, const std::string& text) { request.layout = parse_layout(text); }},
    {"Pointer", "--script", "FILE", "Events, one a line; - reads standard input", "",
     [](auto& request, const std::string& text) { request.script = text; }},
    {"Pointer", "--event", "EVENT", "One event, after those of the script; repeatable", "",
     [](auto& request, const std::string& text) { request.events.push_back(parse_pointer_event(text)); },
     Repeats::kAllCount},
    {"Pointer", "--pick", "ANSWER", "What the colour picker answers: #rrggbb, cancel or fail", "cancel",
     [](auto& request, const std::string& text) { request.pick = parse_picker_answer(text); }},
    {"Output", "--print", "FORM", "How stops are printed: text, hex or json", "text",
     [](auto& request, const std::string& text) { request.print = parse_gradient_form(text); }},
    {"Output", "--save", "FILE", "Write the stored bytes of the last gradient", "",
     [](auto& request, const std::string& text) { request.save = text; }},
    {"Output", "-o,--output", "FILE", "Write the picture of the panel, .png", "",
     [](auto& request, const std::string& text) { request.picture = parse_picture_name(text); },
     Repeats::kRefused},
    {"Output", "--module", "FILE", "The effect to load", "beside flumo, then in ../lib/flumo",
     [](auto& request, const std::string& text) { request.module = parse_module(text); }},
};

}  // namespace

void add_panel_options(CLI::App& command, PanelRequest& request) {
    command.add_option("CONTROL", request.control, "Gradient or LinesGradient")->type_name("");
    add_option_rows(command, request, std::span<const OptionRow<PanelRequest>>(kRows));
    command.footer(kFooter);
}

}  // namespace flumo::cli
