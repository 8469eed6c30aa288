// The float iteration: one call of the effect's function for each pixel, on one thread or several.
#include <algorithm>
#include <atomic>
#include <stdexcept>
#include <thread>
#include <vector>

#include "host/callbacks/answer.h"
#include "host/callbacks/refuse.h"
#include "host/callbacks/tables.h"
#include "host/values/world.h"

namespace flumo::host {

namespace {

/// Below this many pixels a thread costs more than it saves.
constexpr int64_t kPixelsWorthThreads = 65536;

struct Iteration {
    const PF_EffectWorld& source;
    const PF_EffectWorld& target;
    PF_LRect area;
    void* refcon;
    PF_IteratePixelFloatFunc function;
};

PF_PixelFloat* float_row(const PF_EffectWorld& world, A_long y) {
    auto* first = reinterpret_cast<std::byte*>(world.data);
    return reinterpret_cast<PF_PixelFloat*>(first + static_cast<std::ptrdiff_t>(y) * world.rowbytes);
}

PF_Err iterate_rows(const Iteration& work, A_long top, A_long bottom) {
    for (A_long y = top; y < bottom; ++y) {
        PF_PixelFloat* in = float_row(work.source, y);
        PF_PixelFloat* out = float_row(work.target, y);
        for (A_long x = work.area.left; x < work.area.right; ++x) {
            if (const PF_Err error = work.function(work.refcon, x, y, in + x, out + x)) return error;
        }
    }
    return PF_Err_NONE;
}

PF_Err iterate_bands(Call& call, const Iteration& work, A_long threads) {
    const A_long rows = work.area.bottom - work.area.top;
    const auto edge = [&](A_long band) {
        return work.area.top + static_cast<A_long>(int64_t{rows} * band / threads);
    };
    std::atomic<PF_Err> first_error{PF_Err_NONE};
    {
        std::vector<std::jthread> bands;
        for (A_long band = 0; band < threads; ++band) {
            bands.emplace_back([&, band] {
                CurrentCall current(call);
                PF_Err none = PF_Err_NONE;
                if (const PF_Err error = iterate_rows(work, edge(band), edge(band + 1))) {
                    first_error.compare_exchange_strong(none, error);
                }
            });
        }
    }
    return first_error;
}

/// The part that lies in both worlds, and in `asked` when there is one.
PF_LRect common_area(const PF_EffectWorld& source, const PF_EffectWorld& target, const PF_Rect* asked) {
    PF_LRect area{0, 0, std::min(source.width, target.width), std::min(source.height, target.height)};
    if (asked) {
        area = {std::max(area.left, asked->left), std::max(area.top, asked->top),
                std::min(area.right, asked->right), std::min(area.bottom, asked->bottom)};
    }
    return area;
}

bool is_float_world(const PF_EffectWorld* world) {
    try {
        return world && world->data && record_depth(*world) == Depth::k32;
    } catch (const std::invalid_argument&) {
        return false;
    }
}

PF_Err iterate(PF_InData* in_data, A_long, A_long, PF_EffectWorld* source, const PF_Rect* asked, void* refcon,
               PF_IteratePixelFloatFunc function, PF_EffectWorld* target) {
    return answer(Callback::kIterateFloat, [&](Call& call) -> PF_Err {
        if (!in_data || in_data->effect_ref != call.ref()) {
            return misused(call, MisuseKind::kWrongCall, "iterated for a call that is not running");
        }
        if (!is_float_world(source) || !is_float_world(target)) {
            return misused(call, MisuseKind::kWrongArgument,
                           "iterated over a world that does not hold floats");
        }
        const Iteration work{*source, *target, common_area(*source, *target, asked), refcon, function};
        const int64_t rows = std::max(work.area.bottom - work.area.top, 0);
        const int64_t pixels = rows * std::max(work.area.right - work.area.left, 0);
        const auto threads =
            static_cast<A_long>(std::min<int64_t>(call.host.options().iterate_threads, rows));
        if (threads < 2 || pixels < kPixelsWorthThreads) {
            return iterate_rows(work, work.area.top, work.area.bottom);
        }
        return iterate_bands(call, work, threads);
    });
}

PF_iterateFloatSuite1 filled_suite() {
    PF_iterateFloatSuite1 suite{};
    refuse(suite.iterate_origin, suite.iterate_origin_non_clip_src);
    suite.iterate = iterate;
    return suite;
}

}  // namespace

const PF_iterateFloatSuite1& iterate_float_suite() {
    static const PF_iterateFloatSuite1 suite = filled_suite();
    return suite;
}

}  // namespace flumo::host
