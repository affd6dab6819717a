#pragma once

#include "area/AreaModel.h"
#include "core/ByteSource.h"

#include <vector>

namespace corvane {
inline constexpr std::string_view WorldMapFileName = "world.map";

/// The part of the world whose outlines an area keeps, in degrees; edges belong to it. A west edge above the east edge
/// means that it crosses the 180 degree meridian; equal ones hold nothing. Latitudes may lie beyond the poles.
struct OutlineWindow {
    double North = 0;
    double South = 0;
    double West = 0;
    double East = 0;
    bool operator==(const OutlineWindow&) const = default;
};

/// The window that reaches 22 degrees beyond north and south and 45 degrees beyond west and east.
OutlineWindow OutlineWindowAround(double north, double south, double west, double east) noexcept;

inline constexpr std::size_t OutlineEntrySize = 8;

/// Appends every polyline of a world map cut to the window; each piece is opened by a separator point.
///
/// The file is a sequence of entries of latitude and longitude, signed 32-bit little-endian numbers of which 2^31 are
/// 90 and 180 degrees; (0, 0) ends a polyline. What follows the last whole entry is ignored.
Result<void> CutOutlines(ByteSource& worldMap, const OutlineWindow& window, std::vector<OutlinePoint>& points);
} // namespace corvane
