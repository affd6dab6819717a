#pragma once

#include "core/Geodesy.h"

#include <cmath>

namespace corvane {
/// East and north on the plane at the midpoint of two positions: 60 nautical miles to the degree, longitudes shortened
/// by the cosine of the midpoint's latitude. Good for the few ten miles at which two targets matter to each other.
struct PlaneOffset {
    double EastNm = 0;
    double NorthNm = 0;

    [[nodiscard]] double LengthNm() const noexcept { return std::hypot(EastNm, NorthNm); }
};

inline constexpr double PlaneNmPerDegree = 60;

inline PlaneOffset OffsetOnPlane(const LatLon& from, const LatLon& to) noexcept
{
    const double east = NormalizeLongitude(to.Lon - from.Lon);
    return {east * PlaneNmPerDegree * std::cos((from.Lat + to.Lat) / 2 * RadiansPerDegree),
            (to.Lat - from.Lat) * PlaneNmPerDegree};
}
} // namespace corvane
