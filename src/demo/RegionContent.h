#pragma once

#include "demo/RadioPlan.h"
#include "demo/WorldData.h"

#include <span>
#include <vector>

namespace corvane {
/// An airport with what was planned for it, by reference into the world's data.
struct RankedAirport {
    const AirportSource* Source;
    const AirportRadio* Radio;
    std::size_t Rank;
};

/// What lies in one of the SceneryRegions.
struct RegionContent {
    std::vector<RankedAirport> Airports; ///< by ICAO code
    std::vector<const NavaidSource*> Navaids;
};

/// The world's airports, each with its plan of radio[rank], and navaids, by region in the order of SceneryRegions.
std::vector<RegionContent> ContentByRegion(const WorldData& world, std::span<const AirportRadio> radio);
} // namespace corvane
