#pragma once

#include "radar/ScopeView.h"
#include "radar/Surface.h"

namespace corvane {
/// Nine dashed rings around the centre of the view. Ring r is inscribed in the rectangle whose corners lie r = 10, 20,
/// .. 90 nautical miles out on the diagonals, so it is about 0.71 r in radius. Leaves the drawing defaults.
void DrawRangeRings(Surface& surface, const ScopeView& view);
} // namespace corvane
