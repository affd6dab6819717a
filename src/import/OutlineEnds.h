#pragma once

#include "core/Geodesy.h"

#include <span>
#include <vector>

namespace corvane {
/// The radar joins every so many-eth point at most.
inline constexpr std::size_t CoarsestOutlineStep = 18;

/// A line as the radar draws it without a hole at any zoom, whichever of its points are joined: its ends stand there
/// often enough to be hit.
///
/// Rings of no more points than are skipped stay as they are: they may vanish where the zoom is wide.
std::vector<LatLon> UnbrokenOutline(std::span<const LatLon> line);
} // namespace corvane
