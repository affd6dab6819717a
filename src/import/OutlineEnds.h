#pragma once

#include "core/Geodesy.h"

#include <span>
#include <vector>

namespace corvane {
/// The radar joins every so many-eth point at most.
inline constexpr std::size_t CoarsestOutlineStep = 18;

/// A line as the radar draws it without a hole at any zoom, whichever of its points are the ones that are joined: a
/// ring goes on beyond its first point, the ends of a line that is open stand there often enough to be hit.
///
/// Rings of fewer than eight points stay as they are: they may vanish where the zoom is wide.
std::vector<LatLon> UnbrokenOutline(std::span<const LatLon> line);
} // namespace corvane
