#pragma once

#include "demo/PlannedRunway.h"
#include "demo/SceneryObjects.h"

#include <span>

namespace corvane {
/// How many stands the apron has and how they are laid out.
struct ApronStyle {
    int Lanes = 1;        ///< taxi lanes side by side, 1 .. 26
    int StandsInRow = 4;  ///< along a lane
    bool TwoRows = false; ///< stands on both sides of a lane
    bool Gates = false;   ///< GATE A 1, GATE B 1, .. by lane (GATE 1 with one lane); otherwise PARKING 1, ..
};

/// Draws a ground layout around the runways of an airport. At the main runway, a long one near the reference point: a
/// parallel taxiway (A) with connectors (A1, A2, ..), beyond it the apron with its lanes, stands and link taxiways. At
/// every other runway, where there is room, a parallel taxiway of the next letters, linked to what is there. Every
/// runway has runway paths, whose names are the runway's place in runways. Taxiways lie 150 or 180 m beside their
/// runway and do not cut one another. No runway: an empty layout.
GroundLayout PlanGround(std::span<const PlannedRunway> runways, const ApronStyle& style);
} // namespace corvane
