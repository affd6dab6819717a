#pragma once

#include <cstdint>

namespace corvane {
/// What is kept of a member's way. The defaults keep as little as the classic display shows.
struct TrackOptions {
    std::int32_t HistoryDots = 0;    ///< positions of the past to be shown, 0 .. 30
    std::int32_t HistorySeconds = 5; ///< at least so far apart in time, 1 .. 60
    std::int32_t StaleSeconds = 0;   ///< a target without a report for so long is stale, 0 (never) .. 600
    bool operator==(const TrackOptions&) const = default;
};

/// When the alerts begin. The defaults are the classic display's, which has none.
struct AlertOptions {
    bool ConflictAlert = false;
    bool LowAltitudeAlert = false;
    double ConflictNm = 3;        ///< separation lost below both of these at once, 0.5 .. 20
    double ConflictFt = 900;      ///< 100 .. 5000
    double ConflictSeconds = 120; ///< how far ahead a conflict is looked for, 0 .. 300
    bool operator==(const AlertOptions&) const = default;
};
} // namespace corvane
