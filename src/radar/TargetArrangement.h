#pragma once

#include "radar/DisplayOptions.h"
#include "radar/MapScene.h"
#include "radar/Pilots.h"
#include "radar/TargetMarks.h"
#include "tracks/TrafficMonitor.h"

#include <optional>
#include <vector>

namespace corvane {
/// What the controller's attention is on.
struct TargetFocus {
    std::optional<MemberKey> Selected;
    PixelBox Panel; ///< the information panel's; empty while it is hidden
};

/// What targets are chosen from; borrowed for one call.
struct TargetSources {
    const MapScene& Scene;
    const Pilots& Members;
    const TrafficMonitor& Monitor;
    const DisplayOptions& Options;
    const TargetFocus& Focus;
    double Now = 0; ///< seconds of the monitor's clock
};

/// Decides how every target on the scope is drawn, all but the places of the blocks; and what the scope says of alerts
/// and filters. metrics  measures texts
void ChooseTargets(const TargetSources& sources, const Surface& metrics, TargetMarks& marks);

/// The boxes of the airports' names as the map draws them.
std::vector<PixelBox> AirportNameBoxes(const MapScene& scene, const Surface& metrics);
} // namespace corvane
