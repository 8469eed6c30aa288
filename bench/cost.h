// Time that a piece of work takes.
#pragma once

#include <vector>

namespace flumo::bench {

/// Milliseconds. `cpu` sums all threads of the process, the driver's included; on a busy machine it is more
/// reliable than `wall`. `own` is the CPU time of the calling thread alone: with a driver that draws on
/// threads of its own, the serial part of the work.
struct Cost {
    double wall = 0;
    double cpu = 0;
    double own = 0;
};

Cost operator-(const Cost& a, const Cost& b);

/// Both clocks now; only differences mean anything.
Cost clock_now();

/// Cost of `work`.
template <class Work>
Cost cost_of(Work&& work) {
    const Cost start = clock_now();
    work();
    return clock_now() - start;
}

/// The list is not empty.
double median(std::vector<double> values);
/// Median of each clock by itself; the list is not empty.
Cost median(const std::vector<Cost>& costs);
/// Least of each clock by itself; the list is not empty.
Cost least(const std::vector<Cost>& costs);

}  // namespace flumo::bench
