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

static RadianPair ToRadians(double lat1, double lon1, double lat2, double lon2) noexcept
{
    return {lat1 * RadiansPerDegree, lon1 * RadiansPerDegree, lat2 * RadiansPerDegree, lon2 * RadiansPerDegree};
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

std::int16_t DistanceNm(double lat1, double lon1, double lat2, double lon2) noexcept
{
    return RoundTo<std::int16_t>(CentralAngle(ToRadians(lat1, lon1, lat2, lon2)) * NmPerRadian);
}

std::int16_t DistanceFt(double lat1, double lon1, double lat2, double lon2) noexcept
{
    const double miles = RoundToFivePlaces(CentralAngle(ToRadians(lat1, lon1, lat2, lon2)) * NmPerRadian);
    return RoundTo<std::int16_t>(std::min(RoundToFivePlaces(miles * FeetPerNm), LargestInt16));
}

std::int16_t TrueCourse(double lat1, double lon1, double lat2, double lon2) noexcept
{
    const RadianPair p = ToRadians(lat1, lon1, lat2, lon2);
    const double d = CentralAngle(p);
    double westwardCourse = 0;
    if (d != 0) {
        const double c = ArcCos((std::sin(p.Phi2) - std::sin(p.Phi1) * std::cos(d)) / (std::cos(p.Phi1) * std::sin(d)));
        westwardCourse = std::sin(p.Lambda2 - p.Lambda1) < 0 ? c : TwoGeoPi - c;
    }
    return NormalizeCourse(360 - RoundTo<std::int32_t>(std::floor(westwardCourse * DegreesPerRadian)));
}

std::int16_t MagneticCourse(const MagVarGrid& grid, double lat1, double lon1, double lat2, double lon2) noexcept
{
    return MagneticFromTrue(grid, TrueCourse(lat1, lon1, lat2, lon2), lat1, lon1);
}

std::int16_t MagneticFromTrue(const MagVarGrid& grid, double course, double lat, double lon) noexcept
{
    return NormalizeCourse(RoundTo<std::int16_t>(course) - grid.VariationAt(lat, lon).value_or(0));
}

std::int16_t TrueFromMagnetic(const MagVarGrid& grid, double course, double lat, double lon) noexcept
{
    return NormalizeCourse(RoundTo<std::int16_t>(course) + grid.VariationAt(lat, lon).value_or(0));
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
static LatLon Destination(double lat1, double lon1, int course, double delta) noexcept
{
    const double phi1 = lat1 * RadiansPerDegree;
    const double theta = course * RadiansPerDegree;
    const double sinDelta = std::sin(delta);
    const double phi = DestinationPhi(std::sin(phi1), std::cos(phi1), std::cos(theta), sinDelta, std::cos(delta));
    return {phi * DegreesPerRadian, DestinationLon(lon1, std::sin(theta), sinDelta, phi)};
}

static LatLon RoundedToFivePlaces(const LatLon& position) noexcept
{
    return {RoundToFivePlaces(position.Lat), RoundToFivePlaces(position.Lon)};
}

LatLon DestinationNm(double lat1, double lon1, int course, int distanceNm) noexcept
{
    return RoundedToFivePlaces(Destination(lat1, lon1, course, std::max(distanceNm, 0) * RadiansPerNm));
}

LatLon DestinationFt(double lat1, double lon1, int course, int distanceFt) noexcept
{
    return RoundedToFivePlaces(Destination(lat1, lon1, course, std::max(distanceFt, 0) / FeetPerNm * RadiansPerNm));
}

/// Radians.
static double MetresToDelta(double distanceM) noexcept
{
    constexpr double MetresPerNm = 1852;
    return std::abs(distanceM) / MetresPerNm * RadiansPerNm;
}

LatLon DestinationM(double lat1, double lon1, int course, double distanceM) noexcept
{
    return Destination(lat1, lon1, course, MetresToDelta(distanceM));
}

MetricOffsets::Trig::Trig(int course) noexcept
    : Sin(std::sin(course * RadiansPerDegree)), Cos(std::cos(course * RadiansPerDegree))
{
}

MetricOffsets::MetricOffsets(double lat, double lon) noexcept
    : m_lat(lat), m_lon(lon), m_sinPhi1(std::sin(lat * RadiansPerDegree)), m_cosPhi1(std::cos(lat * RadiansPerDegree))
{
}

double MetricOffsets::OffsetToLon(double eastM) const noexcept
{
    if (eastM == 0)
        return m_lon;
    const Trig& theta = eastM > 0 ? m_east : m_west;
    const double delta = MetresToDelta(eastM);
    const double sinDelta = std::sin(delta);
    return DestinationLon(m_lon, theta.Sin, sinDelta,
                          DestinationPhi(m_sinPhi1, m_cosPhi1, theta.Cos, sinDelta, std::cos(delta)));
}

double MetricOffsets::OffsetToLat(double northM) const noexcept
{
    if (northM == 0)
        return m_lat;
    const Trig& theta = northM > 0 ? m_north : m_south;
    const double delta = MetresToDelta(northM);
    return DestinationPhi(m_sinPhi1, m_cosPhi1, theta.Cos, std::sin(delta), std::cos(delta)) * DegreesPerRadian;
}
} // namespace corvane
