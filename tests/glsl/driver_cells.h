#pragma once

#include <vector>

#include "tests/glsl/glsl_bench.h"
#include "tests/glsl/noise_twin.h"

namespace flumo::test {

// The driver's own hashes of the cells from -reach to reach, so that a twin of the cells needs no sine of the
// driver's. Asking for a cell beyond throws std::out_of_range.
class DriverCells {
  public:
    explicit DriverCells(int reach) : reach_(reach) {
        std::vector<Point> cells;
        for (int y = -reach; y <= reach; ++y) {
            for (int x = -reach; x <= reach; ++x)
                cells.push_back({static_cast<float>(x), static_cast<float>(y)});
        }
        hashes_ = GlslBench::shared().evaluate("vec4(hash2(a.xy), 0, 0)", cells);
    }

    twin::Vec2 operator()(int x, int y) const {
        const Texel& hash = hashes_.at(static_cast<size_t>((y + reach_) * (2 * reach_ + 1) + x + reach_));
        return {hash[0], hash[1]};
    }

  private:
    int reach_;
    std::vector<Texel> hashes_;
};

}  // namespace flumo::test
