#include "core/GreatCircle.h"

#include <algorithm>
#include <cmath>

namespace corvane {
double RangeNm(const LatLon& from, const LatLon& to) noexcept
{
    const double phi1 = from.Lat * RadiansPerDegree;
    const double phi2 = to.Lat * RadiansPerDegree;
    const double sinPhi = std::sin((phi2 - phi1) / 2);
    const double sinLambda = std::sin((to.Lon - from.Lon) * RadiansPerDegree / 2);
    const double h = sinPhi * sinPhi + std::cos(phi1) * std::cos(phi2) * (sinLambda * sinLambda);
    return 2 * std::asin(std::min(1.0, std::sqrt(h))) * NmPerRadian;
}

double CourseTo(const LatLon& from, const LatLon& to) noexcept
{
    const double phi1 = from.Lat * RadiansPerDegree;
    const double phi2 = to.Lat * RadiansPerDegree;
    const double deltaLambda = (to.Lon - from.Lon) * RadiansPerDegree;
    const double y = std::sin(deltaLambda) * std::cos(phi2);
    const double x = std::cos(phi1) * std::sin(phi2) - std::sin(phi1) * std::cos(phi2) * std::cos(deltaLambda);
    return WrapCourse(std::atan2(y, x) * DegreesPerRadian);
}

LatLon Along(const LatLon& from, double course, double nm) noexcept
{
    const double phi1 = from.Lat * RadiansPerDegree;
    const double theta = course * RadiansPerDegree;
    const double delta = nm * RadiansPerNm;
    const double sinPhi2 =
        std::clamp(std::sin(phi1) * std::cos(delta) + std::cos(phi1) * std::sin(delta) * std::cos(theta), -1.0, 1.0);
    const double deltaLambda =
        std::atan2(std::sin(theta) * std::sin(delta) * std::cos(phi1), std::cos(delta) - std::sin(phi1) * sinPhi2);
    return {std::asin(sinPhi2) * DegreesPerRadian, NormalizeLongitude(from.Lon + deltaLambda * DegreesPerRadian)};
}

double WrapCourse(double degrees) noexcept
{
    const double wrapped = std::fmod(degrees, 360.0);
    const double positive = wrapped < 0 ? wrapped + 360 : wrapped;
    return positive >= 360 ? 0 : positive; // a tiny negative angle rounds up to a full turn
}

double TurnTo(double from, double to) noexcept
{
    const double turn = WrapCourse(to - from);
    return turn > 180 ? turn - 360 : turn;
}

LineOffset OffsetFromLine(const LatLon& point, double course, const LatLon& position) noexcept
{
    const double range = RangeNm(point, position);
    const double angle = TurnTo(course + 180, CourseTo(point, position)) * RadiansPerDegree;
    return {range * std::cos(angle), range * std::sin(angle)};
}
} // namespace corvane
