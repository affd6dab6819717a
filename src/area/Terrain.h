#pragma once

#include "area/AreaModel.h"
#include "core/ByteSource.h"

#include <span>
#include <vector>

namespace corvane {
inline constexpr std::string_view TerrainFileName = "world_terrain.db";

/// The terrain file is a sequence of records of latitude and longitude (64-bit floating point, degrees) and elevation
/// (32 bits, feet), little-endian, without a header. What follows the last whole record is ignored.
inline constexpr std::size_t TerrainRecordSize = 20;
TerrainPoint DecodeTerrainPoint(std::span<const std::uint8_t, TerrainRecordSize> record) noexcept;

/// Appends the points of a terrain file for whose latitude and longitude inside holds, in file order.
template <class Predicate>
Result<void> ReadTerrain(ByteSource& terrain, const Predicate& inside, std::vector<TerrainPoint>& points)
{
    for (std::uint64_t at = 0;;) {
        const Result<ByteSpan> bytes = terrain.View(at, TerrainRecordSize);
        if (!bytes)
            return bytes.error();
        const std::size_t count = bytes->size() / TerrainRecordSize;
        if (count == 0)
            return {};
        for (std::size_t i = 0; i < count; ++i) {
            const TerrainPoint point = DecodeTerrainPoint(std::span<const std::uint8_t, TerrainRecordSize>(
                bytes->data() + i * TerrainRecordSize, TerrainRecordSize));
            if (inside(point.Lat, point.Lon))
                points.push_back(point);
        }
        at += count * TerrainRecordSize;
    }
}
} // namespace corvane
