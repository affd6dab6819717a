#include "import/MapImport.h"

#include <algorithm>

namespace corvane {
void MapBounds::Include(LatLon at) noexcept
{
    South = std::min(South, at.Lat);
    North = std::max(North, at.Lat);
    West = std::min(West, at.Lon);
    East = std::max(East, at.Lon);
}
} // namespace corvane
