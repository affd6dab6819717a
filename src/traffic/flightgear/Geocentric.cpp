#include "traffic/flightgear/Geocentric.h"

#include <cmath>

namespace corvane::flightgear {
static constexpr double EquatorialRadiusM = 6378137;
static constexpr double Flattening = 1 / 298.257223563;
static constexpr double Eccentricity2 = Flattening * (2 - Flattening);

double Dot(const Vector3& a, const Vector3& b) noexcept
{
    return a.X * b.X + a.Y * b.Y + a.Z * b.Z;
}

static Vector3 Cross(const Vector3& a, const Vector3& b) noexcept
{
    return {a.Y * b.Z - a.Z * b.Y, a.Z * b.X - a.X * b.Z, a.X * b.Y - a.Y * b.X};
}

/// The radius of curvature across the meridian.
static double NormalRadiusM(double sinLat) noexcept
{
    return EquatorialRadiusM / std::sqrt(1 - Eccentricity2 * sinLat * sinLat);
}

GeodeticPlace GeodeticFromGeocentric(const Vector3& metres) noexcept
{
    constexpr double CloseEnough = 1e-11 * RadiansPerDegree;
    constexpr int MostSteps = 20; // each gains two digits and more, unless the place is deep inside the earth
    const double fromAxis = std::hypot(metres.X, metres.Y);
    double lat = std::atan2(metres.Z, fromAxis * (1 - Eccentricity2));
    for (int i = 0; i < MostSteps; ++i) {
        const double sinLat = std::sin(lat);
        const double next = std::atan2(metres.Z + Eccentricity2 * NormalRadiusM(sinLat) * sinLat, fromAxis);
        const bool done = std::abs(next - lat) < CloseEnough;
        lat = next;
        if (done)
            break;
    }
    const double sinLat = std::sin(lat);
    const double cosLat = std::cos(lat);
    // Along the normal through both the axis and the equator's plane, which holds at the poles too.
    const double heightM =
        fromAxis * cosLat + metres.Z * sinLat - EquatorialRadiusM * std::sqrt(1 - Eccentricity2 * sinLat * sinLat);
    return {{lat * DegreesPerRadian, std::atan2(metres.Y, metres.X) * DegreesPerRadian}, heightM / MetresPerFoot};
}

Vector3 GeocentricFromGeodetic(const GeodeticPlace& place) noexcept
{
    const double lat = place.Position.Lat * RadiansPerDegree;
    const double lon = place.Position.Lon * RadiansPerDegree;
    const double heightM = place.HeightFt * MetresPerFoot;
    const double radius = NormalRadiusM(std::sin(lat));
    const double fromAxis = (radius + heightM) * std::cos(lat);
    return {fromAxis * std::cos(lon), fromAxis * std::sin(lon),
            (radius * (1 - Eccentricity2) + heightM) * std::sin(lat)};
}

LocalFrame LocalFrameAt(LatLon position) noexcept
{
    const double sinLat = std::sin(position.Lat * RadiansPerDegree);
    const double cosLat = std::cos(position.Lat * RadiansPerDegree);
    const double sinLon = std::sin(position.Lon * RadiansPerDegree);
    const double cosLon = std::cos(position.Lon * RadiansPerDegree);
    return {{-sinLat * cosLon, -sinLat * sinLon, cosLat},
            {-sinLon, cosLon, 0},
            {-cosLat * cosLon, -cosLat * sinLon, -sinLat}};
}

Vector3 Rotated(const Vector3& vector, const Vector3& rotation) noexcept
{
    const double angle = std::sqrt(Dot(rotation, rotation));
    if (angle == 0)
        return vector;
    const Vector3 axis{rotation.X / angle, rotation.Y / angle, rotation.Z / angle};
    const double sine = std::sin(angle);
    const double cosine = std::cos(angle);
    const Vector3 across = Cross(axis, vector);
    const double along = Dot(axis, vector) * (1 - cosine);
    return {vector.X * cosine + across.X * sine + axis.X * along, vector.Y * cosine + across.Y * sine + axis.Y * along,
            vector.Z * cosine + across.Z * sine + axis.Z * along};
}

namespace {
struct Quaternion {
    double W = 1;
    Vector3 V;
};
} // namespace

static Quaternion Product(const Quaternion& a, const Quaternion& b) noexcept
{
    const Vector3 across = Cross(a.V, b.V);
    return {a.W * b.W - Dot(a.V, b.V),
            {a.W * b.V.X + b.W * a.V.X + across.X, a.W * b.V.Y + b.W * a.V.Y + across.Y,
             a.W * b.V.Z + b.W * a.V.Z + across.Z}};
}

static Quaternion AroundY(double degrees) noexcept
{
    const double half = degrees * RadiansPerDegree / 2;
    return {std::cos(half), {0, std::sin(half), 0}};
}

static Quaternion AroundZ(double degrees) noexcept
{
    const double half = degrees * RadiansPerDegree / 2;
    return {std::cos(half), {0, 0, std::sin(half)}};
}

Vector3 LevelAttitude(LatLon position, double trueHeading) noexcept
{
    const Quaternion q = Product(Product(AroundZ(position.Lon), AroundY(-90 - position.Lat)), AroundZ(trueHeading));
    const double sine = std::sqrt(Dot(q.V, q.V));
    if (sine == 0)
        return {};
    const double scale = 2 * std::atan2(sine, q.W) / sine;
    return {q.V.X * scale, q.V.Y * scale, q.V.Z * scale};
}
} // namespace corvane::flightgear
