// flumo_bench: what a frame costs, and how much of it is not the driver's. Options beside those of Google
// Benchmark (--benchmark_filter, --benchmark_out and others):
//   --quick         standard scenes at 640x360 instead of 1920x1080
//   --seconds=N     how long each case may repeat itself, 30 by default
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <iostream>
#include <string_view>
#include <vector>

#include "bench/benches.h"

namespace flumo::bench {
namespace {

/// Takes this program's own options out of the list.
BenchOptions take_options(std::vector<char*>& arguments) {
    BenchOptions options;
    std::erase_if(arguments, [&options](const char* argument) {
        const std::string_view text = argument;
        if (text == "--quick") {
            options.size = {640, 360};
            return true;
        }
        constexpr std::string_view seconds = "--seconds=";
        if (!text.starts_with(seconds)) return false;
        options.seconds_per_case = std::atof(argument + seconds.size());
        return true;
    });
    return options;
}

void run(std::vector<char*> arguments) {
    const BenchOptions options = take_options(arguments);
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) std::exit(2);

    Theatre theatre(options);
    benchmark::AddCustomContext("driver", theatre.stage().driver());
    benchmark::AddCustomContext(
        "size", std::to_string(options.size.width) + "x" + std::to_string(options.size.height));
    register_parts(theatre);
    register_frames(theatre);
    register_scaling(theatre);

    // The effect prints a few lines for each thread that starts to render; they would tear the table.
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
