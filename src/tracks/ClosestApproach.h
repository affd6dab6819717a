#pragma once

#include "tracks/PairPlane.h"
#include "tracks/Track.h"
#include "tracks/TrackOptions.h"

#include <optional>

namespace corvane {
/// A target as conflicts are looked for: straight on at constant speed and climb.
struct Mover {
    LatLon Position;
    double EastKt = 0;
    double NorthKt = 0;
    double AltitudeFt = 0;
    double ClimbFtPerMin = 0;
};

/// course  true, in degrees
Mover MakeMover(const LatLon& position, double course, double speedKt, double altitudeFt,
                double climbFtPerMin) noexcept;

/// When the distance between two is least, and what it and the difference of altitudes are then.
struct ClosestPoint {
    double Seconds = 0;
    double Nm = 0;
    double Ft = 0;
};
/// On the plane at their midpoint, from now to a limit of seconds. Two that part, or keep apart, are closest now.
ClosestPoint FindClosestPoint(const Mover& one, const Mover& other, double withinSeconds) noexcept;

struct Conflict {
    bool Violated = false;       ///< separation is lost now
    double SecondsToClosest = 0; ///< when the distance is least, within the options' ConflictSeconds
    double ClosestNm = 0;        ///< distance and difference of altitudes at that time
    double ClosestFt = 0;
};

/// Whether two targets will be closer than ConflictNm and than ConflictFt at one time of the next ConflictSeconds, on
/// the plane at their midpoint; nothing where they will not.
std::optional<Conflict> FindConflict(const Mover& one, const Mover& other, const AlertOptions& options) noexcept;
} // namespace corvane
