// Stops from gradients that may jump at a position.
#pragma once

#include <cmath>
#include <limits>
#include <vector>

#include "scene/gradient/gradient_stops.h"

namespace flumo::scene {

/// A stop at the same position as the last one makes the colour jump there. The effect keeps one stop at a
/// position: the earlier one moves to the next smaller number.
inline void add_stop(std::vector<Stop>& stops, const Stop& stop) {
    if (!stops.empty() && stops.back().at == stop.at) {
        if (stops.back().colour == stop.colour) {
            stops.back().kind = stop.kind;
            return;
        }
        stops.back().at = std::nextafter(stop.at, -std::numeric_limits<float>::infinity());
        // A third stop at one position hides the second one.
        if (stops.size() > 1 && stops[stops.size() - 2].at == stops.back().at) stops.pop_back();
    }
    stops.push_back(stop);
}

}  // namespace flumo::scene
