#include "import/OutlineEnds.h"

#include <cassert>

namespace corvane {
std::vector<LatLon> UnbrokenOutline(std::span<const LatLon> line)
{
    constexpr std::size_t Missed = CoarsestOutlineStep - 1; // at most, at either end
    assert(line.size() >= 2);
    if (line.front() == line.back() && line.size() <= CoarsestOutlineStep)
        return {line.begin(), line.end()};
    std::vector<LatLon> held(Missed, line.front());
    held.insert(held.end(), line.begin(), line.end());
    held.insert(held.end(), Missed, line.back());
    return held;
}
} // namespace corvane
