#include <gmock/gmock.h>

#include <cmath>
#include <functional>

#include "tests/glsl/comparison.h"
#include "tests/glsl/driver_cells.h"
#include "tests/glsl/glsl_bench.h"
#include "tests/glsl/noise_twin.h"
#include "tests/glsl/points.h"

namespace flumo::test {
namespace {

using twin::Vec2;
using twin::Vec3;
using TwinAt = std::function<double(const Point&)>;

Vec3 xyz(const Point& p) {
    return {p[0], p[1], p[2]};
}

// Compares the first component of an expression with a twin at all points.
void compare(const std::string& name, const std::string& expression, const std::vector<Point>& points,
             const TwinAt& expected, double tolerance, const MainUniforms& uniforms = {}) {
    const auto got = GlslBench::shared().evaluate(expression, points, uniforms);
    Comparison comparison(name, tolerance);
    for (size_t i = 0; i < points.size(); ++i) {
        comparison.add(got[i][0], expected(points[i]), [&] { return as_text(points[i]); });
    }
}

std::vector<Point> cube(float reach, unsigned seed, size_t count = 5000) {
    return make_points(count, seed, [=](Numbers& n) {
        return Point{n.between(-reach, reach), n.between(-reach, reach), n.between(-reach, reach)};
    });
}

TEST(Simplex, FollowsTheTwin) {
    auto points = cube(30, 1, 8000);
    points.insert(points.end(),
                  {{0, 0, 0}, {0.25f, 0.25f, 0}, {0.3f, 0.3f, 0.3f}, {2, 2, -4}, {0.5f, 0, 0.5f}});
    compare(
        "simplex", "vec4(simplex(a.xyz))", points, [](const Point& p) { return twin::simplex(xyz(p)); },
        1e-4);
}

// Lattice coordinates beyond 289 wrap; places there are known to 3e-5 only.
TEST(Simplex, FollowsTheTwinFarOut) {
    compare(
        "simplex, far out", "vec4(simplex(a.xyz))", cube(400, 3, 8000),
        [](const Point& p) { return twin::simplex(xyz(p)); }, 1e-3);
}

TEST(Simplex, SumsFollowTheTwin) {
    const auto points = cube(6, 2);
    compare(
        "fbm3", "vec4(fbm3(a.xyz))", points, [](const Point& p) { return twin::fbm3(xyz(p)); }, 1e-5);
    compare(
        "fbm5", "vec4(fbm5(a.xyz))", points, [](const Point& p) { return twin::fbm5(xyz(p)); }, 1e-5);
}

// a.xy place, a.z evolution, a.w speed.
std::vector<Point> places_in_time(float reach, float degrees, unsigned seed, size_t count = 3000) {
    return make_points(count, seed, [=](Numbers& n) {
        return Point{n.between(-reach, reach), n.between(-reach, reach), n.between(-degrees, degrees),
                     n.between(-0.02f, 0.02f)};
    });
}

// The same points with a fifth number.
std::vector<Point> with(std::vector<Point> points, int number) {
    for (Point& point : points)
        point[4] = static_cast<float>(number);
    return points;
}

TEST(Fluid, FollowsTheTwin) {
    const auto points = places_in_time(3, 720, 10);
    // Each warp stretches the error of the one before, up to twice where lines run apart.
    const std::vector<std::pair<int, double>> kinds = {
        {0, 1e-6}, {1, 1e-6}, {2, 5e-6}, {3, 1e-5}, {4, 1e-5}, {7, 2e-5}, {10, 5e-5}, {30, 1e-3}, {100, 0.3}};
    for (const auto& kind : kinds) {
        const int complexity = kind.first;
        compare(
            "fliud_noise, complexity " + std::to_string(complexity),
            "vec4(fliud_noise(a.xy, a.z, a.w, vec2(1.0, 0.7), int(b.x)))", with(points, complexity),
            [&](const Point& p) {
                return twin::fliud_noise({p[0], p[1]}, p[2], p[3], {1, 0.7f}, complexity);
            },
            kind.second);
    }
}

// With no width the division by it overflows and the nearest point wins.
TEST(Voronoi, FollowsTheTwin) {
    const DriverCells cells(33);
    const auto points = places_in_time(30, 40, 20);
    for (int percent : {0, 1, 4, 50, 100}) {
        compare(
            "voronoi, width " + std::to_string(percent) + " %", "vec4(voronoi(a.xy, a.z, b.x / 100.0))",
            with(points, percent),
            [&](const Point& p) {
                return twin::voronoi({p[0], p[1]}, p[2], percent / 100.0, cells);
            },
            1e-5);
    }
}

// Smoke moves the place along seamed noise, step by step, and adds up to the 16th octave: the last bit of a
// place near 2 grows a thousandfold.
TEST(Smoke, FollowsTheTwin) {
    const auto points = places_in_time(2, 1, 30, 2000);
    for (int complexity : {0, 1, 4, 9, 10, 15, 20, 100}) {
        compare("getSmokeNoise, complexity " + std::to_string(complexity), "vec4(getSmokeNoise(a.xy, a.z))",
                points,
                [&](const Point& p) {
                    return twin::getSmokeNoise({p[0], p[1]}, p[2], complexity);
                },
                complexity < 100 ? 3e-3 : 1e-2, {.complexity = complexity});
    }
}

TEST(Perlin, FollowsTheTwin) {
    auto points = cube(50, 40, 8000);
    // As the jitter of colours asks: any position, a seed up to 100000, and the slice 0.
    for (size_t i = 0; i < 1000; ++i)
        points[i] = {points[i][0] * 20, std::floor(points[i][1] * 1000) + 50005, 0};
    compare(
        "perlinNoise", "vec4(perlinNoise(a.xyz))", points,
        [](const Point& p) { return twin::perlinNoise(xyz(p)); }, 1e-6);
}

TEST(Worley, FollowsTheTwin) {
    for (int freq : {1, 2, 3, 7, 13, 400}) {
        compare(
            "worleyNoise, freq " + std::to_string(freq), "vec4(worleyNoise(a.xyz, b.x))",
            with(cube(40, 50), freq), [&](const Point& p) { return twin::worleyNoise(xyz(p), freq); }, 1e-6);
    }
    for (int complexity : {1, 4, 10, 100}) {
        compare("worleyFbm, complexity " + std::to_string(complexity), "vec4(worleyFbm(a.xy, a.z))",
                cube(2, 51),
                [&](const Point& p) {
                    return twin::worleyFbm({p[0], p[1]}, p[2], complexity);
                },
                1e-4, {.complexity = complexity});
    }
}

}  // namespace
}  // namespace flumo::test
