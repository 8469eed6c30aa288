#include "frei0r/frame_time.h"

#include <dlfcn.h>

#include <cmath>
#include <limits>
#include <string_view>

namespace flumo::frei0r {
namespace {

constexpr double kMillisecond = 0.001;
constexpr double kLastFrame = std::numeric_limits<int>::max();

/// The name, without its folders, of the file whose code this is.
std::string_view file_of(const void* code) {
    Dl_info found{};
    if (dladdr(code, &found) == 0 || !found.dli_fname) return {};
    const std::string_view path = found.dli_fname;
    return path.substr(path.rfind('/') + 1);
}

}  // namespace

double seconds_given_by(const void* caller, double time) {
    const std::string_view file = file_of(caller);
    // A program called ffmpeg that calls us itself has the library linked in.
    const bool in_milliseconds = file.starts_with("libavfilter") || file.starts_with("ffmpeg");
    return in_milliseconds ? time * kMillisecond : time;
}

double frame_at(double seconds, const host::FrameRate& rate) {
    const double frames_per_second = static_cast<double>(rate.num) / rate.den;
    const double frame = seconds * frames_per_second;
    if (!(std::abs(frame) < kLastFrame)) return 0;
    const double whole = std::round(frame);
    return std::abs(frame - whole) <= kMillisecond * frames_per_second ? whole : frame;
}

}  // namespace flumo::frei0r
