#pragma once

#include "core/Geodesy.h"

namespace corvane {
/// Great-circle steps for flying: in full double precision and good for any distance, where the scope's procedures
/// give whole miles and degrees. Angles are degrees, distances nautical miles.

/// The distance between two positions; haversine, so that it holds down to inches.
double RangeNm(const LatLon& from, const LatLon& to) noexcept;
/// The initial true course from one position to another, 0 <= course < 360; 0 for coincident positions.
double CourseTo(const LatLon& from, const LatLon& to) noexcept;
/// The position reached along a true course; a negative distance goes backward.
LatLon Along(const LatLon& from, double course, double nm) noexcept;

/// Any angle brought into 0 <= course < 360.
double WrapCourse(double degrees) noexcept;
/// The shorter turn from one course to another, -180 < turn <= 180, positive to the right.
double TurnTo(double from, double to) noexcept;

/// Where a position lies on a line that is flown inbound to a point.
struct LineOffset {
    double OutNm = 0;  ///< distance before the point, negative beyond it
    double LeftNm = 0; ///< distance to the left of the line as it is flown, negative to the right
};
/// course  the true course of the line at the point. Good for the few ten miles of an approach.
LineOffset OffsetFromLine(const LatLon& point, double course, const LatLon& position) noexcept;
} // namespace corvane
