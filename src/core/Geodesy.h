#pragma once

#include "core/LatLon.h"
#include "core/MagVarGrid.h"

#include <cstdint>
#include <string>

namespace corvane {
/// Position arithmetic on a spherical earth. One nautical mile is one minute of arc and 6080 feet; angles are decimal
/// degrees, latitude north and longitude east positive; courses and headings are whole degrees, true unless named
/// magnetic. The formulas are the classic set of aviation spherical trigonometry with longitudes counted to the west.
/// Callers depend on the exact integers, so the constant, the order of operations and the rounding are fixed here.

/// 3.1 x 10^-15 smaller than pi: the constant on which the program's results rest.
inline constexpr double GeoPi = 3.14159265358979;
inline constexpr double RadiansPerDegree = GeoPi / 180;
inline constexpr double DegreesPerRadian = 180 / GeoPi;
inline constexpr double NmPerRadian = 10800 / GeoPi;
inline constexpr double RadiansPerNm = GeoPi / 10800;
inline constexpr double FeetPerNm = 6080;
inline constexpr double MetresPerFoot = 0.3048;

/// Whether a position lies within +-90 and +-180 degrees (so is no NaN either). Positions elsewhere come from a damaged
/// file or a faulty peer and are passed over.
constexpr bool OnEarth(LatLon at) noexcept
{
    return at.Lat >= -90 && at.Lat <= 90 && at.Lon >= -180 && at.Lon <= 180;
}

/// A named position, as the scope keeps it for the pointer and the selected airspace.
struct PositionRecord {
    std::string Name;
    std::string Kind;
    double Lat = 0;
    double Lon = 0;
};

/// Takes off or adds one turn, once: the result lies in (-180, 180] for arguments within one turn of it.
double NormalizeLongitude(double lon) noexcept;
/// Takes off or adds 360 degrees, once; 0 and 360 both stay as they are.
std::int16_t NormalizeCourse(int course) noexcept;

/// Radians; 0 for arguments outside -1 .. 1, so that a sum which rounds past 1 reads as a zero angle.
double ArcSin(double x) noexcept;
double ArcCos(double x) noexcept;
/// a modulo b with the sign of b; b must not be 0.
double FloatMod(double a, double b) noexcept;

/// Whole nautical miles, 0 .. 32767.
std::int16_t DistanceNm(LatLon from, LatLon to) noexcept;
/// Whole feet, 0 .. 32767: everything beyond 5.39 nautical miles reads 32767.
std::int16_t DistanceFt(LatLon from, LatLon to) noexcept;
/// The initial true course from one position to another, rounded up to the next whole degree; 360 for coincident
/// points. It must not start at a pole.
std::int16_t TrueCourse(LatLon from, LatLon to) noexcept;
/// TrueCourse made magnetic with the variation where it starts.
std::int16_t MagneticCourse(const MagVarGrid& grid, LatLon from, LatLon to) noexcept;

/// The course is rounded to whole degrees; a position outside the grid has no variation.
std::int16_t MagneticFromTrue(const MagVarGrid& grid, double course, LatLon at) noexcept;
std::int16_t TrueFromMagnetic(const MagVarGrid& grid, double course, LatLon at) noexcept;

/// The point reached along a true course, rounded to 5 decimal places. A negative distance counts as 0.
/// Exact only while the longitude changes by less than 90 degrees.
LatLon DestinationNm(LatLon from, int course, int distanceNm) noexcept;
LatLon DestinationFt(LatLon from, int course, int distanceFt) noexcept;
/// The same for a distance in metres (1852 to the nautical mile) whose sign is ignored; not rounded.
LatLon DestinationM(LatLon from, int course, double distanceM) noexcept;

/// Turns east and north offsets in metres from one reference point into degrees, each axis on its own: the longitude
/// of DestinationM along 90 or 270 degrees, the latitude of DestinationM along 0 or 180, digit for digit. What depends
/// only on the point is computed once, since a large airport has thousands of offsets.
class MetricOffsets {
public:
    explicit MetricOffsets(LatLon reference) noexcept;

    [[nodiscard]] double OffsetToLon(double eastM) const noexcept;
    [[nodiscard]] double OffsetToLat(double northM) const noexcept;

private:
    LatLon m_reference;
    double m_sinPhi1;
    double m_cosPhi1;
    struct Trig {
        explicit Trig(int course) noexcept;
        double Sin;
        double Cos;
    };
    Trig m_north{0};
    Trig m_east{90};
    Trig m_south{180};
    Trig m_west{270};
};
} // namespace corvane
