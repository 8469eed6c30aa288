#include "bench/cost.h"

#include <algorithm>
#include <ctime>

namespace flumo::bench {

namespace {

std::vector<double> times(const std::vector<Cost>& costs, double Cost::*clock) {
    std::vector<double> values;
    for (const Cost& cost : costs)
        values.push_back(cost.*clock);
    return values;
}

double milliseconds(clockid_t clock) {
    timespec now{};
    clock_gettime(clock, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

}  // namespace

Cost operator-(const Cost& a, const Cost& b) {
    return {a.wall - b.wall, a.cpu - b.cpu, a.own - b.own};
}

Cost clock_now() {
    return {milliseconds(CLOCK_MONOTONIC), milliseconds(CLOCK_PROCESS_CPUTIME_ID),
            milliseconds(CLOCK_THREAD_CPUTIME_ID)};
}

double median(std::vector<double> values) {
    std::ranges::sort(values);
    const size_t half = values.size() / 2;
    return values.size() % 2 == 1 ? values[half] : (values[half - 1] + values[half]) / 2;
}

Cost median(const std::vector<Cost>& costs) {
    return {median(times(costs, &Cost::wall)), median(times(costs, &Cost::cpu)),
            median(times(costs, &Cost::own))};
}

Cost least(const std::vector<Cost>& costs) {
    return {std::ranges::min(times(costs, &Cost::wall)), std::ranges::min(times(costs, &Cost::cpu)),
            std::ranges::min(times(costs, &Cost::own))};
}

}  // namespace flumo::bench
