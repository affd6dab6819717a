#include "area/SectorBox.h"

#include "core/Rounding.h"

#include <algorithm>
#include <cmath>

namespace corvane {
void SectorBox::FoldIn(const AirspaceRecord& piece) noexcept
{
    if (*this == SectorBox{}) {
        *this = {piece.North, piece.South, piece.West, piece.East};
        return;
    }
    const bool takesOverCrossing = West < East && piece.West > piece.East;
    North = std::max(North, piece.North);
    South = std::min(South, piece.South);
    West = takesOverCrossing ? piece.West : std::min(West, piece.West);
    East = takesOverCrossing ? piece.East : std::max(East, piece.East);
}

LatLon SectorBox::Center() const noexcept
{
    const std::int16_t distance = DistanceNm({North, West}, {South, East});
    const std::int16_t course = TrueCourse({North, West}, {South, East});
    return DestinationNm({North, West}, course, RoundTo<std::int16_t>(distance / 2.0));
}

bool SectorBox::IsFinite() const noexcept
{
    return std::isfinite(North) && std::isfinite(South) && std::isfinite(West) && std::isfinite(East);
}
} // namespace corvane
