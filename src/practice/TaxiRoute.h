#pragma once

#include "practice/PracticeScene.h"

#include <deque>
#include <span>
#include <string>

namespace corvane {
/// Where the take-off roll begins.
LatLon LineUpPoint(const PracticeRunway& runway) noexcept;
/// The way from a place to a runway: over the taxiways where they lead there, else straight, beside the runway. The
/// last point is the line-up point, the one before it the holding point.
std::deque<LatLon> RouteToRunway(const PracticeAirport& airport, const PracticeRunway& runway, const LatLon& from);
/// The same over taxiways that a controller names, in capitals and in their order: to the first the shortest way, from
/// one to the next and from the last onto the runway directly.
struct NamedRoute {
    std::deque<LatLon> Way; ///< empty where they do not lead there
    std::string WhyNot;     ///< then
};
NamedRoute RouteVia(const PracticeAirport& airport, const PracticeRunway& runway, const LatLon& from,
                    std::span<const std::string> names);
/// The way from a runway, on which an aircraft rolls, to a stand. The first point is ahead of it.
std::deque<LatLon> RouteToStand(const PracticeAirport& airport, const PracticeRunway& runway, const LatLon& from,
                                const LatLon& stand);
} // namespace corvane
