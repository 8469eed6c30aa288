// A frame a second time, in double precision: from the controls' values to the delivered pixels. It follows
// the texts of the programs and the arithmetic before and after them, and shares nothing with either.
#pragma once

#include <optional>
#include <vector>

#include "tests/effect/render/effect_fixture.h"
#include "tests/effect/render/noise_twin.h"

namespace flumo::twin {

/// Straight unless it says otherwise.
struct Colour {
    double r, g, b, a;
};

/// How near a value came to a hard decision (a cut without feather, a mask, a wrap), in units of the number
/// that was decided on. Where it is tiny the driver may have decided otherwise.
struct Margin {
    double nearest = 1;
    void decided(double distance);
};

/// Both cuts of a height; a cut that is off is empty.
struct Cut {
    double threshold, feather;
};
struct Cuts {
    std::optional<Cut> bottom, top;
};

/// 0 on the nearest of the contours ref + whole number, 1 away from it.
double isoline(double value, double slope, double ref, double width);

/// A layer as the program samples it, or a ramp: straight colour at full scale 1, linear between centres.
struct Image {
    int width = 0;
    std::vector<Colour> texels{};
};

class FrameTwin {
  public:
    /// `shape` is that of the delivered frame.
    FrameTwin(const test::FrameCase& frame_case, const host::WorldShape& shape);

    /// Straight colour, not rounded to the depth. Nothing where the pixel hangs on a decision that is too
    /// close to foresee. Slopes are differences within a block of two by two fragments; a driver may take
    /// them from either row or column of the block, so lines and reflections need a height that is a plane.
    std::optional<Colour> pixel(int x, int y);

  private:
    struct Height {
        double value, coverage;
        Margin margin;
    };
    /// Premultiplied.
    struct Fragment {
        Colour colour;
        bool decided;
    };

    double number(Section control) const { return numbers_[static_cast<size_t>(control)]; }
    double share(Section control) const { return number(control) / 100; }
    int whole(Section control) const { return static_cast<int>(number(control)); }
    /// A switch that travels as a byte, and one that is only asked whether it is off.
    bool byte_on(Section control) const { return static_cast<uint8_t>(whole(control)) == 1; }
    bool on(Section control) const { return number(control) != 0; }

    void take(const test::Look& look);
    Cuts cuts(Section bottom, Section top) const;
    Vec2 uv_at(int x, int y) const;
    const Height& height_at(int x, int y);
    Height new_height(Vec2 uv) const;
    double noise_height(Vec2 uv) const;
    Colour layer_colour(const Image& layer, Vec2 uv, Section lightness, Section alpha) const;
    Colour noise_colour(Vec2 uv, Vec2 slope, double height, Margin& margin) const;
    Colour lines_over(Colour under, Vec2 uv, Vec2 slope, double height, Margin& margin) const;
    double line_mask(Vec2 uv, int line, Margin& margin) const;
    double gradient_position(int line, Margin& margin) const;
    double jitter(int line, double seed) const;
    const Fragment& fragment(int x, int y);

    std::vector<double> numbers_;
    Image layer1_, layer2_, layer3_, noise_ramp_, lines_ramp_;
    host::WorldShape shape_;
    Vec2 full_;  // the whole frame, delivered pixels
    double downsample_x_;
    std::vector<std::optional<Height>> heights_;
    std::vector<std::optional<Fragment>> fragments_;
};

}  // namespace flumo::twin
