#include "tracks/AirportIndex.h"

#include "core/Text.h"
#include "tracks/PairPlane.h"

#include <algorithm>
#include <cmath>

namespace corvane {
static constexpr double PatternNm = 3;

static bool IsWithin(const LatLon& one, const LatLon& other, double nm) noexcept
{
    return OffsetOnPlane(one, other).LengthNm() <= nm;
}

AirportIndex::AirportIndex(const AreaModel& area)
{
    for (const AirportRecord& airport : area.AreaAirports)
        if (OnEarth({airport.Lat, airport.Lon}))
            m_byLat.push_back({{airport.Lat, airport.Lon},
                               static_cast<double>(airport.ElevationFt),
                               ToUpper(TrimSpaces(airport.Icao))});
    std::ranges::stable_sort(m_byLat, {}, [](const Airport& airport) { return airport.Position.Lat; });
    for (std::uint32_t i = 0; i < m_byLat.size(); ++i)
        m_byIcao.push_back(i);
    std::ranges::stable_sort(m_byIcao, {}, [&](std::uint32_t i) -> const std::string& { return m_byLat[i].Icao; });
}

std::span<const AirportIndex::Airport> AirportIndex::InLatitudes(double south, double north) const noexcept
{
    const auto lat = [](const Airport& airport) { return airport.Position.Lat; };
    const auto first = std::ranges::lower_bound(m_byLat, south, {}, lat);
    const auto last = std::ranges::upper_bound(first, m_byLat.end(), north, {}, lat);
    return {first, last};
}

bool AirportIndex::SharePattern(const LatLon& one, double oneFt, const LatLon& other, double otherFt) const noexcept
{
    constexpr double PatternFt = 1000;
    constexpr double Reach = (PatternNm + 0.01) / PlaneNmPerDegree;
    const auto near = InLatitudes(std::max(one.Lat, other.Lat) - Reach, std::min(one.Lat, other.Lat) + Reach);
    return std::ranges::any_of(near, [&](const Airport& airport) {
        return std::max(oneFt, otherFt) - airport.ElevationFt < PatternFt &&
               IsWithin(one, airport.Position, PatternNm) && IsWithin(other, airport.Position, PatternNm);
    });
}

bool AirportIndex::AtFieldElevation(const LatLon& position, double altitudeFt) const noexcept
{
    constexpr double FieldFt = 300;
    constexpr double Reach = (PatternNm + 0.01) / PlaneNmPerDegree;
    return std::ranges::any_of(InLatitudes(position.Lat - Reach, position.Lat + Reach), [&](const Airport& airport) {
        return std::abs(altitudeFt - airport.ElevationFt) <= FieldFt && IsWithin(position, airport.Position, PatternNm);
    });
}

bool AirportIndex::IsNear(std::string_view icao, const LatLon& position, double nm) const
{
    const std::string key = ToUpper(TrimSpaces(icao));
    if (key.empty())
        return false;
    const auto code = [&](std::uint32_t i) -> const std::string& { return m_byLat[i].Icao; };
    for (auto match = std::ranges::lower_bound(m_byIcao, key, {}, code); match != m_byIcao.end() && code(*match) == key;
         ++match)
        if (IsWithin(position, m_byLat[*match].Position, nm))
            return true;
    return false;
}
} // namespace corvane
