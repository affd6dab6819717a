#pragma once

#include "area/AreaModel.h"
#include "radar/ScopeView.h"
#include "radar/Surface.h"

#include <span>

namespace corvane {
/// Coastlines and borders in grey: every OutlineStep-th point that lies on the scope is joined to the last such point
/// of its polyline, straight across any part that leaves the scope. A separator breaks the line wherever it stands; a
/// visible point on the equator or on the prime meridian breaks it when the stride lands on it. Leaves the drawing
/// defaults.
void DrawWorldOutlines(Surface& surface, const ScopeView& view, std::span<const OutlinePoint> points);
} // namespace corvane
