#include "radar/MinimumAltitude.h"

#include "area/DistanceBound.h"
#include "core/Geodesy.h"
#include "core/Text.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>
#include <optional>

namespace corvane {
static constexpr std::uint8_t InstrumentRules = 1;

static bool IsFinite(LatLon at) noexcept
{
    return std::isfinite(at.Lat) && std::isfinite(at.Lon);
}

HighestTerrain FindHighestTerrain(const std::vector<TerrainPoint>& points, LatLon center) noexcept
{
    HighestTerrain highest{};
    const DistanceBound bound(center, MaxDestinationNm);
    for (const TerrainPoint& point : points) {
        if (point.ElevationFt <= highest.front()) // the table never falls outward, so it is this high everywhere
            continue;
        const LatLon at{point.Lat, point.Lon};
        const auto nearest = bound.LeastNm(at);
        if (!nearest || point.ElevationFt <= highest[*nearest] || !IsFinite(at))
            continue;
        const std::int16_t distance = DistanceNm(center, at);
        for (auto d = static_cast<std::size_t>(distance); d < highest.size() && highest[d] < point.ElevationFt; ++d)
            highest[d] = point.ElevationFt;
    }
    assert(std::ranges::is_sorted(highest)); // what a point at the front does not raise it raises nowhere
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
        if (IsFinite({airport.Lat, airport.Lon}))
            m_destinations.push_back(
                {ToUpper(TrimSpaces(airport.Icao)), {airport.Lat, airport.Lon}, airport.ElevationFt, nullptr});
    }
    std::ranges::stable_sort(m_destinations, {}, &Destination::Icao);
}

std::span<MinimumAltitudes::Destination> MinimumAltitudes::FindDestinations(std::string_view icao)
{
    const std::string key = ToUpper(TrimSpaces(icao));
    if (key.empty())
        return {};
    assert(std::ranges::is_sorted(m_destinations, {}, &Destination::Icao));
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

std::int32_t MinimumAltitudes::Compute(const AreaModel& area, std::span<Destination> matching, LatLon target)
{
    std::int32_t minimumFt = 0;
    for (Destination& destination : matching) {
        const std::int16_t distance = DistanceNm(destination.Position, target);
        if (distance > MaxDestinationNm)
            continue;
        if (!destination.Highest)
            destination.Highest =
                std::make_unique<const HighestTerrain>(FindHighestTerrain(area.TerrainPoints, destination.Position));
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
    const LatLon position{target.Latitude, target.Longitude};
    if (!sameDestination || answer.Position != position) {
        answer.Position = position;
        answer.MinimumFt = Compute(area, answer.Matching, position);
    }
    return answer.MinimumFt;
}
} // namespace corvane
