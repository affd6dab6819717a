#pragma once

#include "tracks/Track.h"

#include <cstdint>
#include <string>
#include <vector>

namespace corvane {
enum class AlertKind : std::uint8_t { Conflict, LowAltitude };

/// An alert that stands: a pair that comes too close, or a target that is too low.
struct Alert {
    AlertKind Kind = AlertKind::Conflict;
    TrackId First = 0;  ///< the track of FirstId
    TrackId Second = 0; ///< of a conflict
    std::int32_t FirstId = 0;
    std::int32_t SecondId = 0; ///< of a conflict; not below FirstId

    // of a conflict
    bool Violated = false;       ///< separation is lost; otherwise it will be
    double SecondsToClosest = 0; ///< from the refresh that saw the conflict last; so are the two that follow
    double ClosestNm = 0;
    double ClosestFt = 0;

    // of a low altitude
    std::int32_t AltitudeFt = 0;
    std::int32_t MinimumAltitudeFt = 0;

    double Began = 0; ///< the time of the refresh that began it
    bool Acknowledged = false;

    [[nodiscard]] bool Names(TrackId track) const noexcept
    {
        return First == track || (Kind == AlertKind::Conflict && Second == track);
    }
};

struct AlertEvent {
    double Time = 0;
    bool Begins = false; ///< otherwise it ends
    Alert What;
};
} // namespace corvane
