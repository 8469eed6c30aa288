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

// Only the read-back's own time counts; the passes before it bring the driver's caches into the state of a
// frame.
void read_back(benchmark::State& state, BenchContext& context, host::Depth depth) {
    BareGl& bare = context.bare(context.options().size, depth);
    for ([[maybe_unused]] auto turn : state)
        state.SetIterationTime(bare.draw().read_back.wall * kMillisecond);
}

void host_share(benchmark::State& state, BenchContext& context, host::Depth depth) {
    const auto instance = context.runner().host().new_instance();
    const host::FrameRequest request = request_for(context.options().size, depth);
    host::World output;
    const RenderHandler stub = call_host_alone;
    for ([[maybe_unused]] auto turn : state)
        context.runner().render(*instance, request, output, stub);
}

// The first frame of a thread includes making its context and its programs.
void first_frame_of_thread(benchmark::State& state, BenchContext& context) {
    const auto instance = context.runner().host().new_instance();
    for ([[maybe_unused]] auto turn : state) {
        RenderCost cost;
        std::jthread([&] {
            host::World output;
            cost = context.runner().render(*instance, request_for(kTiny, host::Depth::k8), output);
        }).join();
        state.SetIterationTime(cost.call.wall * kMillisecond);
    }
}

void next_frame_of_thread(benchmark::State& state, BenchContext& context) {
    const auto instance = context.runner().host().new_instance();
    host::World output;
    for ([[maybe_unused]] auto turn : state)
        context.runner().render(*instance, request_for(kTiny, host::Depth::k8), output);
}

}  // namespace

void register_parts(BenchContext& context) {
    benchmark::RegisterBenchmark("start/first frame of a thread, 64x36",
                                 [&](benchmark::State& state) { first_frame_of_thread(state, context); })
        ->Iterations(1)
        ->Repetitions(9)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("start/next frame of a thread, 64x36",
                                 [&](benchmark::State& state) { next_frame_of_thread(state, context); })
        ->Iterations(50)
        ->Repetitions(5)
        ->UseRealTime()
        ->Unit(benchmark::kMillisecond);
    for (const host::Depth depth : {host::Depth::k8, host::Depth::k16, host::Depth::k32}) {
        benchmark::RegisterBenchmark(
            ("read-back/" + bits(depth)).c_str(),
            [&, depth](benchmark::State& state) { read_back(state, context, depth); })
            ->Iterations(1)
            ->Repetitions(5)
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark(
            ("host's share/" + bits(depth)).c_str(),
            [&, depth](benchmark::State& state) { host_share(state, context, depth); })
            ->Iterations(500)
            ->Repetitions(5)
            ->UseRealTime()
            ->Unit(benchmark::kMillisecond);
    }
}

}  // namespace flumo::bench
