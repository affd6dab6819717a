#pragma once

#include "demo/PlaneGeometry.h"

namespace corvane {
/// A runway as the ground planner sees it.
struct PlannedRunway {
    GroundVector Center;
    double TrueHeading = 0; ///< degrees
    double LengthM = 0;
};
} // namespace corvane
