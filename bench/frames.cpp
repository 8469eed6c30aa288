#include <benchmark/benchmark.h>

#include <algorithm>
#include <string>

#include "bench/benches.h"

namespace flumo::bench {

namespace {

constexpr int kMostPairs = 9;
constexpr double kMillisecond = 1e-3;

/// What one case has seen so far. Both sides take turns, so that what else the machine does meets both.
struct Pairs {
    std::vector<Cost> main_draw;
    std::vector<Cost> bare;
    std::vector<Cost> whole;
    std::vector<Cost> call;
};

class Case {
  public:
    Case(Theatre& theatre, const Scene& scene, const FrameSize& size, host::Depth depth)
        : theatre_(theatre),
          bare_(theatre.bare(size, depth)),
          request_(request_for(size, depth)),
          instance_(theatre.stage().host().new_instance()) {
        apply(scene, *instance_, size.width, size.height, depth);
        theatre_.stage().render(
            *instance_, request_, output_,
            [this](PF_InData* in_data, PF_OutData*, PF_SmartRenderExtra*) { return bare_.load(in_data); });
    }

    Pairs run() {
        const Cost start = clock_now();
        pair();
        const double once = (clock_now() - start).wall * kMillisecond;
        const int more =
            std::clamp(static_cast<int>(theatre_.options().seconds_per_case / once), 1, kMostPairs) - 1;
        for (int i = 0; i < more; ++i)
            pair();
        return pairs_;
    }

  private:
    void pair() {
        const bool bare_first = pairs_.bare.size() % 2 == 0;
        if (bare_first) draw_bare();
        draw_whole();
        if (!bare_first) draw_bare();
    }

    void draw_bare() {
        const BareCost cost = bare_.draw();
        pairs_.main_draw.push_back(cost.main_draw);
        pairs_.bare.push_back(cost.all);
    }

    void draw_whole() {
        const RenderCost cost = theatre_.stage().render(*instance_, request_, output_);
        pairs_.whole.push_back(cost.command);
        pairs_.call.push_back(cost.call);
    }

    Theatre& theatre_;
    BareGl& bare_;
    host::FrameRequest request_;
    std::unique_ptr<host::Instance> instance_;
    host::World output_;
    Pairs pairs_;
};

/// "NAME_wall", "NAME_cpu" and "NAME_own": medians in milliseconds; "NAME_least": the shortest wall time.
void count(benchmark::State& state, const std::string& name, const std::vector<Cost>& costs) {
    state.counters[name + "_wall"] = median(costs).wall;
    state.counters[name + "_least"] = least(costs).wall;
    state.counters[name + "_cpu"] = median(costs).cpu;
    state.counters[name + "_own"] = median(costs).own;
}

void measure(benchmark::State& state, Theatre& theatre, const Scene& scene, host::Depth depth) {
    Pairs pairs;
    for ([[maybe_unused]] auto turn : state) {
        pairs = Case(theatre, scene, theatre.options().size, depth).run();
        state.SetIterationTime(median(pairs.whole).wall * kMillisecond);
    }
    state.counters["pairs"] = static_cast<double>(pairs.whole.size());
    count(state, "main", pairs.main_draw);
    count(state, "bare", pairs.bare);
    count(state, "whole", pairs.whole);
    count(state, "call", pairs.call);
}

}  // namespace

void register_frames(Theatre& theatre) {
    for (const host::Depth depth : {host::Depth::k8, host::Depth::k16, host::Depth::k32}) {
        for (const Scene& scene : standard_scenes()) {
            const std::string name =
                "frame/" + std::string(scene.name) + "/" + std::to_string(static_cast<int>(depth));
            benchmark::RegisterBenchmark(
                name.c_str(),
                [&theatre, &scene, depth](benchmark::State& state) { measure(state, theatre, scene, depth); })
                ->Iterations(1)
                ->UseManualTime()
                ->Unit(benchmark::kMillisecond);
        }
    }
}

}  // namespace flumo::bench
