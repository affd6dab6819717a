#pragma once

#include "area/AreaModel.h"
#include "core/ByteSource.h"

#include <bit>
#include <string_view>
#include <vector>

namespace corvane {
inline constexpr std::string_view TerrainFileName = "world_terrain.db";

/// The terrain file is a sequence of records of latitude and longitude (64-bit floating point, degrees) and elevation
/// (32 bits, feet), little-endian, without a header. What follows the last whole record is ignored.
inline constexpr std::size_t TerrainRecordSize = 20;

/// The point in the TerrainRecordSize bytes that start at record.
inline TerrainPoint DecodeTerrainPoint(const std::uint8_t* record) noexcept
{
    return {std::bit_cast<double>(LittleEndian<8>(record)), std::bit_cast<double>(LittleEndian<8>(record + 8)),
            static_cast<std::int32_t>(LittleEndian<4>(record + 16))};
}

/// Appends the points of a terrain file for whose position inside holds, in file order.
template <class Predicate>
Result<void> ReadTerrain(ByteSource& terrain, const Predicate& inside, std::vector<TerrainPoint>& points)
{
    for (std::uint64_t at = 0;;) {
        const Result<ByteSpan> bytes = terrain.View(at, TerrainRecordSize);
        if (!bytes)
            return bytes.error();
        const std::size_t whole = bytes->size() - bytes->size() % TerrainRecordSize;
        if (whole == 0)
            return {};
        for (std::size_t i = 0; i < whole; i += TerrainRecordSize) {
            const TerrainPoint point = DecodeTerrainPoint(bytes->data() + i);
            if (inside({point.Lat, point.Lon}))
                points.push_back(point);
        }
        at += whole;
    }
}
} // namespace corvane
