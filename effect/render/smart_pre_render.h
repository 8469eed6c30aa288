// Smart pre-render: checking out the input layer with the host's unchanged request.
#pragma once

#include "effect_api/effect.h"
#include "effect_api/smart.h"

namespace flumo {

/// The id under which the input layer is checked out here and fetched by SmartRender.
inline constexpr A_long kInputCheckoutId = 0;

/// Checks out the input layer at the current time and unites its rectangles into the output. Returns the
/// host's error, with the output unchanged. Takes no lock; may run while frames are rendered.
PF_Err SmartPreRender(PF_InData* in_data, PF_PreRenderExtra* extra);

/// Grows `destination` to hold `source`. An empty destination becomes the source, whatever that holds; an
/// empty source changes nothing else.
void UnionLRect(const PF_LRect& source, PF_LRect& destination);

}  // namespace flumo
