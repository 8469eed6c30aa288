#pragma once

#include <functional>

#include "tests/glsl/glsl_bench.h"
#include "tests/glsl/noise_twin.h"

// One fragment of the main program a second time, in double precision.
namespace flumo::twin {

struct Colour {
    double r, g, b, a;
};

struct Height {
    double value;
    double coverage;
};

// rand of a line's number and a seed. It is a parameter so that a test can hand over the driver's own.
using LineRandom = std::function<double(float line, float seed)>;

// Noise types: all but Voronoi. Slopes are differences within a block of two by two fragments. A driver may
// take them from either row or column of the block, so they are comparable only where the height is a plane.
class FrameTwin {
  public:
    FrameTwin(const test::Scene& scene, LineRandom random, int width, int height);

    Height height_at(Vec2 uv);
    // The fragment of column x and row y.
    Colour colour_at(int x, int y);
    Vec2 uv_at(double x, double y) const;

    // How near the last height or fragment was to a hard decision (a cut without feather, a mask, a wrap), in
    // units of the number that was decided on. Where it is tiny the driver may have decided otherwise.
    double margin() const { return margin_; }

  private:
    double noise_height(Vec2 uv) const;
    double layer_height(const Colour& layer, double gain) const;
    double cut_step(double low, double high, double value);
    double cropping(double value, bool bottom, double bottom_threshold, double bottom_feather, bool top,
                    double top_threshold, double top_feather);
    double wrapped(double position);
    Colour noise_colour(Vec2 uv, Vec2 slope, double height);
    Colour lines_over(Colour under, Vec2 uv, Vec2 slope, double height);
    double line_mask(Vec2 uv, int line);
    double gradient_position(int line);
    Colour blended(const Colour& under, const Colour& line, double alpha) const;
    Colour layer_colour(const test::Image& layer, Vec2 uv) const;
    void decided(double distance);

    const test::Scene& scene_;
    const test::MainUniforms& u_;
    LineRandom random_;
    int width_;
    int height_;
    double margin_ = 1;
};

}  // namespace flumo::twin
