#include "core/Geodesy.h"

#include "core/Rounding.h"

#include <algorithm>
#include <cmath>

namespace corvane {
static constexpr double TwoGeoPi = 6.28318530717958;
static constexpr double LargestInt16 = 32767;

double NormalizeLongitude(double lon) noexcept
{
    if (lon > 180)
        lon -= 360;
    if (lon <= -180)
        lon += 360;
    return lon;
}

std::int16_t NormalizeCourse(int course) noexcept
{
    if (course > 360)
        course -= 360;
    if (course < 0)
        course += 360;
    return RoundTo<std::int16_t>(course);
}

double ArcSin(double x) noexcept
{
    if (x < -1 || x > 1)
        return 0;
    return 2 * std::atan(x / (1 + std::sqrt(1 - x * x)));
}

double ArcCos(double x) noexcept
{
    if (x < -1 || x > 1)
        return 0;
    if (x >= 0)
        return 2 * std::atan(std::sqrt((1 - x) / (1 + x)));
    return GeoPi - 2 * std::atan(std::sqrt((1 + x) / (1 - x)));
}

double FloatMod(double a, double b) noexcept
{
    double remainder = a - b * std::floor(a / b);
    if (!(remainder >= 0))
        remainder += b;
    return remainder;
}

namespace {
struct RadianPair {
    double Phi1, Lambda1, Phi2, Lambda2;
};
} // namespace

static RadianPair ToRadians(LatLon from, LatLon to) noexcept
{
    return {from.Lat * RadiansPerDegree, from.Lon * RadiansPerDegree, to.Lat * RadiansPerDegree,
            to.Lon * RadiansPerDegree};
}

/// Radians. Haversine while both differences are below one radian, the law of cosines beyond.
static double CentralAngle(const RadianPair& p) noexcept
{
    if (std::trunc(p.Phi1 - p.Phi2) == 0 && std::trunc(p.Lambda2 - p.Lambda1) == 0) {
        const double sinPhi = std::sin((p.Phi1 - p.Phi2) / 2);
        const double sinLambda = std::sin((p.Lambda1 - p.Lambda2) / 2);
        return 2 * ArcSin(std::sqrt(sinPhi * sinPhi + std::cos(p.Phi1) * std::cos(p.Phi2) * (sinLambda * sinLambda)));
    }
    return ArcCos(std::sin(p.Phi1) * std::sin(p.Phi2) +
                  std::cos(p.Phi1) * std::cos(p.Phi2) * std::cos(p.Lambda1 - p.Lambda2));
}

std::int16_t DistanceNm(LatLon from, LatLon to) noexcept
{
    return RoundTo<std::int16_t>(CentralAngle(ToRadians(from, to)) * NmPerRadian);
}

std::int16_t DistanceFt(LatLon from, LatLon to) noexcept
{
    const double miles = RoundToFivePlaces(CentralAngle(ToRadians(from, to)) * NmPerRadian);
    return RoundTo<std::int16_t>(std::min(RoundToFivePlaces(miles * FeetPerNm), LargestInt16));
}

std::int16_t TrueCourse(LatLon from, LatLon to) noexcept
{
    const RadianPair p = ToRadians(from, to);
    const double d = CentralAngle(p);
    double westwardCourse = 0;
    if (d != 0) {
        const double c = ArcCos((std::sin(p.Phi2) - std::sin(p.Phi1) * std::cos(d)) / (std::cos(p.Phi1) * std::sin(d)));
        westwardCourse = std::sin(p.Lambda2 - p.Lambda1) < 0 ? c : TwoGeoPi - c;
    }
    return NormalizeCourse(360 - RoundTo<std::int32_t>(std::floor(westwardCourse * DegreesPerRadian)));
}

std::int16_t MagneticCourse(const MagVarGrid& grid, LatLon from, LatLon to) noexcept
{
    return MagneticFromTrue(grid, TrueCourse(from, to), from);
}

std::int16_t MagneticFromTrue(const MagVarGrid& grid, double course, LatLon at) noexcept
{
    return NormalizeCourse(RoundTo<std::int16_t>(course) - grid.VariationAt(at).value_or(0));
}

std::int16_t TrueFromMagnetic(const MagVarGrid& grid, double course, LatLon at) noexcept
{
    return NormalizeCourse(RoundTo<std::int16_t>(course) + grid.VariationAt(at).value_or(0));
}

/// The latitude in radians reached from a latitude along a course.
static double DestinationPhi(double sinPhi1, double cosPhi1, double cosTheta, double sinDelta, double cosDelta) noexcept
{
    return ArcSin(sinPhi1 * cosDelta + cosPhi1 * sinDelta * cosTheta);
}

/// The longitude in degrees that goes with the latitude phi.
static double DestinationLon(double lon1, double sinTheta, double sinDelta, double phi) noexcept
{
    const double lambda1 = -lon1 * RadiansPerDegree; // the formula counts longitude to the west
    const double cosPhi = std::cos(phi);
    double lambda = lambda1;
    if (cosPhi != 0) {
        const double deltaLambda = ArcSin(sinTheta * sinDelta / cosPhi);
        lambda = FloatMod(lambda1 - deltaLambda + GeoPi, TwoGeoPi) - GeoPi;
    }
    return -lambda * DegreesPerRadian;
}

/// Degrees, not rounded; delta is the distance in radians.
static LatLon Destination(LatLon from, int course, double delta) noexcept
{
    const double phi1 = from.Lat * RadiansPerDegree;
    const double theta = course * RadiansPerDegree;
    const double sinDelta = std::sin(delta);
    const double phi = DestinationPhi(std::sin(phi1), std::cos(phi1), std::cos(theta), sinDelta, std::cos(delta));
    return {phi * DegreesPerRadian, DestinationLon(from.Lon, std::sin(theta), sinDelta, phi)};
}

static LatLon RoundedToFivePlaces(const LatLon& position) noexcept
{
    return {RoundToFivePlaces(position.Lat), RoundToFivePlaces(position.Lon)};
}

LatLon DestinationNm(LatLon from, int course, int distanceNm) noexcept
{
    return RoundedToFivePlaces(Destination(from, course, std::max(distanceNm, 0) * RadiansPerNm));
}

LatLon DestinationFt(LatLon from, int course, int distanceFt) noexcept
{
    return RoundedToFivePlaces(Destination(from, course, std::max(distanceFt, 0) / FeetPerNm * RadiansPerNm));
}

/// Radians.
static double MetresToDelta(double distanceM) noexcept
{
    constexpr double MetresPerNm = 1852;
    return std::abs(distanceM) / MetresPerNm * RadiansPerNm;
}

LatLon DestinationM(LatLon from, int course, double distanceM) noexcept
{
    return Destination(from, course, MetresToDelta(distanceM));
}

MetricOffsets::Trig::Trig(int course) noexcept
    : Sin(std::sin(course * RadiansPerDegree)), Cos(std::cos(course * RadiansPerDegree))
{
}

MetricOffsets::MetricOffsets(LatLon reference) noexcept
    : m_reference(reference),
      m_sinPhi1(std::sin(reference.Lat * RadiansPerDegree)),
      m_cosPhi1(std::cos(reference.Lat * RadiansPerDegree))
{
}

double MetricOffsets::OffsetToLon(double eastM) const noexcept
{
    if (eastM == 0)
        return m_reference.Lon;
    const Trig& theta = eastM > 0 ? m_east : m_west;
    const double delta = MetresToDelta(eastM);
    const double sinDelta = std::sin(delta);
    return DestinationLon(m_reference.Lon, theta.Sin, sinDelta,
                          DestinationPhi(m_sinPhi1, m_cosPhi1, theta.Cos, sinDelta, std::cos(delta)));
}

double MetricOffsets::OffsetToLat(double northM) const noexcept
{
    if (northM == 0)
        return m_reference.Lat;
    const Trig& theta = northM > 0 ? m_north : m_south;
    const double delta = MetresToDelta(northM);
    return DestinationPhi(m_sinPhi1, m_cosPhi1, theta.Cos, std::sin(delta), std::cos(delta)) * DegreesPerRadian;
}
} // namespace corvane
