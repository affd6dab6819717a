#pragma once

#include "core/Geodesy.h"

#include <span>

namespace corvane {
/// Distances and bearings on the WGS 84 ellipsoid, for things as long as a runway: good to a centimetre and a hundredth
/// of a degree up to 100 km, at the poles too. Bearings are true, in degrees.

struct EllipsoidLine {
    double LengthM = 0;
    double Bearing = 0;           ///< at the start towards the end, 0 <= bearing < 360; 0 where both are one place
    double ReciprocalBearing = 0; ///< at the end towards the start
};
EllipsoidLine LineBetween(const LatLon& start, const LatLon& end) noexcept;

/// The place so many metres away along a bearing; a negative distance goes backward.
LatLon PlaceAlong(const LatLon& start, double bearing, double metres) noexcept;

/// The mean of places close together, of which there is one at least: latitudes and longitudes for themselves, the
/// latter as differences from the first; within a degree of a pole, where that means nothing, the mean direction.
LatLon MeanPlace(std::span<const LatLon> places) noexcept;
} // namespace corvane
