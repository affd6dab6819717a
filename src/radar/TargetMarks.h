#pragma once

#include "radar/BlockPlacer.h"
#include "radar/BlockText.h"
#include "tracks/Track.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace corvane {
enum class ConflictMark : std::uint8_t { None, Predicted, Violated };

/// Pixels of one target among those of all.
struct PointRange {
    std::size_t First = 0;
    std::size_t Count = 0;
};

/// A target as it is to be drawn, everything decided.
struct TargetMark {
    std::size_t Slot = 0; ///< in the player table
    std::int32_t PlayerId = 0;
    TrackId Track = 0; ///< 0 before its first report
    ScopePoint At;
    ScopePoint VectorEnd;
    PointRange Trail;   ///< the latest first
    PointRange Minutes; ///< where it will be after each minute
    double Light = 1;   ///< of its colours: less with the age of a stale target
    bool Stale = false;
    bool Small = false; ///< filtered: nothing but a small dot
    bool Selected = false;
    ConflictMark Conflict = ConflictMark::None;
    bool LowAltitude = false;
    BlockText Block;
    BlockPlace Place;
};

/// The line that joins a conflict's targets.
struct PairMark {
    ScopePoint From;
    ScopePoint To;
    bool Violated = false;
    std::string Text; ///< beside its middle
    PixelBox TextBox;
};

/// A line of the list of alerts.
struct AlertLine {
    std::string Text;
    bool Violated = false;
    std::size_t Index = 0; ///< among the alerts that stand
    PixelBox Box;
};

/// Everything that is drawn of targets and alerts.
struct TargetMarks {
    std::vector<TargetMark> Targets; ///< in table order
    std::vector<ScopePoint> Points;
    std::vector<PairMark> Pairs;
    std::vector<AlertLine> Alerts;
    std::string FilterNote; ///< empty while no filter acts
    PixelBox FilterNoteBox;

    [[nodiscard]] std::span<const ScopePoint> PointsOf(PointRange range) const
    {
        return std::span(Points).subspan(range.First, range.Count);
    }
};
} // namespace corvane
