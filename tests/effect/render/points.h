#pragma once

#include <random>
#include <string>
#include <vector>

#include "tests/effect/render/evaluate.h"

namespace flumo::test {

// Numbers that are the same on every machine and in every run.
class Numbers {
  public:
    explicit Numbers(unsigned seed) : engine_(seed) {}
    float between(float low, float high) {
        return low + (high - low) * static_cast<float>(engine_() >> 8) / 16777216.0f;
    }
    int whole(int low, int high) {
        return low + static_cast<int>(engine_() % static_cast<unsigned>(high - low + 1));
    }

  private:
    std::mt19937 engine_;
};

// `count` points, each made by make(numbers).
template <class Make>
std::vector<Point> make_points(size_t count, unsigned seed, Make make) {
    Numbers numbers(seed);
    std::vector<Point> points(count);
    for (Point& point : points)
        point = make(numbers);
    return points;
}

inline std::string as_text(const Point& point) {
    std::string text = "(";
    for (const float number : point)
        text += std::to_string(number) + " ";
    text.back() = ')';
    return text;
}

}  // namespace flumo::test
