#pragma once

#include "radar/BlockGeometry.h"
#include "radar/DisplayOptions.h"
#include "radar/Surface.h"
#include "session/MemberRadio.h"
#include "session/PlayerTable.h"
#include "tracks/Track.h"

#include <cstddef>
#include <string>
#include <vector>

namespace corvane {
/// A block's text, line under line; no lines for no block.
struct BlockText {
    std::vector<std::string> Lines;
    /// Of a compact block's second line: what stands before the gap for the trend arrow. Empty: there is no gap.
    std::string BeforeArrow;
    TrackTrend Trend = TrackTrend::Level;
    bool operator==(const BlockText&) const = default;
};

/// What else a block depends on.
struct BlockSubject {
    TrackTrend Trend = TrackTrend::Level;
    bool OnGround = false;
    bool LowAltitude = false; ///< a line of the altitude and its minimum is added
    MemberRadio Radio = {};
};

/// Writes a target's block. Compact: the callsign; "072   25", hundreds of feet, a gap for the arrow, and tens of
/// knots. Full: also "B738 KSEA 330", type, destination and hundreds of feet of cruise altitude, and "4321 118.300",
/// transponder code and frequency, as far as they are known. Names that people give themselves are cut after some two
/// dozen characters.
BlockText WriteBlock(const PlayerRecord& target, const BlockSubject& subject, const DisplayOptions& options);

BlockSize MeasureBlock(const BlockText& text, const Surface& surface);

/// Draws the text into its box in the pen's colour, with the trend arrow.
void DrawBlockText(Surface& surface, const BlockText& text, ScopePoint topLeft);
} // namespace corvane
