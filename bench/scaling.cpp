#include <benchmark/benchmark.h>

#include <barrier>
#include <string>
#include <thread>
#include <vector>

#include "bench/benches.h"

namespace flumo::bench {

namespace {

constexpr double kMillisecond = 1e-3;
constexpr FrameSize kSmall{640, 360};
constexpr int kFramesPerThread = 6;

/// One frame of the scene, after a first one that makes the programs and targets.
Cost second_frame(EffectRunner& runner, const Scene& scene, const FrameSize& size) {
    const auto instance = runner.host().new_instance();
    apply(scene, *instance, size.width, size.height, host::Depth::k8);
    const host::FrameRequest request = request_for(size, host::Depth::k8);
    host::World output;
    runner.render(*instance, request, output);
    return runner.render(*instance, request, output).command;
}

void frame_of(benchmark::State& state, EffectRunner& runner, const Scene& scene, const FrameSize& size) try {
    Cost cost;
    for ([[maybe_unused]] auto turn : state) {
        cost = second_frame(runner, scene, size);
        state.SetIterationTime(cost.wall * kMillisecond);
    }
    state.counters["cpu"] = cost.cpu;
    state.counters["megapixels"] = 1e-6 * size.width * size.height;
} catch (const host::HostError& error) {
    state.SkipWithError(error.what());
}

/// From when all threads have their contexts and programs to the end of the last frame.
Cost frames_on_threads(EffectRunner& runner, const FrameSize& size, int count) {
    const auto instance = runner.host().new_instance();
    Cost start;
    std::barrier ready(count, [&start]() noexcept { start = clock_now(); });
    {
        std::vector<std::jthread> threads;
        for (int i = 0; i < count; ++i) {
            threads.emplace_back([&] {
                host::World output;
                instance->render(request_for(size, host::Depth::k8), output);
                ready.arrive_and_wait();
                for (int frame = 0; frame < kFramesPerThread; ++frame)
                    instance->render(request_for(size, host::Depth::k8), output);
            });
        }
    }
    return clock_now() - start;
}

void on_threads(benchmark::State& state, EffectRunner& runner, const FrameSize& size, int count) {
    Cost cost;
    for ([[maybe_unused]] auto turn : state) {
        cost = frames_on_threads(runner, size, count);
        state.SetIterationTime(cost.wall * kMillisecond);
    }
    const int frames = count * kFramesPerThread;
    state.counters["frames_per_second"] = frames / (cost.wall * kMillisecond);
    state.counters["frame_cpu"] = cost.cpu / frames;
}

benchmark::internal::Benchmark* once(const std::string& name, auto work) {
    return benchmark::RegisterBenchmark(name.c_str(), work)
        ->Iterations(1)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond);
}

std::string text_of(const FrameSize& size) {
    return std::to_string(size.width) + "x" + std::to_string(size.height);
}

}  // namespace

void register_scaling(BenchContext& context) {
    EffectRunner& runner = context.runner();
    for (const int count : {1, 2, 4, 8}) {
        once("threads/" + std::to_string(count), [&runner, count](benchmark::State& state) {
            on_threads(state, runner, kSmall, count);
        })->Repetitions(3);
    }
    // The limit for the command line's render thread; bench/processes.py compares with it.
    for (const FrameSize& size : {kSmall, FrameSize{1920, 1080}}) {
        if (size.width > context.options().size.width) continue;
        once("alone/" + text_of(size),
             [&runner, size](benchmark::State& state) { on_threads(state, runner, size, 1); });
    }
    for (const int count : {1, 2, 4, 8, 16, 32, 64}) {
        once("lines/" + std::to_string(count), [&runner, count](benchmark::State& state) {
            frame_of(state, runner, lines_scene("lines", count, 1), kSmall);
        });
    }
    constexpr FrameSize kSizes[] = {{672, 378},   {960, 540},   {1280, 720},  {1920, 1080},
                                    {2560, 1440}, {3840, 2160}, {5760, 3240}, {7680, 4320}};
    for (const FrameSize& size : kSizes) {
        // A quick run leaves out large sizes.
        if (size.width > 3 * context.options().size.width && context.options().size != FrameSize{}) continue;
        once("size/" + text_of(size),
             [&runner, size](benchmark::State& state) { frame_of(state, runner, default_scene(), size); });
    }
}

}  // namespace flumo::bench
