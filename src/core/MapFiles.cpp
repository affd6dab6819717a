#include "core/MapFiles.h"

#include "core/Rounding.h"

namespace corvane {
void AppendOutline(Bytes& out, std::span<const LatLon> line)
{
    constexpr double HalfRange = 2147483648.0;
    constexpr std::size_t SeparatorSize = 8;
    ByteWriter writer(out);
    for (const LatLon& vertex : line) {
        const auto lat = RoundTo<std::int32_t>(vertex.Lat / 90 * HalfRange);
        writer.WriteI32(lat == 0 ? 1 : lat);
        writer.WriteI32(RoundTo<std::int32_t>(vertex.Lon / 180 * HalfRange));
    }
    writer.WriteZeros(SeparatorSize);
}

void AppendTerrainPoint(Bytes& out, const LatLon& position, std::int32_t elevationFt)
{
    ByteWriter writer(out);
    writer.WriteF64(position.Lat);
    writer.WriteF64(position.Lon);
    writer.WriteI32(elevationFt);
}
} // namespace corvane
