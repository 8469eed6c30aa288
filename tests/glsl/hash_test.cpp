#include <gmock/gmock.h>

#include <cmath>

#include "tests/glsl/comparison.h"
#include "tests/glsl/glsl_bench.h"
#include "tests/glsl/noise_twin.h"
#include "tests/glsl/points.h"

namespace flumo::test {
namespace {

// A sine's last bit is 6e-8, and the hashes blow it up by 43758.5453: 0.0026 a bit, and the product's own
// rounding adds up to 0.002; 0.0055 was seen. Arguments stay where a driver's reduction by pi is good.
constexpr double kSineHashTolerance = 0.0075;

std::vector<Point> whole_pairs(int low, int high, unsigned seed) {
    return make_points(4000, seed, [=](Numbers& n) {
        return Point{static_cast<float>(n.whole(low, high)), static_cast<float>(n.whole(low, high))};
    });
}

// Lines and seeds as the program combines them: line 1 to 1000, seed 0 to 300.
std::vector<Point> lines_and_seeds() {
    return make_points(4000, 1, [](Numbers& n) {
        return Point{static_cast<float>(n.whole(1, 1000)), n.between(0, 300)};
    });
}

class SineHash : public testing::Test {
  protected:
    void SetUp() override {
        if (!bench.is_software()) GTEST_SKIP() << "values of a sine hash are this driver's own";
    }
    GlslBench& bench = GlslBench::shared();
};

TEST_F(SineHash, RandFollowsItsFormula) {
    const auto points = lines_and_seeds();
    const auto got = bench.evaluate("vec4(rand(a.xy))", points);
    Comparison comparison("rand", kSineHashTolerance);
    for (size_t i = 0; i < points.size(); ++i) {
        comparison.add_deviation(circular_distance(got[i][0], twin::rand(points[i][0], points[i][1])),
                                 [&] { return as_text(points[i]); });
    }
}

TEST_F(SineHash, Hash1FollowsItsFormula) {
    const auto points = make_points(4000, 2, [](Numbers& n) { return Point{n.between(-500, 500)}; });
    const auto got = bench.evaluate("vec4(hash1(a.x))", points);
    Comparison comparison("hash1", kSineHashTolerance);
    for (size_t i = 0; i < points.size(); ++i) {
        comparison.add_deviation(circular_distance(got[i][0], twin::hash1(points[i][0])),
                                 [&] { return as_text(points[i]); });
    }
}

TEST_F(SineHash, Hash2FollowsItsFormula) {
    const auto points = whole_pairs(-12, 12, 3);
    const auto got = bench.evaluate("vec4(hash2(a.xy), 0, 0)", points);
    Comparison comparison("hash2", kSineHashTolerance);
    for (size_t i = 0; i < points.size(); ++i) {
        const twin::Vec2 expected = twin::hash2(points[i][0], points[i][1]);
        comparison.add_deviation(
            std::max(circular_distance(got[i][0], expected.x), circular_distance(got[i][1], expected.y)),
            [&] { return as_text(points[i]); });
    }
}

// What holds on every driver: numbers of 0 to 1, evenly spread, neighbours unrelated, far from the origin
// too.
TEST(Hash, SineHashesAreEvenlySpread) {
    for (const char* expression : {"vec4(rand(a.xy))", "vec4(hash1(a.x + a.y * 37.0))", "hash2(a.xy).xyxy"}) {
        const auto points = whole_pairs(-1000, 1000, 4);
        const auto got = GlslBench::shared().evaluate(expression, points);
        std::array<int, 10> tenths{};
        double products = 0;
        for (size_t i = 0; i < got.size(); ++i) {
            ASSERT_TRUE(got[i][0] >= 0 && got[i][0] <= 1) << expression << " at " << as_text(points[i]);
            ++tenths[static_cast<size_t>(std::min(got[i][0] * 10, 9.0f))];
            if (i > 0) products += (got[i][0] - 0.5) * (got[i - 1][0] - 0.5);
        }
        // 400 expected a tenth, standard deviation 19; products of unrelated numbers: 0 with deviation 5.3.
        EXPECT_THAT(tenths, testing::Each(testing::AllOf(testing::Gt(400 - 95), testing::Lt(400 + 95))))
            << expression;
        EXPECT_LT(std::fabs(products), 27) << expression;
    }
}

TEST(Hash, Hash33IsTheIntegerHash) {
    auto points = make_points(6000, 5, [](Numbers& n) {
        const float reach = std::pow(10.0f, n.between(0, 8.5f));
        return Point{n.between(-reach, reach), n.between(-reach, reach), n.between(-reach, reach)};
    });
    // Truncation goes toward zero, so all of -1 < x < 1 is one cell.
    for (const float x : {0.0f, 0.99f, -0.99f, -0.0f})
        points.push_back({x, -x, x});
    const auto got = GlslBench::shared().evaluate("vec4(hash33(a.xyz), 0)", points);
    Comparison comparison("hash33", 1.3e-7);  // one rounding of a number of 32 bits
    for (size_t i = 0; i < points.size(); ++i) {
        const twin::Vec3 expected = twin::hash33({points[i][0], points[i][1], points[i][2]});
        const auto where = [&] { return as_text(points[i]); };
        comparison.add(got[i][0], expected.x, where);
        comparison.add(got[i][1], expected.y, where);
        comparison.add(got[i][2], expected.z, where);
    }
    for (size_t i = 6000; i < got.size(); ++i)
        EXPECT_THAT(got[i], testing::ElementsAre(-1, -1, -1, 0));
}

}  // namespace
}  // namespace flumo::test
