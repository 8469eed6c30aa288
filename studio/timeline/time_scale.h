// Between frames and places on the screen.
#pragma once

#include <algorithm>
#include <cmath>

namespace flumo::studio {

/// Frames [from, to] over the pixels [left, left + width]; a frame stands at its own place.
struct TimeScale {
    double left = 0;
    double width = 1;
    double from = 0;
    double to = 1;

    double pixels_per_frame() const { return width / std::max(to - from, 1e-6); }
    double x_of(double frame) const { return left + (frame - from) * pixels_per_frame(); }
    double frame_at(double x) const { return from + (x - left) / pixels_per_frame(); }
    int nearest_frame(double x) const { return static_cast<int>(std::lround(frame_at(x))); }

    /// Frames between numbers of a ruler with at least `gap` pixels between them: 1, 2, 5, 10, 20, ...
    int ruler_step(double gap) const {
        double step = 1;
        for (int i = 0; step * pixels_per_frame() < gap && step < 1e9; ++i)
            step *= i % 3 == 1 ? 2.5 : 2;
        return static_cast<int>(step);
    }
};

}  // namespace flumo::studio
