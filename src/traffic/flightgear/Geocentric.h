#pragma once

#include "core/Geodesy.h"

#include <array>

namespace corvane::flightgear {
/// Three numbers along the axes of a frame: metres, metres a second, or a rotation vector.
///
/// The earth-centred frame is WGS 84's: x towards latitude 0 longitude 0, y towards longitude 90 east, z north. An
/// aircraft's axes point forward, right and down.
struct Vector3 {
    double X = 0;
    double Y = 0;
    double Z = 0;
};

double Dot(const Vector3& a, const Vector3& b) noexcept;

/// A place above the WGS 84 ellipsoid.
struct GeodeticPlace {
    LatLon Position;
    double HeightFt = 0;
};

/// By iteration to 1e-11 degrees, for any place but the middle of the earth, which gives a height far below the ground.
GeodeticPlace GeodeticFromGeocentric(const Vector3& metres) noexcept;
Vector3 GeocentricFromGeodetic(const GeodeticPlace& place) noexcept;

/// The directions of north, east and down at a place, in the earth-centred frame.
struct LocalFrame {
    Vector3 North;
    Vector3 East;
    Vector3 Down;
};
LocalFrame LocalFrameAt(LatLon position) noexcept;

/// Turns a vector by a rotation vector: around its direction, by its length in radians.
Vector3 Rotated(const Vector3& vector, const Vector3& rotation) noexcept;

/// The rotation from the aircraft's axes to the earth-centred frame of an aircraft that flies level.
/// trueHeading  degrees
Vector3 LevelAttitude(LatLon position, double trueHeading) noexcept;
} // namespace corvane::flightgear
