#include "demo/RegionContent.h"

#include "demo/SceneryRegions.h"

#include <algorithm>

namespace corvane {
std::vector<RegionContent> ContentByRegion(const WorldData& world, std::span<const AirportRadio> radio)
{
    std::vector<RegionContent> regions(SceneryRegions().size());
    for (std::size_t rank = 0; rank < world.Airports.size(); ++rank) {
        const AirportSource& airport = world.Airports[rank];
        regions[RegionOf(airport.Icao, airport.Position.Lon)].Airports.push_back({&airport, &radio[rank], rank});
    }
    for (RegionContent& region : regions)
        std::sort(region.Airports.begin(), region.Airports.end(),
                  [](const RankedAirport& a, const RankedAirport& b) { return a.Source->Icao < b.Source->Icao; });
    for (const NavaidSource& navaid : world.Navaids)
        regions[RegionOf(navaid.Icao, navaid.Position.Lon)].Navaids.push_back(&navaid);
    return regions;
}
} // namespace corvane
