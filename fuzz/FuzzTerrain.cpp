#include "area/AreaCircle.h"
#include "area/Terrain.h"

#include <cstdlib>

using namespace corvane;

// The centre comes from the first 16 bytes, the points from the rest. The quick test must agree with the distance.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    ByteReader head(ByteSpan(data, size));
    const double lat = head.ReadF64();
    const double lon = head.ReadF64();
    MemorySource terrain("world_terrain.db", ByteSpan(data, size).subspan(head.Position()));
    const AreaCircle circle({lat, lon});
    std::vector<TerrainPoint> quick;
    std::vector<TerrainPoint> plain;
    const auto within = [&](LatLon at) {
        return std::isfinite(at.Lat) && std::isfinite(at.Lon) && DistanceNm({lat, lon}, at) <= AreaRadiusNm;
    };
    const auto contains = [&](LatLon at) { return circle.Contains(at); };
    if (!ReadTerrain(terrain, contains, quick) || !ReadTerrain(terrain, within, plain) || quick != plain)
        std::abort();
    return 0;
}
