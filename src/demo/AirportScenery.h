#pragma once

#include "demo/GroundPlan.h"
#include "demo/RadioPlan.h"
#include "demo/SceneryObjects.h"
#include "demo/WorldData.h"

namespace corvane {
/// The busiest airports, by rank from 0, have the largest aprons and Class B areas.
inline constexpr std::size_t BusiestAirports = 64;

/// The apron of an airport: 60 stands at the busiest, 40 and 20 at large ones, 8 and 4 at the rest.
ApronStyle ApronOf(const AirportSource& airport, std::size_t rank);

/// The airport as it goes into the scenery, its ground layout planned. Localizers stand 300 m beyond the far end of
/// their runway where the scan moves them to the threshold that they serve, otherwise at that threshold: it compares
/// the course as a signed angle, so a far end with a course of 180 degrees or more is never found.
SceneryAirport MakeSceneryAirport(const AirportSource& source, std::size_t rank, const AirportRadio& radio);

/// A position as metres east and north of origin, on the sphere that the scope uses.
GroundVector MetresFrom(LatLon origin, LatLon position) noexcept;
} // namespace corvane
