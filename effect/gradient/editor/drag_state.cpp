#include "effect/gradient/editor/drag_state.h"

#include <bit>

namespace flumo {
namespace {

A_intptr_t Pair(uint32_t low, uint32_t high) {
    return static_cast<A_intptr_t>(uint64_t{high} << 32 | low);
}

uint32_t Low(A_intptr_t word) {
    return static_cast<uint32_t>(word);
}
uint32_t High(A_intptr_t word) {
    return static_cast<uint32_t>(static_cast<uint64_t>(word) >> 32);
}

uint32_t Bits(float value) {
    return std::bit_cast<uint32_t>(value);
}
float Float(uint32_t bits) {
    return std::bit_cast<float>(bits);
}

}  // namespace

DragWords PackDragState(const DragState& state) {
    const GradientStop& stop = state.stop;
    return {state.offset, Pair(static_cast<uint32_t>(state.ordinal), static_cast<uint32_t>(stop.kind)),
            Pair(Bits(stop.r), Bits(stop.g)), Pair(Bits(stop.b), Bits(stop.a))};
}

DragState UnpackDragState(const DragWords& words) {
    return {.offset = static_cast<A_long>(words[0]),
            .ordinal = static_cast<A_long>(Low(words[1])),
            .stop = {static_cast<int32_t>(High(words[1])), Float(Low(words[2])), Float(High(words[2])),
                     Float(Low(words[3])), Float(High(words[3]))}};
}

}  // namespace flumo
