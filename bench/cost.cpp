#include "bench/cost.h"

#include <algorithm>
#include <ctime>

namespace flumo::bench {

namespace {

std::vector<double> sorted(const std::vector<Cost>& costs, double Cost::*clock) {
    std::vector<double> values;
    for (const Cost& cost : costs)
        values.push_back(cost.*clock);
    std::ranges::sort(values);
    return values;
}

double middle(const std::vector<double>& values) {
    const std::size_t half = values.size() / 2;
    return values.size() % 2 == 1 ? values[half] : (values[half - 1] + values[half]) / 2;
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

Cost median(const std::vector<Cost>& costs) {
    return {middle(sorted(costs, &Cost::wall)), middle(sorted(costs, &Cost::cpu)),
            middle(sorted(costs, &Cost::own))};
}

Cost least(const std::vector<Cost>& costs) {
    return {sorted(costs, &Cost::wall).front(), sorted(costs, &Cost::cpu).front(),
            sorted(costs, &Cost::own).front()};
}

}  // namespace flumo::bench
