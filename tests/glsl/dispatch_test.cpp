#include <gmock/gmock.h>

#include <cmath>
#include <limits>

#include "tests/glsl/comparison.h"
#include "tests/glsl/driver_cells.h"
#include "tests/glsl/glsl_bench.h"
#include "tests/glsl/noise_twin.h"
#include "tests/glsl/points.h"

namespace flumo::test {
namespace {

// a: place, evolution, speed; b: scale, offset; c: type, loop, complexity.
const std::string kNoiseWithLoop =
    "vec4(noiseWithLoop(a.xy, int(c.x), a.z, int(c.y), b.xy, b.zw, a.w, int(c.z)))";

constexpr float kInfinity = std::numeric_limits<float>::infinity();

twin::NoiseArguments as_arguments(const Point& p, const MainUniforms& uniforms) {
    return {{p[0], p[1]},       static_cast<int>(p[8]), p[2], static_cast<int>(p[9]),
            {p[4], p[5]},       {p[6], p[7]},           p[3], static_cast<int>(p[10]),
            uniforms.complexity};
}

std::vector<Point> queries(int type, int loop, unsigned seed) {
    return make_points(2000, seed, [=](Numbers& n) {
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

const char* const kNames[] = {"", "Fluid", "Voronoi", "Smoke", "Worley"};
const double kTolerances[] = {0, 1e-4, 1e-4, 5e-3, 1e-4};

// The complexity that is handed over differs from the uniform, which Smoke and Worley follow all the same.
TEST(NoiseWithLoop, FollowsTheTwin) {
    const DriverCells cells(28);
    const MainUniforms uniforms{.complexity = 15};
    for (int type = 1; type <= 4; ++type) {
        for (int loop : {0, 1, 2}) {  // only exactly 1 is on
            const auto points = queries(type, loop, static_cast<unsigned>(100 + type));
            const auto got = GlslBench::shared().evaluate(kNoiseWithLoop, points, uniforms);
            Comparison comparison(std::string(kNames[type]) + ", loop " + std::to_string(loop),
                                  kTolerances[type]);
            for (size_t i = 0; i < points.size(); ++i) {
                comparison.add(got[i][0], twin::noiseWithLoop(as_arguments(points[i], uniforms), cells),
                               [&] { return as_text(points[i]); });
            }
        }
    }
}

TEST(NoiseWithLoop, WholeTurnsChangeNothing) {
    for (int type = 1; type <= 4; ++type) {
        auto points = queries(type, 1, 200);
        // Quarters of a degree: adding turns to them is exact.
        for (Point& point : points)
            point[2] = std::floor(point[2] * 4) / 4;
        const auto before = GlslBench::shared().evaluate(kNoiseWithLoop, points);
        for (Point& point : points)
            point[2] += 720;
        const auto after = GlslBench::shared().evaluate(kNoiseWithLoop, points);
        // The turns are divided away in single precision: the place in the cycle is known to 2e-7 of it.
        Comparison comparison(std::string(kNames[type]) + ", two turns later", kTolerances[type]);
        for (size_t i = 0; i < points.size(); ++i) {
            comparison.add(after[i][0], before[i][0], [&] { return as_text(points[i]); });
        }
    }
}

TEST(NoiseWithLoop, UnknownTypesAreFinite) {
    for (int type : {-1, 0, 5, 6}) {
        for (const Texel& texel : GlslBench::shared().evaluate(kNoiseWithLoop, queries(type, 0, 300))) {
            ASSERT_TRUE(std::isfinite(texel[0])) << "type " << type;
        }
    }
}

TEST(NoiseWithLoop, WorleyWithoutCellsIsFinite) {
    const auto got = GlslBench::shared().evaluate(kNoiseWithLoop, queries(4, 1, 301), {.complexity = 0});
    for (const Texel& texel : got)
        ASSERT_TRUE(std::isfinite(texel[0]));
}

struct Spread {
    double mean = 0;
    double deviation = 0;
};

Spread spread(const std::vector<double>& values) {
    Spread result;
    for (const double value : values)
        result.mean += value / static_cast<double>(values.size());
    for (const double value : values)
        result.deviation += std::pow(value - result.mean, 2);
    result.deviation = std::sqrt(result.deviation / static_cast<double>(values.size()));
    return result;
}

// An offset of a million puts the place at 1000, where single precision and the sines in hashes are too
// coarse for values to agree. The noise must still be one: the same mean and the same spread.
TEST(NoiseWithLoop, FarPlacesKeepTheirCharacter) {
    for (int type = 1; type <= 4; ++type) {
        for (int complexity : {1, 4, 100}) {
            const MainUniforms uniforms{.complexity = complexity};
            auto points = queries(type, 0, 400);
            for (size_t i = 0; i < points.size(); ++i) {
                points[i][6] = i % 2 == 0 ? 1000.0f : -1000.0f;
                points[i][7] = i % 3 == 0 ? 1000.0f : -1000.0f;
                points[i][10] = static_cast<float>(complexity);
            }
            std::vector<double> got, expected;
            for (const Texel& texel : GlslBench::shared().evaluate(kNoiseWithLoop, points, uniforms)) {
                got.push_back(texel[0]);
            }
            for (const Point& point : points) {
                expected.push_back(noiseByType(as_arguments(point, uniforms), [](int x, int y) {
                    return twin::hash2(static_cast<float>(x), static_cast<float>(y));
                }));
            }
            // The means of 2000 values of a spread of 0.3 differ by 0.01 by chance.
            EXPECT_NEAR(spread(got).mean, spread(expected).mean, 0.04) << kNames[type] << ' ' << complexity;
            EXPECT_NEAR(spread(got).deviation, spread(expected).deviation, 0.04)
                << kNames[type] << ' ' << complexity;
        }
    }
}

// A Scale of 0 makes the factor infinite. Such points have no value, but they end, and their neighbours,
// which a driver may shade together with them, are not touched.
TEST(NoiseWithLoop, InfiniteScaleEndsAndStaysAlone) {
    const DriverCells cells(28);
    for (int type = 1; type <= 4; ++type) {
        auto points = queries(type, 1, 500);
        const auto clean = GlslBench::shared().evaluate(kNoiseWithLoop, points);
        for (size_t i = 0; i < points.size(); i += 3)
            points[i][4] = i % 2 == 0 ? kInfinity : -kInfinity;
        const auto got = GlslBench::shared().evaluate(kNoiseWithLoop, points);
        for (size_t i = 0; i < points.size(); ++i) {
            if (i % 3 == 0) continue;
            ASSERT_EQ(got[i][0], clean[i][0]) << kNames[type] << " at " << as_text(points[i]);
        }
    }
}

}  // namespace
}  // namespace flumo::test
