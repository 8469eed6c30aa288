#include "cli/options/render_options.h"

#include <CLI/CLI.hpp>
#include <cstdlib>

#include "base/parse_number.h"
#include "base/text_list.h"
#include "cli/options/look_options.h"
#include "cli/options/module_option.h"
#include "cli/options/option_table.h"

namespace flumo::cli {
namespace {

constexpr int kMostThreads = 64;
// Leaves room for the longest list of frames that starts there.
constexpr int kLargestStartNumber = 1'000'000'000;

constexpr const char* kFooter = R"(
Examples:
  flumo render -o look.png
      the default look at 1920x1080
  flumo render --size 960x540 --set NoiseType=voronoi --set Scale=150 -o cells.png
      another generator, half again as large
  flumo render --gradient 'Gradient=0:#0b1026,0.6:sin:#ff6a00,1:#ffffff' --depth 16 -o fire.png
      a gradient of three stops
  flumo render --set ColorizeMode=2 --layer3 palette.jpg -o painted.png
      colours from a picture
  flumo render --preset smoke --duration 4 --loop -o loop.mov
      four seconds that loop without a seam, as a video with alpha
  flumo render --duration 2 --set 'LinesOffset=0:0:ease,2s:100' --set LinesVisible=on -o lines.mp4
      keyframes at frame 0 and at 2 seconds
  flumo render --scene shot.json --frames 1-48x2 -o 'shot.####.exr'
      every second frame of a scene
  flumo render --scene shot.json --shard 2/4 --skip-existing -o 'shot.####.exr'
      the second of four machines' part, whether begun before or not
  flumo render --scene shot.json -o - | ffplay -
      to another program

`flumo controls` lists every Id with its range. Exit status: 0 done, 1 a frame failed, 2 usage,
3 an input cannot be read, 4 no usable OpenGL, 5 the output cannot be written, 130 or 143 stopped by a
signal after finishing the frames that were begun.)";

void set_part_size(RenderOptions& options, const std::string& text) {
    constexpr int kSmallest = 16;
    options.part_width = parse_number<int>(text);
    if (!options.part_width || *options.part_width < kSmallest)
        throw usage_failure("part size " + in_quotes(text) + ": expected a number of pixels, at least 16");
}

void set_shard(RenderOptions& options, const std::string& text) {
    options.shard = job::parse_shard(text);
}

void set_start_number(RenderOptions& options, const std::string& text) {
    options.start_number = parse_number<int>(text);
    if (!options.start_number || std::abs(*options.start_number) > kLargestStartNumber)
        throw usage_failure("start number " + in_quotes(text) + ": expected a number up to 1000000000");
}

void set_threads(RenderOptions& options, const std::string& text) {
    const auto threads = parse_number<int>(text);
    if (!threads || *threads < 1 || *threads > kMostThreads) {
        throw usage_failure("threads " + in_quotes(text) + ": expected 1 to " + std::to_string(kMostThreads));
    }
    options.render_threads = *threads;
}

void set_exr_type(RenderOptions& options, const std::string& text) {
    if (text != "half" && text != "float") {
        throw usage_failure("exr type " + in_quotes(text) + ": expected half or float");
    }
    options.exr_type = text == "half" ? media::ExrType::kHalf : media::ExrType::kFloat;
}

void set_linear(RenderOptions& options, const std::string&) {
    options.linear = true;
}

void set_raw(RenderOptions& options, const std::string& text) {
    options.raw = media::parse_raw_format(text);
}

void set_progress(RenderOptions& options, const std::string& text) {
    options.progress = parse_progress_form(text);
}

void set_quiet(RenderOptions& options, const std::string&) {
    options.progress = ProgressForm::kNone;
}

void set_skip_existing(RenderOptions& options, const std::string&) {
    options.skip_existing = true;
}

void set_no_clobber(RenderOptions& options, const std::string&) {
    options.no_clobber = true;
}

void set_make_folders(RenderOptions& options, const std::string&) {
    options.make_folders = true;
}

void set_print_scene(RenderOptions& options, const std::string&) {
    options.print_scene = true;
}

void set_keep_going(RenderOptions& options, const std::string&) {
    options.keep_going = true;
}

void set_module(RenderOptions& options, const std::string& text) {
    options.module = parse_module(text);
}

void set_output(RenderOptions& options, const std::string& text) {
    options.output = media::OutputPattern(text);
}

constexpr OptionRow<RenderOptions> kRows[] = {
    {"Frame", "--shard", "K/N", "Only part K of N of the frames, for N machines", "", set_shard},
    {"Output", "-o,--output", "PATTERN",
     "File to write. Pictures: .png or .exr, with #### or %04d for\nthe frame number. Video, through ffmpeg: "
     ".mp4 (H.264),\n.mov (ProRes 4444, alpha), .mkv (FFV1, 16 bits, alpha),\n.webm (VP9, alpha), .gif. "
     "A single - writes to standard\noutput, /dev/null nowhere; required",
     "", set_output, Repeats::kRefused},
    {"Output", "--raw", "FORMAT", "For -o -: rgba, rgba64le or rgbaf32 without a header, or y4m", "y4m",
     set_raw},
    {"Output", "--exr-type", "TYPE", "half or float", "float", set_exr_type},
    {"Output", "--linear", "", "Write linear light instead of the sRGB curve; OpenEXR only", "", set_linear},
    {"Output", "--start-number", "N", "Number the files from N, whatever the frames", "the frame",
     set_start_number},
    {"Output", "--skip-existing", "", "Leave files that are there: resumes a rendering", "",
     set_skip_existing},
    {"Output", "--no-clobber", "", "Refuse to begin when a file is there", "", set_no_clobber},
    {"Output", "--mkdir", "", "Make the folders of the output", "", set_make_folders},
    {"Output", "--print-scene", "",
     "Write the scene that the options describe to standard\noutput, and render nothing", "",
     set_print_scene},
    {"Run", "--keep-going", "", "Go on past a frame that fails; ends with status 1", "", set_keep_going},
    {"Run", "--part-size", "N", "Render frames in parts of at most N pixels a side, which\ntakes less memory",
     "2048 above 8192 a side, else whole", set_part_size},
    {"Run", "--threads", "N", "Threads that render; encoding has its own", "1", set_threads},
    {"Run", "--progress", "FORM",
     "bar, lines, json (an object a line), openjd or none;\njson and openjd go to standard output",
     "by terminal", set_progress},
    {"Run", "-q,--quiet", "", "No progress and no warnings, only errors: --progress none", "", set_quiet},
    {"Run", "--module", "FILE", "The effect to load", "beside flumo, then in ../lib/flumo", set_module},
};

}  // namespace

void add_render_options(CLI::App& command, RenderOptions& options) {
    add_look_options(command, options);
    add_option_rows(command, options, std::span<const OptionRow<RenderOptions>>(kRows));
    command.footer(kFooter);
}

}  // namespace flumo::cli
