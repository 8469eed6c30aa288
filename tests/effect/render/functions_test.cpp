// Functions of the main fragment text at thousands of points, against the same formula in double precision.
// Bounds were measured on llvmpipe and softpipe; the reason for each stands where it is used.
#include <gmock/gmock.h>

#include <cmath>

#include "effect/params/noise_generator.h"
#include "tests/effect/render/comparison.h"
#include "tests/effect/render/evaluate.h"
#include "tests/effect/render/frame_twin.h"
#include "tests/effect/render/points.h"

namespace flumo::test {
namespace {

using testing::ElementsAre;

double plain_distance(double a, double b) {
    return std::isnan(a) == std::isnan(b) ? std::fabs(a - b) : HUGE_VAL;
}

// Two numbers of 0 to 1 as places on a circle: a hash that just wraps is near, not far.
double circular_distance(double a, double b) {
    return std::min(std::fabs(a - b), 1 - std::fabs(a - b));
}

/// Compares the first channel of an expression with the twin's number.
template <class Twin>
void compare(const std::string& name, const std::string& expression, const std::vector<Point>& points,
             double tolerance, Twin expected, const ParamSnapshot& controls = {},
             double (*distance)(double, double) = plain_distance) {
    const auto got = evaluate(expression, points, controls);
    Comparison comparison(name, tolerance);
    for (size_t i = 0; i < points.size(); ++i)
        comparison.add_deviation(distance(got[i][0], expected(points[i])),
                                 [&] { return as_text(points[i]); });
}

// A sine's last bit is 6e-8, and the hashes multiply it by 43758.5453: 0.0026 a bit, and the product's own
// rounding adds up to 0.002; 0.0055 was seen. Arguments stay where a driver's reduction by pi is good. On
// other drivers the values of a sine hash differ.
TEST(Hash, SineHashesFollowTheirFormula) {
    if (!is_software_driver()) GTEST_SKIP() << driver_lines();
    const auto follow = [](const char* expression, const std::vector<Point>& points, auto expected) {
        compare(expression, expression, points, 0.0075, expected, {}, circular_distance);
    };
    // Lines and seeds as the program combines them.
    const auto lines = make_points(4000, 1, [](Numbers& n) {
        return Point{static_cast<float>(n.whole(1, 1000)), n.between(0, 300)};
    });
    const auto cells = make_points(4000, 3, [](Numbers& n) {
        return Point{static_cast<float>(n.whole(-12, 12)), static_cast<float>(n.whole(-12, 12))};
    });
    follow("vec4(rand(a.xy))", lines, [](const Point& p) { return twin::rand(p[0], p[1]); });
    follow("vec4(hash1(a.y))", lines, [](const Point& p) { return twin::hash1(p[1]); });
    follow("hash2(a.xy).xyxy", cells, [](const Point& p) { return twin::hash2(p[0], p[1]).x; });
    follow("hash2(a.xy).yxyx", cells, [](const Point& p) { return twin::hash2(p[0], p[1]).y; });
}

/// a: place, evolution, speed; b: scale, offset; c: type, loop, complexity.
const std::string kNoiseWithLoop =
    "vec4(noiseWithLoop(a.xy, int(c.x), a.z, int(c.y), b.xy, b.zw, a.w, int(c.z)))";

std::vector<Point> queries(int type, int loop) {
    return make_points(2000, static_cast<unsigned>(100 + type), [=](Numbers& n) {
        return Point{n.between(0, 1),
                     n.between(0, 1),
                     n.between(-800, 800),
                     n.between(-0.02f, 0.02f),
                     n.between(-2, 2),
                     n.between(0.5f, 1.5f),
                     n.between(-1, 1),
                     n.between(-1, 1),
                     static_cast<float>(type),
                     static_cast<float>(loop),
                     static_cast<float>(n.whole(1, 12))};
    });
}

twin::NoiseArguments as_arguments(const Point& p, int main_complexity) {
    return {{p[0], p[1]},   static_cast<int>(p[8]), p[2], static_cast<int>(p[9]),
            {p[4], p[5]},   {p[6], p[7]},           p[3], static_cast<int>(p[10]),
            main_complexity};
}

// Each step of a warp stretches the error of the one before; smoke moves the place along seamed noise and
// adds up to the 16th octave, so the last bit of a place grows a thousandfold.
const double kTolerances[] = {0, 5e-5, 1e-5, 3e-3, 2e-5};
static_assert(std::size(kTolerances) == kNoiseGeneratorCount + 1);

// The complexity that is handed over differs from the control, which Smoke and Worley follow all the same.
TEST(NoiseWithLoop, FollowsTheTwin) {
    constexpr int kComplexity = 15;
    for (int type = 1; type <= kNoiseGeneratorCount; ++type) {
        for (int loop : {0, 1, 2}) {  // only exactly 1 is on
            compare("type " + std::to_string(type) + ", loop " + std::to_string(loop), kNoiseWithLoop,
                    queries(type, loop), kTolerances[type],
                    [](const Point& p) {
                        return twin::noiseWithLoop(as_arguments(p, kComplexity), driver_hash2);
                    },
                    {.complexity = kComplexity});
        }
    }
}

// Without a feather a cut is a step, a height at the threshold itself counts as above it, and flags are on at
// exactly 1.
TEST(Functions, CutsWithoutAFeatherAreSteps) {
    const std::string cuts =
        "vec4(croppingAlpha(a.x, 1, 0.5, 0.0, 0, 0.0, 0.0), croppingAlpha(a.x, 0, 0.0, 0.0, 1, 0.5, 0.0), "
        "croppingAlpha(a.x, 255, 0.9, 0.0, 2, 0.1, 0.0), 0)";
    EXPECT_THAT(evaluate(cuts, std::vector<Point>{{0.4999F}, {0.5F}, {0.5001F}}),
                ElementsAre(Texel{0, 1, 1}, Texel{1, 0, 1}, Texel{1, 0, 1}));
}

// A tiny negative position wraps to the start of the ramp, not to its end.
TEST(Functions, WrappedPositionsStayBelowOne) {
    const std::vector<Point> points{{-1e-9f}, {0}, {1}, {-0.25f}, {-3}, {2.75f}};
    std::vector<float> got;
    for (const Texel& texel : evaluate("vec4(wrapped(a.x))", points))
        got.push_back(texel[0]);
    EXPECT_THAT(got, ElementsAre(0, 0, 0, 0.75f, 0, 0.75f));
}

TEST(Functions, IsolineHasAPeriodAndNeedsASlope) {
    const std::vector<Point> point(1);
    EXPECT_EQ(evaluate("vec4(isoline(3.0, 0.1, 0.5, 2.5, 1.0))", point)[0][0], 0) << "another period";
    EXPECT_EQ(evaluate("vec4(isoline(0.5, 0.0, 0.5, 1.0, 5.0))", point)[0][0], 1)
        << "a flat field has no line";
}

}  // namespace
}  // namespace flumo::test
