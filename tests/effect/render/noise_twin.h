#pragma once

#include <functional>

// The noises of the main program a second time, in double precision and under the same names. Where the image
// hangs on how single precision rounds (a hash of a sum, a lattice point on a border), the twin rounds
// likewise and says so; everywhere else it is exact arithmetic.
namespace flumo::twin {

struct Vec2 {
    double x, y;
};
struct Vec3 {
    double x, y, z;
};

double rand(float x, float y);
double hash1(float n);
Vec2 hash2(float x, float y);
Vec3 hash33(Vec3 p);

double fliud_noise(Vec2 p, double evolution, double fluidSpeed, Vec2 scale, int complexity);

// The hash of a cell. It is a parameter so that a test can hand over the driver's own.
using CellHash = std::function<Vec2(int x, int y)>;
double voronoi(Vec2 x, double evolution, double w, const CellHash& hash);

double simplex(Vec3 v);
double fbm3(Vec3 v);
double fbm5(Vec3 v);
double getSmokeNoise(Vec2 uv, double evolution, int complexity);

double perlinNoise(Vec3 p);
double worleyNoise(Vec3 uv, double freq);
double worleyFbm(Vec2 uv, double evolution, int complexity);

// Arguments of the dispatch. mainComplexity is the uniform that Smoke and Worley read.
struct NoiseArguments {
    Vec2 p;
    int noiseType;
    double evolution;
    int loopEvolution;
    Vec2 scale;
    Vec2 offset;
    double speed;
    int complexity;
    int mainComplexity;
};
double noiseByType(const NoiseArguments& arguments, const CellHash& hash);
double noiseWithLoop(const NoiseArguments& arguments, const CellHash& hash);

}  // namespace flumo::twin
