// The state of a drag between two events, packed into the words that the host keeps for it.
#pragma once

#include <array>

#include "effect/gradient/value/gradient.h"

namespace flumo {

/// The dragged stop's whole content is kept, so that a stop that was lifted off can be put back.
struct DragState {
    A_long offset;   // pixels from the pointer to the stop's own pixel at the press
    A_long ordinal;  // the stop's place in the map, or kLiftedOff
    GradientStop stop;
};

inline constexpr A_long kLiftedOff = -1;

/// The four words of an event's continue_refcon: word 0 the offset, widened with its sign; then, low
/// half first, ordinal and kind, r and g, b and a, colours as float bits.
using DragWords = std::array<A_intptr_t, 4>;

DragWords PackDragState(const DragState& state);
DragState UnpackDragState(const DragWords& words);

}  // namespace flumo
