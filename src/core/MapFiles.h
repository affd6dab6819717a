#pragma once

#include "core/Bytes.h"
#include "core/Geodesy.h"

#include <cstdint>
#include <span>

namespace corvane {
/// How world.map and world_terrain.db are written; docs/formats.md describes both.

/// Appends a polyline to the content of world.map: an entry a vertex, then an entry of two zeros.
///
/// Vertices lie within -90 .. 90 and -180 .. 180 degrees. One on the equator is stored 5 mm north of it: readers take a
/// latitude of 0 for the end of a line.
void AppendOutline(Bytes& out, std::span<const LatLon> line);

/// Appends a record to the content of world_terrain.db.
void AppendTerrainPoint(Bytes& out, const LatLon& position, std::int32_t elevationFt);
} // namespace corvane
