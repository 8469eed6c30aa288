// flumo_bench: the cost of a frame, and how much of it is not the driver's. Options in addition to those of
// Google Benchmark (--benchmark_filter, --benchmark_out and others):
//   --size=WxH      size of the standard scenes, 1920x1080 by default
//   --quick         the same as --size=640x360
//   --seconds=N     how long each case may be repeated, 30 by default
//   --first-frame=effect|reference
//                   draws one frame of that size and ends: for the cost of the first frame of a process
#include <benchmark/benchmark.h>

#include <charconv>
#include <cstdlib>
#include <iostream>
#include <optional>
#include <string_view>
#include <vector>

#include "bench/benches.h"
#include "bench/first_frame.h"

namespace flumo::bench {
namespace {

struct Options {
    BenchOptions benches;
    std::optional<Image> first_frame;
};

[[noreturn]] void fail_usage(std::string_view option, std::string_view value, std::string_view expected) {
    std::cerr << "flumo_bench: " << option << value << ": expected " << expected << '\n';
    std::exit(2);
}

/// All of `text` as a number above 0, or nothing.
template <class Number>
std::optional<Number> positive(std::string_view text) {
    Number number{};
    const char* const end = text.data() + text.size();
    const auto [at, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || at != end || !(number > 0)) return std::nullopt;
    return number;
}

FrameSize size_of(std::string_view text) {
    const size_t cross = std::min(text.find('x'), text.size());
    const auto width = positive<int>(text.substr(0, cross));
    const auto height = positive<int>(text.substr(std::min(cross + 1, text.size())));
    if (!width || !height) fail_usage("--size=", text, "a width and a height in pixels, as 640x360");
    return {*width, *height};
}

Image image_of(std::string_view text) {
    if (text == "effect") return Image::kEffect;
    if (text == "reference") return Image::kReference;
    fail_usage("--first-frame=", text, "effect or reference");
}

double seconds_of(std::string_view text) {
    const auto seconds = positive<double>(text);
    if (!seconds) fail_usage("--seconds=", text, "a number above 0");
    return *seconds;
}

/// Reads this program's own options and removes them from the list.
Options take_options(std::vector<char*>& arguments) {
    Options options;
    std::erase_if(arguments, [&options](std::string_view argument) {
        const auto value_of = [argument](std::string_view option) -> std::optional<std::string_view> {
            if (!argument.starts_with(option)) return std::nullopt;
            return argument.substr(option.size());
        };
        if (argument == "--quick") {
            options.benches.size = {640, 360};
        } else if (const auto size = value_of("--size=")) {
            options.benches.size = size_of(*size);
        } else if (const auto seconds = value_of("--seconds=")) {
            options.benches.seconds_per_case = seconds_of(*seconds);
        } else if (const auto image = value_of("--first-frame=")) {
            options.first_frame = image_of(*image);
        } else {
            return false;
        }
        return true;
    });
    return options;
}

void run(std::vector<char*> arguments) {
    const auto [options, first_frame] = take_options(arguments);
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) std::exit(2);
    if (first_frame) return draw_first_frame(*first_frame, options.size);

    BenchContext context(options);
    benchmark::AddCustomContext("driver", context.runner().driver());
    benchmark::AddCustomContext(
        "size", std::to_string(options.size.width) + "x" + std::to_string(options.size.height));
    register_parts(context);
    register_frames(context);
    register_scaling(context);

    // The effect prints a few lines for each thread that starts to render, which would disturb the table.
    std::ostream table(std::cout.rdbuf());
    std::cout.rdbuf(nullptr);
    benchmark::ConsoleReporter reporter(benchmark::ConsoleReporter::OO_Tabular);
    reporter.SetOutputStream(&table);
    benchmark::RunSpecifiedBenchmarks(&reporter);
    std::cout.rdbuf(table.rdbuf());
}

}  // namespace
}  // namespace flumo::bench

int main(int argc, char** argv) {
    flumo::bench::run({argv, argv + argc});
}
