#include <benchmark/benchmark.h>

#include <algorithm>
#include <string>

#include "bench/benches.h"

namespace flumo::bench {

namespace {

constexpr int kLeastTurns = 2;
constexpr int kMostTurns = 9;
constexpr double kMillisecond = 1e-3;

FrameSize size_of(const Scene& scene, const BenchOptions& options) {
    const int divisor = scene.half_size ? 2 : 1;
    return {options.size.width / divisor, options.size.height / divisor};
}

/// The costs of one case so far, one entry per turn.
struct Turns {
    std::vector<Cost> reference;
    std::vector<Cost> main_draw;
    std::vector<Cost> bare;
    std::vector<Cost> whole;
    std::vector<Cost> call;
};

/// The reference's image, the bare GL work and the whole render command take turns in a changing order, so
/// that other load of the machine affects all of them.
class Case {
  public:
    Case(BenchContext& context, const Scene& scene, const FrameSize& size, host::Depth depth)
        : context_(context),
          bare_(context.bare(size, depth)),
          request_(request_for(size, depth)),
          instance_(context.runner().host().new_instance()) {
        apply(scene, *instance_, size.width, size.height, depth);
        context_.runner().render(
            *instance_, request_, output_,
            [this](PF_InData* in_data, PF_OutData*, PF_SmartRenderExtra*) { return bare_.load(in_data); });
        differing_pixels_ = bare_.differing_pixels();
        // Compiles the effect's program for this look.
        context_.runner().render(*instance_, request_, output_);
    }

    /// Pixels that differ between the small images of the effect's program and of the reference.
    int differing_pixels() const { return differing_pixels_; }

    Turns run() {
        const double once = cost_of([this] { turn(0); }).wall * kMillisecond;
        const int turns =
            std::clamp(static_cast<int>(context_.options().seconds_per_case / once), kLeastTurns, kMostTurns);
        for (int number = 1; number < turns; ++number)
            turn(number);
        return turns_;
    }

  private:
    void turn(int number) {
        constexpr void (Case::*kSides[])() = {&Case::draw_reference, &Case::draw_bare, &Case::draw_whole};
        for (int side = 0; side < 3; ++side)
            (this->*kSides[(number + side) % 3])();
    }

    void draw_reference() { turns_.reference.push_back(bare_.draw_reference()); }

    void draw_bare() {
        const BareCost cost = bare_.draw();
        turns_.main_draw.push_back(cost.main_draw);
        turns_.bare.push_back(cost.all);
    }

    void draw_whole() {
        const RenderCost cost = context_.runner().render(*instance_, request_, output_);
        turns_.whole.push_back(cost.command);
        turns_.call.push_back(cost.call);
    }

    BenchContext& context_;
    BareGl& bare_;
    host::FrameRequest request_;
    std::unique_ptr<host::Instance> instance_;
    host::World output_;
    int differing_pixels_ = 0;
    Turns turns_;
};

/// "NAME_wall", "NAME_cpu" and "NAME_own": medians in milliseconds; "NAME_least": the shortest wall time.
void count(benchmark::State& state, const std::string& name, const std::vector<Cost>& costs) {
    state.counters[name + "_wall"] = median(costs).wall;
    state.counters[name + "_least"] = least(costs).wall;
    state.counters[name + "_cpu"] = median(costs).cpu;
    state.counters[name + "_own"] = median(costs).own;
}

/// "image_ratio": CPU time of the reference's image over that of the effect's, the median of all turns, with
/// the least and the most.
void count_ratios(benchmark::State& state, const Turns& turns) {
    std::vector<double> ratios;
    for (size_t turn = 0; turn < turns.reference.size(); ++turn)
        ratios.push_back(turns.reference[turn].cpu / turns.main_draw[turn].cpu);
    state.counters["image_ratio"] = median(ratios);
    state.counters["image_ratio_least"] = std::ranges::min(ratios);
    state.counters["image_ratio_most"] = std::ranges::max(ratios);
}

void measure(benchmark::State& state, BenchContext& context, const Scene& scene, host::Depth depth) {
    const FrameSize size = size_of(scene, context.options());
    Turns turns;
    for ([[maybe_unused]] auto iteration : state) {
        Case measured(context, scene, size, depth);
        turns = measured.run();
        state.counters["differing_pixels"] = measured.differing_pixels();
        state.SetIterationTime(median(turns.whole).wall * kMillisecond);
    }
    state.counters["width"] = size.width;
    state.counters["height"] = size.height;
    state.counters["turns"] = static_cast<double>(turns.whole.size());
    count(state, "reference", turns.reference);
    count(state, "main", turns.main_draw);
    count(state, "bare", turns.bare);
    count(state, "whole", turns.whole);
    count(state, "call", turns.call);
    count_ratios(state, turns);
}

}  // namespace

void register_frames(BenchContext& context) {
    for (const host::Depth depth : {host::Depth::k8, host::Depth::k16, host::Depth::k32}) {
        for (const Scene& scene : standard_scenes()) {
            const std::string name =
                "frame/" + std::string(scene.name) + "/" + std::to_string(static_cast<int>(depth));
            benchmark::RegisterBenchmark(
                name.c_str(),
                [&context, &scene, depth](benchmark::State& state) { measure(state, context, scene, depth); })
                ->Iterations(1)
                ->UseManualTime()
                ->Unit(benchmark::kMillisecond);
        }
    }
}

}  // namespace flumo::bench
