#pragma once

#include "core/Geodesy.h"

#include <algorithm>
#include <cmath>

namespace corvane {
/// A place on a sphere of radius 1. Distances between such places have no poles and no 180 degree meridian, and
/// comparing them needs no trigonometry; they are for choosing and filtering traffic, not for what the scope shows.
struct UnitVector {
    double X = 1;
    double Y = 0;
    double Z = 0;
};

inline UnitVector ToUnitVector(LatLon place) noexcept
{
    const double lat = place.Lat * RadiansPerDegree;
    const double lon = place.Lon * RadiansPerDegree;
    return {std::cos(lat) * std::cos(lon), std::cos(lat) * std::sin(lon), std::sin(lat)};
}

/// The square of the straight line between two places, 0 .. 4: it grows with their distance.
inline double SquaredChord(const UnitVector& a, const UnitVector& b) noexcept
{
    const double x = a.X - b.X;
    const double y = a.Y - b.Y;
    const double z = a.Z - b.Z;
    return x * x + y * y + z * z;
}

/// The squared chord of two places so many nautical miles apart, which is 4 from half the way round on.
inline double SquaredChordOfNm(double nm) noexcept
{
    const double half = std::sin(std::min(nm * RadiansPerNm / 2, GeoPi / 2));
    return 4 * half * half;
}
} // namespace corvane
