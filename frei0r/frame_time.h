// The times that host programs give, in frames of a scene.
#pragma once

#include "host/values/frame_rate.h"

namespace flumo::frei0r {

/// Seconds, as the interface says, of a time that the code at `caller` gave. libavfilter gives milliseconds.
double seconds_given_by(const void* caller, double time);

/// The frame at that time, which may be a fraction; a whole one where the time is within a millisecond of it,
/// since some programs round their times to milliseconds. 0 for a time that is no number or beyond all
/// frames.
double frame_at(double seconds, const host::FrameRate& rate);

}  // namespace flumo::frei0r
