#include "cli/commands/variations_command.h"

#include <CLI/CLI.hpp>
#include <cstdio>

#include "base/failure.h"
#include "base/parse_number.h"
#include "base/text_list.h"
#include "cli/files/contact_sheet.h"
#include "cli/files/text_file.h"
#include "cli/options/look_options.h"
#include "cli/options/module_option.h"
#include "cli/options/option_table.h"
#include "cli/terminal/job_display.h"
#include "cli/terminal/stop_signal.h"
#include "job/job.h"
#include "job/request_scene.h"
#include "media/picture_file.h"
#include "scene/scene_text.h"
#include "scene/variation.h"

namespace flumo::cli {
namespace {

constexpr int kMostVariations = 10'000;

constexpr const char* kFooter = R"(
Examples:
  flumo variations --preset smoke -o 'var.##.png' --sheet sheet.png
      twelve looks near a preset, the scene of each beside it (var.01.json), and all on one sheet
  flumo variations --scene look.json --size 480x270 --count 24 --vary Offset,Evolution --seed 7 -o 'v/##.png' --mkdir
      other places and times of one look; another seed gives others, the same seed the same
  flumo variations --scene look.json --sweep Scale=50,100,200 --sweep Complexity=2,8 -o 's.##.png' --sheet s.png
      every combination of chosen values
  flumo render --scene var.07.json --size 3840x2160 -o chosen.png
      the one that was chosen, large)";

template <typename Number>
Number number_in(const char* name, const std::string& text, Number least, Number most) {
    const auto number = parse_number<Number>(text);
    if (!number || !(*number >= least) || *number > most)
        throw usage_failure(std::string(name) + " " + in_quotes(text) + ": expected " +
                            std::to_string(least) + " to " + std::to_string(most));
    return *number;
}

void set_strength(VariationsOptions& options, const std::string& text) {
    const auto strength = parse_number<double>(text);
    if (!strength || !(*strength >= 0) || *strength > 1)
        throw usage_failure("strength " + in_quotes(text) + ": expected 0 to 1");
    options.strength = *strength;
}

void set_seed(VariationsOptions& options, const std::string& text) {
    const auto seed = parse_number<uint64_t>(text);
    if (!seed) throw usage_failure("seed " + in_quotes(text) + ": expected a whole number from 0 on");
    options.seed = *seed;
}

void set_output(VariationsOptions& options, const std::string& text) {
    options.request.output = media::OutputPattern(text);
}

void set_sheet(VariationsOptions& options, const std::string& text) {
    if (!equal_ignoring_case(std::filesystem::path(text).extension().string(), ".png"))
        throw usage_failure("sheet " + in_quotes(text) + ": expected a name that ends in .png");
    options.sheet = text;
}

using Options = VariationsOptions;

const OptionRow<Options> kRows[] = {
    {"Variations", "--count", "N", "How many", "12",
     [](Options& options, const std::string& text) {
         options.count = number_in("count", text, 1, kMostVariations);
     }},
    {"Variations", "--vary", "Id,Id,...", "Controls that vary; Offset stands for OffsetX and OffsetY",
     "Offset,Evolution,Scale,Gradient",
     [](Options& options, const std::string& text) { options.vary = text; }},
    {"Variations", "--strength", "SHARE", "How much, from 0 to 1", "0.3", set_strength},
    {"Variations", "--seed", "N", "The same seed gives the same variations", "1", set_seed},
    {"Variations", "--sweep", "Id=V,V,...",
     "These values instead of random ones; repeatable for combinations", "",
     [](Options& options, const std::string& text) { options.sweeps.push_back(text); }, Repeats::kAllCount},
    {"Output", "-o,--output", "PATTERN",
     "Pictures to write: .png or .exr, with #### or %04d for the\nnumber, from "
     "1 on; required",
     "", set_output, Repeats::kRefused},
    {"Output", "--sheet", "FILE.png", "Also all of them on one picture, with what differs", "", set_sheet,
     Repeats::kRefused},
    {"Output", "--columns", "N", "Columns of the sheet", "by count",
     [](Options& options, const std::string& text) {
         options.columns = static_cast<std::size_t>(number_in("columns", text, 1, 100));
     }},
    {"Output", "--mkdir", "", "Make the folders of the output", "",
     [](Options& options, const std::string&) { options.make_folders = true; }},
    {"Run", "-q,--quiet", "", "No progress", "",
     [](Options& options, const std::string&) { options.quiet = true; }},
    {"Run", "--module", "FILE", "The effect to load", "beside flumo, then in ../lib/flumo",
     [](Options& options, const std::string& text) { options.module = parse_module(text); }},
};

void refuse_what_does_not_fit(const Options& options) {
    refuse_contradictions(options.request);
    if (!options.request.output)
        throw usage_failure("variations needs an output, such as: flumo variations -o 'var.##.png'");
    const media::OutputPattern& output = *options.request.output;
    if (!output.is_pictures())
        throw usage_failure("variations are pictures: expected output in .png or .exr");
    if (!output.has_frame_number())
        throw usage_failure("output " + in_quotes(output.text()) +
                            ": variations need a place for the number, such as var.##.png");
    if (options.request.frames && options.request.frames->size() > 1)
        throw usage_failure("--frames: a variation is one frame; flumo render --scene renders the others");
}

std::vector<scene::Variation> variations_of(const Options& options, const scene::Scene& look,
                                            job::Session& session) {
    const scene::ControlCatalog& catalog = session.catalog();
    if (!options.sweeps.empty()) {
        std::vector<scene::Sweep> sweeps;
        std::size_t count = 1;
        for (const std::string& text : options.sweeps) {
            sweeps.push_back(scene::parse_sweep(text, catalog));
            count *= sweeps.back().values.size();
            if (count > kMostVariations) throw usage_failure("--sweep: expected at most 10000 combinations");
        }
        return scene::swept(look.tracks, sweeps);
    }
    const std::vector<const scene::Control*> controls = scene::controls_to_vary(options.vary, catalog);
    const scene::VariationSettings settings{controls, options.strength, options.seed};
    std::vector<scene::Variation> all;
    for (int i = 1; i <= options.count; ++i)
        all.push_back(scene::vary(
            look.tracks, settings, static_cast<uint32_t>(i),
            [&](const scene::Control& control) { return scene::default_value(control, session.host()); }));
    return all;
}

// The events of several jobs of one frame as those of one job.
class OneJobOfMany : public job::Observer {
  public:
    OneJobOfMany(job::Observer& observer, std::size_t total) : progress_(observer) { progress_.start(total); }

