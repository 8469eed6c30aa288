// Access to a world's pixels. A getter of the wrong depth succeeds with a null pointer.
#include <stdexcept>

#include "host/callbacks/answer.h"
#include "host/callbacks/refuse.h"
#include "host/callbacks/tables.h"
#include "host/values/world.h"

namespace flumo::host {

namespace {

PF_Err with_depth(Call& call, const PF_EffectWorld* world, auto&& use) {
    if (!world) return misused(call, MisuseKind::kWrongArgument, "asked for the pixels of a null world");
    try {
        use(record_depth(*world));
        return PF_Err_NONE;
    } catch (const std::invalid_argument&) {
        return misused(call, MisuseKind::kWrongArgument,
                       "asked for the pixels of a world that is not this host's");
    }
}

template <class Pixel>
PF_Err get_pixels(Callback which, Depth depth, PF_EffectWorld* world, PF_PixelPtr pixels, Pixel** out) {
    return answer(
        which,
        [&](Call& call) {
            return with_depth(call, world, [&](Depth actual) {
                void* first = pixels ? pixels : world->data;
                *out = actual == depth ? static_cast<Pixel*>(first) : nullptr;
            });
        },
        [&] { *out = nullptr; });
}

PF_Err get_pixel_data8(PF_EffectWorld* world, PF_PixelPtr pixels, PF_Pixel8** out) {
    return get_pixels(Callback::kGetPixelData8, Depth::k8, world, pixels, out);
}

PF_Err get_pixel_data16(PF_EffectWorld* world, PF_PixelPtr pixels, PF_Pixel16** out) {
    return get_pixels(Callback::kGetPixelData16, Depth::k16, world, pixels, out);
}

PF_Err get_pixel_data_float(PF_EffectWorld* world, PF_PixelPtr pixels, PF_PixelFloat** out) {
    return get_pixels(Callback::kGetPixelDataFloat, Depth::k32, world, pixels, out);
}

PF_Err get_pixel_format(const PF_EffectWorld* world, PF_PixelFormat* format) {
    return answer(
        Callback::kGetPixelFormat,
        [&](Call& call) {
            return with_depth(call, world, [&](Depth depth) { *format = pixel_format(depth); });
        },
        [&] { *format = PF_PixelFormat_INVALID; });
}

PF_WorldSuite2 filled_world_suite() {
    PF_WorldSuite2 suite{};
    refuse(suite.PF_NewWorld, suite.PF_DisposeWorld);
    suite.PF_GetPixelFormat = get_pixel_format;
    return suite;
}

}  // namespace

const PF_PixelDataSuite1& pixel_data_suite() {
    static const PF_PixelDataSuite1 suite{get_pixel_data8, get_pixel_data16, get_pixel_data_float};
    return suite;
}

const PF_WorldSuite2& world_suite() {
    static const PF_WorldSuite2 suite = filled_world_suite();
    return suite;
}

}  // namespace flumo::host
