#include "import/MapImport.h"

#include <algorithm>

namespace corvane {
void MapBounds::Include(double lat, double lon) noexcept
{
    South = std::min(South, lat);
    North = std::max(North, lat);
    West = std::min(West, lon);
    East = std::max(East, lon);
}
} // namespace corvane