    void set_number(int number) { number_ = number; }
    void end(job::Ending ending) { progress_.end(ending); }
    job::ProgressState state() const { return progress_.state(); }

    void started(const job::ProgressState&) override {}
    void frame_begun(int) override { progress_.begin(number_); }
    void frame_done(const job::FrameEvent& event, const job::ProgressState&) override {
        job::FrameEvent numbered = event;
        numbered.frame = number_;
        progress_.add(numbered);
    }
    void ended(job::Ending, const job::ProgressState&) override {}

  private:
    job::Progress progress_;
    int number_ = 0;
};

job::RenderJob job_of(const Options& options, const scene::Scene& look, const scene::Variation& variation,
                      int number) {
    job::RenderJob job{.tracks = variation.tracks, .output = *options.request.output};
    job.size = look.size.value_or(job.size);
    job.depth = job::depth_of(look, job.output.kind());
    job.resolution = look.resolution.value_or(job.resolution);
    job.rate = look.rate.value_or(job.rate);
    if (look.frames) job.frames = {look.frames->front()};
    job.start_number = number;
    return job;
}

void write_scene_beside(const std::filesystem::path& picture, scene::Scene look,
                        const scene::Variation& variation) {
    look.tracks = variation.tracks;
    std::filesystem::path path = picture;
    write_text_file(path.replace_extension(".json"), scene::scene_text(look));
}

// Two changes a line, since a cell is wider than most of them.
SheetCell cell_of(const std::filesystem::path& picture, const scene::Variation& variation) {
    SheetCell cell{media::to_8_bit(media::read_picture(picture)), {picture.stem().string()}};
    for (std::size_t i = 0; i < variation.changes.size(); ++i) {
        if (i % 2 == 0) {
            cell.lines.push_back(variation.changes[i]);
        } else {
            cell.lines.back().append(", ").append(variation.changes[i]);
        }
    }
    return cell;
}

std::size_t columns_of(const Options& options, std::size_t count) {
    if (options.columns > 0) return options.columns;
    // Two sweeps make a table with a row for each value of the first.
    if (options.sweeps.size() == 2) return count / (split(options.sweeps.front(), ',').size());
    return usual_columns(count);
}

}  // namespace

void add_variations_options(CLI::App& command, VariationsOptions& options) {
    add_option_rows(command, options, std::span<const OptionRow<Options>>(kRows));
    add_look_options(command, options.request);
    command.footer(kFooter);
}

ExitStatus variations(const VariationsOptions& options, const StdoutGuard& output) {
    refuse_what_does_not_fit(options);
    job::Session session(options.module);
    media::FrameNotes notes;
    const scene::Scene look = job::scene_of_request(options.request, session.catalog(), notes);
    const std::vector<scene::Variation> all = variations_of(options, look, session);
    ProgressDisplay display(
        display_settings(options.quiet ? std::optional(ProgressForm::kNone) : std::nullopt, false, output));
    const job::RunSettings settings{.make_folders = options.make_folders,
                                    .stop = [] { return stop_requested().has_value(); }};
    OneJobOfMany observer(display, all.size());
    std::vector<SheetCell> cells;
    for (std::size_t i = 0; i < all.size() && !stop_requested(); ++i) {
        const int number = static_cast<int>(i) + 1;
        observer.set_number(number);
        const job::RenderJob job = job_of(options, look, all[i], number);
        if (job::run_job(session, job, settings, observer).progress.done() == 0) break;
        write_scene_beside(job.path_of(0), look, all[i]);
        if (!options.sheet.empty()) cells.push_back(cell_of(job.path_of(0), all[i]));
    }
    const auto stop = stop_requested();
    observer.end(stop ? job::Ending::kStopped : job::Ending::kDone);
    if (stop) return *stop;
    if (!options.sheet.empty())
        media::write_picture(options.sheet, media::PictureFormat::kPng,
                             contact_sheet(cells, {.columns = columns_of(options, cells.size())}));
    return ExitStatus::kDone;
}

}  // namespace flumo::cli
