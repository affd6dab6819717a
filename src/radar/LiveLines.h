#pragma once

#include "core/MagVarGrid.h"
#include "radar/ScopeView.h"
#include "radar/Surface.h"
#include "session/PlayerTable.h"
#include "tracks/TrafficMonitor.h"

#include <span>
#include <string>

namespace corvane {
/// A line between two targets that lasts while both are there.
struct LiveLine {
    MemberKey From;
    MemberKey To;
};

/// "12.3 nm  095*  closest 2.1 nm in 1:05": distance and magnetic course from the first to the second, and while they
/// close how near they will come and when, on their present course and speed. The asterisk stands for the degree sign.
std::string LiveLineText(const TrackState& from, const TrackState& to, const MagVarGrid& grid);

/// Draws the lines whose members both have reported, dotted, each with its text at its middle. Leaves the drawing
/// defaults set. now  seconds of the monitor's clock
void DrawLiveLines(Surface& surface, const ScopeView& view, const MagVarGrid& grid, std::span<const LiveLine> lines,
                   const TrafficMonitor& monitor, double now);
} // namespace corvane
