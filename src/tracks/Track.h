#pragma once

#include "core/Geodesy.h"

#include <compare>
#include <cstdint>
#include <string>
#include <vector>

namespace corvane {
/// A member as its tracks are kept by: name and id together, as in the player table.
struct MemberKey {
    std::int32_t PlayerId = 0;
    std::string Name;
    // NOLINTNEXTLINE(modernize-use-nullptr): the checker takes the zero that a default comparison means for a pointer
    auto operator<=>(const MemberKey&) const = default;
};

/// Names a track for as long as the program runs: numbers are not given twice, so a member that comes again is new.
using TrackId = std::uint64_t;

/// What a member has said of itself at one time.
struct TrackReport {
    double Time = 0; ///< seconds of any clock that does not go back
    LatLon Position;
    std::int32_t AltitudeFt = 0;
    std::int16_t GroundSpeedKt = 0;
    double TrueHeading = 0;
};

enum class TrackTrend : std::int8_t { Descending = -1, Level = 0, Climbing = 1 };

inline constexpr double SecondsPerHour = 3600;

/// Course and climb are those of the reports of the last so many seconds.
inline constexpr double CourseSeconds = 10;

/// A member's way as it is known at one time.
struct TrackState {
    TrackId Id = 0;
    TrackReport Last;         ///< its last report
    double Age = 0;           ///< seconds since that
    bool Stale = false;       ///< Age has reached the options' StaleSeconds
    double Course = 0;        ///< true, made good over the last reports; the heading where these say nothing
    double ClimbFtPerMin = 0; ///< over the same reports; 0 where these say nothing
    TrackTrend Trend = TrackTrend::Level;
};

/// Where a target will be if it keeps course and speed.
LatLon PositionAhead(const TrackState& track, double seconds) noexcept;
} // namespace corvane
