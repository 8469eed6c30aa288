#include <benchmark/benchmark.h>

#include <string>
#include <thread>

#include "bench/benches.h"

namespace flumo::bench {

namespace {

constexpr double kMillisecond = 1e-3;
constexpr FrameSize kTiny{64, 36};

std::string bits(host::Depth depth) {
    return std::to_string(static_cast<int>(depth));
}

// Only the read-back's own time counts; the passes before it make the driver's caches what they are in a
// frame.
void read_back(benchmark::State& state, Theatre& theatre, host::Depth depth) {
    BareGl& bare = theatre.bare(theatre.options().size, depth);
    for ([[maybe_unused]] auto turn : state)
        state.SetIterationTime(bare.draw().read_back.wall * kMillisecond);
}

void host_share(benchmark::State& state, Theatre& theatre, host::Depth depth) {
    const auto instance = theatre.stage().host().new_instance();
    const host::FrameRequest request = request_for(theatre.options().size, depth);
    host::World output;
    const RenderAnswer stub = ask_host_alone;
    for ([[maybe_unused]] auto turn : state)
        theatre.stage().render(*instance, request, output, stub);
}

// A thread that has not rendered yet pays for its context and its programs.
void first_frame_of_thread(benchmark::State& state, Theatre& theatre) {
    const auto instance = theatre.stage().host().new_instance();
    for ([[maybe_unused]] auto turn : state) {
        RenderCost cost;
        std::jthread([&] {
            host::World output;
            cost = theatre.stage().render(*instance, request_for(kTiny, host::Depth::k8), output);
        }).join();
        state.SetIterationTime(cost.call.wall * kMillisecond);
    }
}

void next_frame_of_thread(benchmark::State& state, Theatre& theatre) {
    const auto instance = theatre.stage().host().new_instance();
    host::World output;
    for ([[maybe_unused]] auto turn : state)
        theatre.stage().render(*instance, request_for(kTiny, host::Depth::k8), output);
}

}  // namespace

void register_parts(Theatre& theatre) {
    benchmark::RegisterBenchmark("start/first frame of a thread, 64x36",
                                 [&](benchmark::State& state) { first_frame_of_thread(state, theatre); })
        ->Iterations(1)
        ->Repetitions(9)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("start/next frame of a thread, 64x36",
                                 [&](benchmark::State& state) { next_frame_of_thread(state, theatre); })
        ->Iterations(50)
        ->Repetitions(5)
        ->UseRealTime()
        ->Unit(benchmark::kMillisecond);
    for (const host::Depth depth : {host::Depth::k8, host::Depth::k16, host::Depth::k32}) {
        benchmark::RegisterBenchmark(
            ("read-back/" + bits(depth)).c_str(),
            [&, depth](benchmark::State& state) { read_back(state, theatre, depth); })
            ->Iterations(1)
            ->Repetitions(5)
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark(
            ("host's share/" + bits(depth)).c_str(),
            [&, depth](benchmark::State& state) { host_share(state, theatre, depth); })
            ->Iterations(500)
            ->Repetitions(5)
            ->UseRealTime()
            ->Unit(benchmark::kMillisecond);
    }
}

}  // namespace flumo::bench
