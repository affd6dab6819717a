#include "radar/MinimumAltitude.h"

#include "core/Geodesy.h"
#include "core/Text.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace corvane {
static constexpr std::uint8_t InstrumentRules = 1;
static constexpr double NmPerDegree = 60;

static bool IsFinite(double lat, double lon) noexcept
{
    return std::isfinite(lat) && std::isfinite(lon);
}

static bool InDegreeRange(double lat, double lon) noexcept
{
    return std::fabs(lat) <= 90 && std::fabs(lon) <= 180;
}

namespace {
/// Distances from one position that are never too long and cost a few multiplications, to pass over the points that a
/// whole-mile distance need not be computed for.
///
/// The haversine of the angle is sin2(dLat/2) + cos lat1 cos lat2 sin2(dLon/2), and the angle is at least twice its
/// root. Within reach of the position, cos lat2 and sin(x)/x are at least what they are at the reach's edge, which
/// leaves a weighted sum of squares of the two differences. Of points out of reach it may say anything.
class ShortestDistance {
public:
    ShortestDistance(double lat, double lon) noexcept : m_lat(lat), m_lon(lon)
    {
        if (!InDegreeRange(lat, lon))
            return;                      // weights of 0: every point may be near
        constexpr double Slack = 0.9999; // more than sin(x)/x loses along the meridian, and all rounding
        constexpr double Reach = (MaxDestinationNm + 1) * RadiansPerNm;
        const double phi = std::fabs(lat) * RadiansPerDegree;
        m_latWeight = Slack * NmPerDegree * NmPerDegree;
        if (phi + Reach >= GeoPi / 2)
            return; // around a pole any longitude is near
        const double halfReach = std::asin(std::sin(Reach) / std::cos(phi)) / 2;
        const double sineLoss = std::sin(halfReach) / halfReach;
        m_lonWeight = m_latWeight * std::cos(phi) * std::cos(phi + Reach) * sineLoss * sineLoss;
    }

    /// The square of a distance in nautical miles, for a point in the range of degrees.
    [[nodiscard]] double SquaredNm(const TerrainPoint& point) const noexcept
    {
        const double dLat = point.Lat - m_lat;
        const double oneWay = std::fabs(point.Lon - m_lon);
        const double dLon = std::min(oneWay, 360 - oneWay);
        return m_latWeight * (dLat * dLat) + m_lonWeight * (dLon * dLon);
    }

private:
    double m_lat;
    double m_lon;
    double m_latWeight = 0;
    double m_lonWeight = 0;
};
} // namespace

/// A whole number of miles that the point's distance is not below, or nothing where the point cannot matter.
static std::optional<std::size_t> NearestPossibleNm(const ShortestDistance& shortest,
                                                    const TerrainPoint& point) noexcept
{
    if (!InDegreeRange(point.Lat, point.Lon))
        return IsFinite(point.Lat, point.Lon) ? std::optional<std::size_t>(0) : std::nullopt;
    constexpr double Beyond = MaxDestinationNm + 1;
    const double squared = shortest.SquaredNm(point);
    if (squared >= Beyond * Beyond)
        return std::nullopt;
    return static_cast<std::size_t>(std::sqrt(squared));
}

HighestTerrain FindHighestTerrain(const std::vector<TerrainPoint>& points, double lat, double lon) noexcept
{
    HighestTerrain highest{};
    const ShortestDistance shortest(lat, lon);
    for (const TerrainPoint& point : points) {
        if (point.ElevationFt <= highest.front()) // the table never falls outward, so it is this high everywhere
            continue;
        const auto nearest = NearestPossibleNm(shortest, point);
        if (!nearest || point.ElevationFt <= highest[*nearest])
            continue;
        const std::int16_t distance = DistanceNm(lat, lon, point.Lat, point.Lon);
        for (auto d = static_cast<std::size_t>(distance); d < highest.size() && highest[d] < point.ElevationFt; ++d)
            highest[d] = point.ElevationFt;
    }
    return highest;
}

void MinimumAltitudes::Reset() noexcept
{
    m_area = {};
    m_destinations.clear();
    m_answers.clear();
}

void MinimumAltitudes::IndexDestinations(const AreaModel& area)
{
    const AreaIdentity identity{area.AreaAirports.data(), area.AreaAirports.size(), area.TerrainPoints.data(),
                                area.TerrainPoints.size()};
    if (m_area == identity)
        return;
    Reset();
    m_area = identity;
    for (const AirportRecord& airport : area.AreaAirports) {
        if (IsFinite(airport.Lat, airport.Lon))
            m_destinations.push_back(
                {ToUpper(TrimSpaces(airport.Icao)), airport.Lat, airport.Lon, airport.ElevationFt, nullptr});
    }
    std::ranges::stable_sort(m_destinations, {}, &Destination::Icao);
}

std::span<MinimumAltitudes::Destination> MinimumAltitudes::FindDestinations(std::string_view icao)
{
    const std::string key = ToUpper(TrimSpaces(icao));
    if (key.empty())
        return {};
    const auto first = std::ranges::lower_bound(m_destinations, key, {}, &Destination::Icao);
    const auto last = std::ranges::upper_bound(m_destinations, key, {}, &Destination::Icao);
    return {first, last};
}

/// The terrain's elevation and what keeps clear of it; elevations of a damaged file may lie anywhere in 32 bits.
static std::int32_t ClearOf(std::int32_t elevationFt) noexcept
{
    constexpr std::int64_t ClearanceFt = 2000;
    return static_cast<std::int32_t>(
        std::min<std::int64_t>(elevationFt + ClearanceFt, std::numeric_limits<std::int32_t>::max()));
}

std::int32_t MinimumAltitudes::Compute(const AreaModel& area, std::span<Destination> matching, double lat, double lon)
{
    std::int32_t minimumFt = 0;
    for (Destination& destination : matching) {
        const std::int16_t distance = DistanceNm(destination.Lat, destination.Lon, lat, lon);
        if (distance > MaxDestinationNm)
            continue;
        if (!destination.Highest)
            destination.Highest = std::make_unique<const HighestTerrain>(
                FindHighestTerrain(area.TerrainPoints, destination.Lat, destination.Lon));
        const std::int32_t terrainFt = (*destination.Highest)[static_cast<std::size_t>(distance)];
        minimumFt = ClearOf(terrainFt > 0 ? terrainFt : destination.ElevationFt);
    }
    return minimumFt;
}

std::int32_t MinimumAltitudes::For(const AreaModel& area, const PlayerRecord& target, std::size_t slot)
{
    if (target.FlightRules != InstrumentRules || area.TerrainPoints.empty())
        return 0;
    IndexDestinations(area);
    if (m_answers.size() <= slot)
        m_answers.resize(slot + 1);
    Answer& answer = m_answers[slot];
    const bool sameDestination = answer.Known && answer.DestinationIcao == target.DestinationIcao;
    if (!sameDestination) {
        answer.DestinationIcao = target.DestinationIcao;
        answer.Matching = FindDestinations(target.DestinationIcao);
        answer.Known = true;
    }
    if (!sameDestination || answer.Latitude != target.Latitude || answer.Longitude != target.Longitude) {
        answer.Latitude = target.Latitude;
        answer.Longitude = target.Longitude;
        answer.MinimumFt = Compute(area, answer.Matching, target.Latitude, target.Longitude);
    }
    return answer.MinimumFt;
}
} // namespace corvane
