// The small effect's arbitrary data: one number on the heap, reached from a handle.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string>

#include "tests/judge/broken/loans.h"

namespace flumo::broken {

struct Shade {
    double level = 0.25;
};

inline void* const kRefcon = reinterpret_cast<void*>(0x5348414445);

/// Read by one faulty effect only, which no thread shares.
inline thread_local Shade* newest_shade = nullptr;

inline PF_Err new_shade(const PF_InData& in, PF_ArbitraryH* place, Shade* content) {
    newest_shade = content;
    const PF_Err error = new_handle(in, content, place, "KeepsHalfAValue");
    if (error && !is("ShallowCopy")) delete content;
    return error;
}

/// Calls `use` with the number that a handle leads to.
template <class Use>
PF_Err with_shade(const PF_InData& in, PF_ArbitraryH handle, Use use) {
    return with_locked<Shade*>(in, handle, [&](Shade* shade) { use(*shade); });
}

inline PF_Err dispose_shade(const PF_InData& in, PF_ArbitraryH handle) {
    const PF_Err error = with_shade(in, handle, [](Shade& shade) {
        if (is("ShallowCopy")) shade.level = 9;
        if (is("DisposesOfTheNewest") && newest_shade != &shade && newest_shade) newest_shade->level += 1;
        if (newest_shade == &shade) newest_shade = nullptr;
        if (!is("ShallowCopy")) delete &shade;
    });
    if (!error) in.utils->host_dispose_handle(handle);
    return error;
}

inline std::string text_of(const Shade& shade) {
    return "shade " + std::to_string(shade.level);
}

inline PF_Err unflatten_shade(const PF_InData& in, const void* bytes, A_u_long size, PF_ArbitraryH* place) {
    Shade shade;
    if (is("TrustsStoredBytes") && size < sizeof shade) std::abort();
    const auto* first = static_cast<const char*>(bytes);
    if (is("ReadsTheLastBytes") && size >= sizeof shade) first += size - sizeof shade;
    if (size >= sizeof shade) std::memcpy(&shade, first, sizeof shade);
    // Only a click makes numbers this large.
    if (is("CutsStoredValues")) shade.level = std::min(shade.level, 0.8);
    return new_shade(in, place, new Shade(shade));
}

inline PF_Err interpolate_shades(const PF_InData& in, const PF_ArbParamsExtra& extra) {
    const auto& p = extra.u.interp_func_params;
    double left = 0;
    double right = 0;
    PF_Err error = with_shade(in, p.left_arbH, [&](Shade& shade) { left = shade.level; });
    if (!error) error = with_shade(in, p.right_arbH, [&](Shade& shade) { right = shade.level; });
    if (is("KeepsFilledSlot") && *p.interpPH) return error;
    const double t = is("InterpolatesWrongly") ? 1 - p.tF : p.tF;
    return error ? error
                 : new_shade(in, p.interpPH, new Shade{left == right ? left : left + (right - left) * t});
}

inline PF_Err compare_shades(const PF_InData& in, const PF_ArbParamsExtra& extra) {
    const auto& p = extra.u.compare_func_params;
    Shade a;
    Shade b;
    PF_Err error = with_shade(in, p.a_arbH, [&](Shade& shade) { a = shade; });
    if (!error) error = with_shade(in, p.b_arbH, [&](Shade& shade) { b = shade; });
    const bool equal = is("ComparesOneWay") ? !(a.level < b.level) : !std::memcmp(&a, &b, sizeof a);
    if (!error) *p.compareP = equal ? PF_ArbCompare_EQUAL : PF_ArbCompare_NOT_EQUAL;
    return error;
}

inline PF_Err answer_arbitrary(const PF_InData& in, const PF_ArbParamsExtra& extra) {
    const auto& u = extra.u;
    switch (extra.which_function) {
        case PF_Arbitrary_NEW_FUNC:
            return new_shade(in, u.new_func_params.arbPH, new Shade{0.75});
        case PF_Arbitrary_DISPOSE_FUNC:
            return dispose_shade(in, u.dispose_func_params.arbH);
        case PF_Arbitrary_COPY_FUNC: {
            Shade* copy = nullptr;
            const PF_Err error = with_shade(in, u.copy_func_params.src_arbH, [&](Shade& shade) {
                copy = is("ShallowCopy") ? &shade : new Shade(shade);
            });
            return error ? error : new_shade(in, u.copy_func_params.dst_arbPH, copy);
        }
        case PF_Arbitrary_FLAT_SIZE_FUNC:
            *u.flat_size_func_params.flat_data_sizePLu = sizeof(Shade);
            return PF_Err_NONE;
        case PF_Arbitrary_FLATTEN_FUNC:
            return with_shade(in, u.flatten_func_params.arbH, [&](Shade& shade) {
                auto* bytes = static_cast<char*>(u.flatten_func_params.flat_dataPV);
                std::memcpy(bytes, &shade, sizeof shade);
                if (is("FlattensTooMuch")) bytes[sizeof shade] = 1;
            });
        case PF_Arbitrary_UNFLATTEN_FUNC:
            return unflatten_shade(in, u.unflatten_func_params.flat_dataPV,
                                   u.unflatten_func_params.buf_sizeLu, u.unflatten_func_params.arbPH);
        case PF_Arbitrary_INTERP_FUNC:
            return interpolate_shades(in, extra);
        case PF_Arbitrary_COMPARE_FUNC:
            return compare_shades(in, extra);
        case PF_Arbitrary_PRINT_SIZE_FUNC:
            return with_shade(in, u.print_size_func_params.arbH, [&](Shade& shade) {
                *u.print_size_func_params.print_sizePLu =
                    static_cast<A_u_long>(text_of(shade).size() + (is("PrintSizeWrong") ? 9 : 1));
            });
        case PF_Arbitrary_PRINT_FUNC:
            return with_shade(in, u.print_func_params.arbH, [&](Shade& shade) {
                if (is("ChangesWhenPrinted")) shade.level += 1;
                std::strncpy(u.print_func_params.print_bufferPC, text_of(shade).c_str(),
                             u.print_func_params.print_sizeLu);
            });
        default:
            return is("TakesAnySelector") ? PF_Err_NONE : PF_Err_UNRECOGNIZED_PARAM_TYPE;
    }
}

}  // namespace flumo::broken
