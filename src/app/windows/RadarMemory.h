#pragma once

#include "area/AreaModel.h"
#include "radar/DisplayFlags.h"
#include "radar/RadarDisplay.h"

namespace corvane {
class DeskSettings;

/// Whether view and preferences, which begin anew with each session, are to be as they were.
inline constexpr const char* RememberKey = "remember";

/// Keeps what the radar shows for the next session over the same area.
void KeepRadarView(DeskSettings& desk, const AreaModel& area, const DisplayFlags& flags, const ScopeView& view);
/// Shows it again, where the user wants that: the preferences in any area, the view in its own.
void RestoreRadarView(const DeskSettings& desk, const AreaModel& area, DisplayFlags& flags, RadarDisplay& display);
} // namespace corvane
