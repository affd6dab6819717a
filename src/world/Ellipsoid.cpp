#include "world/Ellipsoid.h"

#include "core/GreatCircle.h"

#include <algorithm>
#include <cassert>
#include <cmath>

namespace corvane {
// The defining constants of WGS 84.
static constexpr double SemiMajorAxisM = 6378137;
static constexpr double Flattening = 1 / 298.257223563;
static constexpr double EccentricitySquared = Flattening * (2 - Flattening);

namespace {
struct Vector {
    double X = 0;
    double Y = 0;
    double Z = 0;

    Vector operator+(const Vector& other) const noexcept { return {X + other.X, Y + other.Y, Z + other.Z}; }
    Vector operator-(const Vector& other) const noexcept { return {X - other.X, Y - other.Y, Z - other.Z}; }
    Vector operator*(double factor) const noexcept { return {X * factor, Y * factor, Z * factor}; }
};

/// East, north and up at a place, with the radii of curvature there.
struct Frame {
    explicit Frame(const LatLon& at) noexcept;
    /// The radius of curvature along a bearing, in radians (Euler's formula).
    [[nodiscard]] double RadiusAlong(double bearing) const noexcept;

    Vector East, North, Up;
    Vector Place; ///< metres from the earth's centre
    double MeridianRadiusM = 0;
    double NormalRadiusM = 0;
};
} // namespace

static double Dot(const Vector& a, const Vector& b) noexcept
{
    return a.X * b.X + a.Y * b.Y + a.Z * b.Z;
}

Frame::Frame(const LatLon& at) noexcept
{
    const double sinPhi = std::sin(at.Lat * RadiansPerDegree);
    const double cosPhi = std::cos(at.Lat * RadiansPerDegree);
    const double sinLambda = std::sin(at.Lon * RadiansPerDegree);
    const double cosLambda = std::cos(at.Lon * RadiansPerDegree);
    const double w2 = 1 - EccentricitySquared * sinPhi * sinPhi;
    NormalRadiusM = SemiMajorAxisM / std::sqrt(w2);
    MeridianRadiusM = NormalRadiusM * (1 - EccentricitySquared) / w2;
    East = {-sinLambda, cosLambda, 0};
    North = {-sinPhi * cosLambda, -sinPhi * sinLambda, cosPhi};
    Up = {cosPhi * cosLambda, cosPhi * sinLambda, sinPhi};
    Place = {NormalRadiusM * Up.X, NormalRadiusM * Up.Y, NormalRadiusM * (1 - EccentricitySquared) * Up.Z};
}

double Frame::RadiusAlong(double bearing) const noexcept
{
    const double cos = std::cos(bearing);
    const double sin = std::sin(bearing);
    return 1 / (cos * cos / MeridianRadiusM + sin * sin / NormalRadiusM);
}

static double BearingDegrees(const Frame& at, const Vector& towards) noexcept
{
    return WrapCourse(std::atan2(Dot(towards, at.East), Dot(towards, at.North)) * DegreesPerRadian);
}

EllipsoidLine LineBetween(const LatLon& start, const LatLon& end) noexcept
{
    const Frame from(start);
    const Frame to(end);
    const Vector chord = to.Place - from.Place;
    const double chordM = std::sqrt(Dot(chord, chord));
    if (chordM == 0)
        return {};
    EllipsoidLine line;
    line.Bearing = BearingDegrees(from, chord);
    line.ReciprocalBearing = BearingDegrees(to, chord * -1);
    const double radius = from.RadiusAlong(line.Bearing * RadiansPerDegree);
    line.LengthM = 2 * radius * std::asin(std::min(1.0, chordM / (2 * radius)));
    return line;
}

/// The place on the ellipsoid below a point close to it. Bowring's formula, exact to a nanometre there.
static LatLon PlaceBelow(const Vector& point) noexcept
{
    constexpr double SemiMinorAxisM = SemiMajorAxisM * (1 - Flattening);
    constexpr double SecondEccentricitySquared = EccentricitySquared / (1 - EccentricitySquared);
    const double fromAxis = std::hypot(point.X, point.Y);
    const double beta = std::atan2(point.Z * SemiMajorAxisM, fromAxis * SemiMinorAxisM);
    const double phi = std::atan2(point.Z + SecondEccentricitySquared * SemiMinorAxisM * std::pow(std::sin(beta), 3),
                                  fromAxis - EccentricitySquared * SemiMajorAxisM * std::pow(std::cos(beta), 3));
    return {phi * DegreesPerRadian, std::atan2(point.Y, point.X) * DegreesPerRadian};
}

LatLon PlaceAlong(const LatLon& start, double bearing, double metres) noexcept
{
    const Frame from(start);
    const double theta = bearing * RadiansPerDegree;
    const double radius = from.RadiusAlong(theta);
    const double angle = metres / radius;
    const Vector direction = from.North * std::cos(theta) + from.East * std::sin(theta);
    return PlaceBelow(from.Place + direction * (radius * std::sin(angle)) - from.Up * (radius * (1 - std::cos(angle))));
}

static LatLon MeanDirection(std::span<const LatLon> places) noexcept
{
    Vector sum;
    for (const LatLon& place : places)
        sum = sum + Frame(place).Up;
    return {std::atan2(sum.Z, std::hypot(sum.X, sum.Y)) * DegreesPerRadian,
            std::atan2(sum.Y, sum.X) * DegreesPerRadian};
}

LatLon MeanPlace(std::span<const LatLon> places) noexcept
{
    constexpr double PolarLat = 89;
    assert(!places.empty());
    if (std::ranges::any_of(places, [](const LatLon& place) { return std::abs(place.Lat) > PolarLat; }))
        return MeanDirection(places);
    double lat = 0;
    double east = 0;
    for (const LatLon& place : places) {
        lat += place.Lat;
        east += NormalizeLongitude(place.Lon - places.front().Lon);
    }
    const auto count = static_cast<double>(places.size());
    return {lat / count, NormalizeLongitude(places.front().Lon + east / count)};
}
} // namespace corvane
