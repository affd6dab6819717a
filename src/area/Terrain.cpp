#include "area/Terrain.h"

namespace corvane {
TerrainPoint DecodeTerrainPoint(std::span<const std::uint8_t, TerrainRecordSize> record) noexcept
{
    ByteReader in(record);
    TerrainPoint point;
    point.Lat = in.ReadF64();
    point.Lon = in.ReadF64();
    point.ElevationFt = in.ReadI32();
    return point;
}
} // namespace corvane
