#include "tests/effect/render/noise_twin.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

#include "effect/params/noise_generator.h"

namespace flumo::twin {
namespace {

double fract(double x) {
    return x - std::floor(x);
}

double fade(double t) {
    return t * t * (3 - 2 * t);
}

// GLSL's mod, which takes the sign of the divisor.
double modulo(double x, double y) {
    return x - y * std::floor(x / y);
}

// The sum is rounded as the program rounds it: a last bit of it is another random number.
double sine_hash(float sum) {
    return fract(std::sin(static_cast<double>(sum)) * 43758.5453);
}

}  // namespace

double rand(float x, float y) {
    return sine_hash(x * 12.9898f + y * 4.1414f);
}

double hash1(float n) {
    return sine_hash(n);
}

Vec2 hash2(float x, float y) {
    return {sine_hash(x * 127.1f + y * 311.7f), sine_hash(x * 269.5f + y * 183.3f)};
}

Vec3 hash33(Vec3 p) {
    constexpr std::array<uint32_t, 3> factors{1597334673u, 3812015801u, 2798796415u};
    const std::array<double, 3> coordinates{p.x, p.y, p.z};
    uint32_t state = 0;
    for (size_t axis = 0; axis < 3; ++axis) {
        const auto whole = static_cast<int32_t>(coordinates[axis]);
        state ^= static_cast<uint32_t>(whole) * factors[axis];
    }
    const auto number = [&](uint32_t factor) {
        return static_cast<double>(state * factor) / 2147483648.0 - 1;
    };
    return {number(factors[0]), number(factors[1]), number(factors[2])};
}

double fliud_noise(Vec2 p, double evolution, double fluidSpeed, Vec2 scale, int complexity) {
    const double time = evolution * fluidSpeed;
    for (int i = 1; i <= complexity - 1; ++i) {
        const double drift = evolution / 1000;
        const double x = p.x + drift + scale.x / i * std::sin(i * p.y + time + 0.3 * i) + 0.5;
        const double y = p.y + drift + scale.y / i * std::sin(i * p.x + time + 0.3 * (i + 10)) - 0.5;
        p = {x, y};
    }
    return 0.5 + 0.5 * std::sin(1.6 * p.x) * std::sin(1.6 * p.y);
}

double voronoi(Vec2 x, double evolution, double w, const CellHash& hash) {
    const double cell_x = std::floor(x.x);
    const double cell_y = std::floor(x.y);
    double distance = 8;
    double colour = 0;
    for (int cell = 0; cell < 25; ++cell) {
        const int i = cell % 5 - 2;
        const int j = cell / 5 - 2;
        const Vec2 o = hash(static_cast<int>(cell_x) + i, static_cast<int>(cell_y) + j);
        const double dx = i - (x.x - cell_x) + 0.5 + 0.5 * std::sin(evolution + 6.2831 * o.x);
        const double dy = j - (x.y - cell_y) + 0.5 + 0.5 * std::sin(evolution + 6.2831 * o.y);
        const double d = std::hypot(dx, dy);
        // Without a width the smaller distance wins.
        const double h =
            w == 0 ? (d < distance ? 1.0 : 0.0) : fade(std::clamp(0.5 + 0.5 * (distance - d) / w, 0.0, 1.0));
        const double dent = h * (1 - h) * w / (1 + 3 * w);
        distance = std::lerp(distance, d, h) - dent;
        colour = std::lerp(colour, 1, h) - dent;
    }
    return colour * (1 - 0.8 * distance);
}

double fbm3(Vec3 v) {
    double sum = 0;
    for (int octave = 1; octave <= 4; octave *= 2) {
        sum += simplex({v.x * octave, v.y * octave, v.z * octave}) / octave;
    }
    return sum / 1.75;
}

double fbm5(Vec3 v) {
    double sum = 0;
    for (int octave = 1; octave <= 16; octave *= 2) {
        sum += simplex({v.x * octave, v.y * octave, v.z * octave}) / octave;
    }
    return sum / 1.9375;
}

double getSmokeNoise(Vec2 uv, double evolution, int complexity) {
    const double swirl = (10 + complexity) / 10.0;
    for (int left = (10 + complexity) / 10; left > 0; --left) {
        const double x = fbm3({uv.x, uv.y, evolution});
        const double y = fbm3({uv.x, uv.y, evolution + 1000});
        uv = {uv.x + x / swirl, uv.y + y / swirl};
    }
    return 2 * std::pow(fbm5({uv.x, uv.y, evolution}) / 2 + 0.5, 4);
}

double perlinNoise(Vec3 p) {
    const Vec3 cell{std::floor(p.x), std::floor(p.y), std::floor(p.z)};
    const Vec3 f{p.x - cell.x, p.y - cell.y, p.z - cell.z};
    double sum = 0;
    for (int corner = 0; corner < 8; ++corner) {
        const double x = corner & 1;
        const double y = corner >> 1 & 1;
        const double z = corner >> 2;
        const Vec3 gradient = hash33({cell.x + x, cell.y + y, cell.z + z});
        const double slope = gradient.x * (f.x - x) + gradient.y * (f.y - y) + gradient.z * (f.z - z);
        const auto weight = [](double at, double t) { return at == 0 ? 1 - fade(t) : fade(t); };
        sum += slope * weight(x, f.x) * weight(y, f.y) * weight(z, f.z);
    }
    return sum;
}

double worleyNoise(Vec3 uv, double freq) {
    const auto near = [](double coordinate, int step) { return std::floor(coordinate) + step; };
    double nearest = 10000;
    for (int x = -1; x <= 1; ++x) {
        for (int y = -1; y <= 1; ++y) {
            for (int z = -1; z <= 1; ++z) {
                const Vec3 cell{near(uv.x, x), near(uv.y, y), near(uv.z, z)};
                const Vec3 h = hash33({modulo(cell.x, freq), modulo(cell.y, freq), modulo(cell.z, freq)});
                const double dx = uv.x - cell.x - (h.x + 1) / 2;
                const double dy = uv.y - cell.y - (h.y + 1) / 2;
                const double dz = uv.z - cell.z - (h.z + 1) / 2;
                nearest = std::min(nearest, dx * dx + dy * dy + dz * dz);
            }
        }
    }
    return 1 - nearest;
}

double worleyFbm(Vec2 uv, double evolution, int complexity) {
    double sum = 0;
    for (const auto& [octave, weight] : {std::pair(1, 0.625), std::pair(2, 0.25), std::pair(4, 0.125)}) {
        const double freq = complexity * octave;
        sum += weight * worleyNoise({uv.x * freq, uv.y * freq, evolution * freq}, freq);
    }
    return sum;
}

double noiseByType(const NoiseArguments& a, const CellHash& hash) {
    const Vec2 q{a.p.x * a.scale.x + a.offset.x, a.p.y * a.scale.y + a.offset.y};
    const double time = a.evolution * a.speed;
    switch (NoiseGenerator{a.noiseType}) {
        case NoiseGenerator::kFluid:
            return fliud_noise(q, a.evolution, a.speed, {1, 1}, a.complexity);
        case NoiseGenerator::kVoronoi:
            return voronoi({6 * q.x, 6 * q.y}, time, a.complexity / 100.0, hash);
        case NoiseGenerator::kSmoke:
            return getSmokeNoise(q, time / 10, a.mainComplexity);
        case NoiseGenerator::kWorley:
            return worleyFbm(q, time / 10, a.mainComplexity);
    }
    return 0;
}

double noiseWithLoop(const NoiseArguments& arguments, const CellHash& hash) {
    if (arguments.loopEvolution != 1) return noiseByType(arguments, hash);
    NoiseArguments now = arguments;
    now.evolution = modulo(arguments.evolution, 360);
    NoiseArguments before = arguments;
    before.evolution = now.evolution - 360;
    return std::lerp(noiseByType(now, hash), noiseByType(before, hash), now.evolution / 360);
}

}  // namespace flumo::twin
