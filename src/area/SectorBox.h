#pragma once

#include "core/Geodesy.h"
#include "core/Records.h"

namespace corvane {
/// The bounding box of an ARTCC/FIR sector in degrees. A west bound above the east bound means that the box crosses the
/// 180 degree meridian; equal ones hold nothing, as in a new box, whose bounds are all 0.
struct SectorBox {
    double North = 0;
    double South = 0;
    double West = 0;
    double East = 0;
    bool operator==(const SectorBox&) const = default;

    /// Grows the box by a piece of the sector. The rule is fixed and its results can look odd: a piece that crosses the
    /// 180 degree meridian replaces the longitudes of a box that does not.
    void FoldIn(const AirspaceRecord& piece) noexcept;

    /// Whether an airport, a navaid or a terrain point lies in the box: its edges belong to it only where it crosses
    /// the 180 degree meridian.
    [[nodiscard]] bool Contains(LatLon at) const noexcept
    {
        // Every comparison is made: over a million scattered terrain points a branch on each would be guessed wrong.
        if (West < East)
            return static_cast<int>(South < at.Lat) + static_cast<int>(at.Lat < North) +
                       static_cast<int>(West < at.Lon) + static_cast<int>(at.Lon < East) ==
                   4;
        return Touches(at);
    }

    /// Whether a boundary point of another airspace lies in the box or on its edge.
    [[nodiscard]] bool Touches(LatLon at) const noexcept
    {
        if (!(South <= at.Lat && at.Lat <= North))
            return false;
        if (West < East)
            return West <= at.Lon && at.Lon <= East;
        return West > East && ((West <= at.Lon && at.Lon <= 180) || (-180 <= at.Lon && at.Lon <= East));
    }

    /// Half way, in whole miles, along the great circle from the north-west to the south-east corner.
    [[nodiscard]] LatLon Center() const noexcept;
    /// Whether all bounds are finite numbers.
    [[nodiscard]] bool IsFinite() const noexcept;
};
} // namespace corvane
