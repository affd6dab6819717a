#pragma once

#include "area/AreaModel.h"
#include "session/PlayerTable.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
/// An IFR flight has a minimum altitude while it is at most this far from its destination.
inline constexpr std::int16_t MaxDestinationNm = 90;

/// The highest terrain around a destination: at [d] the highest elevation above 0, in feet, of the terrain points whose
/// DistanceNm from it is at most d; 0 where there is none.
using HighestTerrain = std::array<std::int32_t, MaxDestinationNm + 1>;

/// One pass over the terrain points. Points without a finite position count for nothing.
HighestTerrain FindHighestTerrain(const std::vector<TerrainPoint>& points, LatLon center) noexcept;

/// Answers minimum altitudes of targets, once a second for each, without searching the terrain each time.
///
/// A distance is a whole number of miles, so everything the terrain has to say about a destination stands in the 91
/// numbers of its HighestTerrain. They are found when a target first needs them and kept until the area changes.
class MinimumAltitudes {
public:
    /// Forgets everything. To be called when an area has been loaded; an area whose tables stand elsewhere in memory or
    /// have other sizes is noticed without it.
    void Reset() noexcept;

    /// The minimum altitude in feet of the target in one place of the player table, 0 for none: 2000 above the highest
    /// terrain in the circle around the destination that reaches out to the aircraft, or above the airport where no
    /// terrain there is above 0. Destinations are compared trimmed and in upper case; where several airports of the
    /// area match, the last one within MaxDestinationNm counts.
    ///
    /// slot  the target's index in the player table; a target there that has not moved costs no computation
    std::int32_t For(const AreaModel& area, const PlayerRecord& target, std::size_t slot);

private:
    struct Destination {
        std::string Icao; // trimmed, upper case
        LatLon Position;
        std::int32_t ElevationFt = 0;
        std::unique_ptr<const HighestTerrain> Highest; // empty until a target needs it
    };
    /// The tables that the answers are about.
    struct AreaIdentity {
        const AirportRecord* Airports = nullptr;
        std::size_t AirportCount = 0;
        const TerrainPoint* Terrain = nullptr;
        std::size_t TerrainCount = 0;
        bool operator==(const AreaIdentity&) const = default;
    };
    struct Answer {
        bool Known = false;
        std::string DestinationIcao;
        std::span<Destination> Matching; // of m_destinations
        LatLon Position;
        std::int32_t MinimumFt = 0;
    };

    void IndexDestinations(const AreaModel& area);
    std::span<Destination> FindDestinations(std::string_view icao);
    static std::int32_t Compute(const AreaModel& area, std::span<Destination> matching, LatLon target);

    AreaIdentity m_area;
    std::vector<Destination> m_destinations; // by Icao, then in table order
    std::vector<Answer> m_answers;           // by slot
};
} // namespace corvane
