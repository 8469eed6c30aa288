#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <string>

namespace flumo::test {

// Gathers the deviations of one function from its twin, prints one row of a table, and holds the bound:
// at most `allowed_beyond` (a share of all points) may lie further away than the tolerance.
class Comparison {
  public:
    Comparison(std::string name, double tolerance, double allowed_beyond = 0)
        : name_(std::move(name)), tolerance_(tolerance), allowed_beyond_(allowed_beyond) {}
    ~Comparison() { report(); }
    Comparison(const Comparison&) = delete;
    Comparison& operator=(const Comparison&) = delete;

    bool holds() const {
        return static_cast<double>(beyond_) <= allowed_beyond_ * static_cast<double>(count_);
    }

    // `where` makes the text for the worst point, only when it is needed.
    template <class Where>
    void add(double got, double expected, Where where) {
        add_deviation(
            std::isnan(got) == std::isnan(expected) ? std::fabs(got - expected)
                                                    : std::numeric_limits<double>::infinity(),
            [&] { return where() + ": " + std::to_string(got) + ", not " + std::to_string(expected); });
    }

    template <class Where>
    void add_deviation(double deviation, Where where) {
        ++count_;
        if (deviation > tolerance_) ++beyond_;
        if (deviation > largest_) {
            largest_ = deviation;
            worst_ = where();
        }
    }

  private:
    void report() const {
        std::printf("  %-34s %7zu points  largest %.2e  tolerance %.1e  beyond %zu\n", name_.c_str(), count_,
                    largest_, tolerance_, beyond_);
        EXPECT_GT(count_, 0u) << name_ << " compared nothing";
        EXPECT_TRUE(holds()) << name_ << " deviates by " << largest_ << " at " << worst_;
    }

    std::string name_;
    double tolerance_;
    double allowed_beyond_;
    double largest_ = 0;
    size_t count_ = 0;
    size_t beyond_ = 0;
    std::string worst_;
};

}  // namespace flumo::test
