#include "import/OutlineEnds.h"

#include <cassert>

namespace corvane {
std::vector<LatLon> UnbrokenOutline(std::span<const LatLon> line)
{
    constexpr std::size_t SmallestRing = 8; // points, the first repeated at the end
    constexpr std::size_t Missed = CoarsestOutlineStep - 1;
    assert(line.size() >= 2);
    if (line.front() == line.back()) {
        std::vector<LatLon> ring(line.begin(), line.end());
        if (line.size() >= SmallestRing) {
            for (std::size_t i = 1; i <= 2 * Missed; ++i) // the first joined point may be so late, the last so early
                ring.push_back(line[(i - 1) % (line.size() - 1) + 1]);
        }
        return ring;
    }
    std::vector<LatLon> held(Missed, line.front());
    held.insert(held.end(), line.begin(), line.end());
    held.insert(held.end(), Missed, line.back());
    return held;
}
} // namespace corvane
