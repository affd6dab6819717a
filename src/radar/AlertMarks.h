#pragma once

#include "radar/TargetMarks.h"
#include "radar/TargetSources.h"

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace corvane {
/// A pilot whom the scope may show, on it or not, as the monitor knows it.
struct PilotTrack {
    std::size_t Slot = 0; ///< in the player table
    std::optional<TrackState> Track;
    ConflictMark Conflict = ConflictMark::None;
    bool LowAltitude = false;
};

/// The eligible pilots in table order, with the alerts that name them.
std::vector<PilotTrack> FindPilotTracks(const TargetSources& sources);

/// Adds the lines between conflicting pairs and the list of alerts in the upper right corner: the gravest first, as
/// many as a controller reads at a glance.
void MarkAlerts(const TargetSources& sources, std::span<const PilotTrack> tracks, const Surface& metrics,
                TargetMarks& marks);
} // namespace corvane
