#pragma once

#include "radar/BlockGeometry.h"
#include "radar/DisplayOptions.h"
#include "radar/MapScene.h"
#include "radar/Pilots.h"
#include "tracks/TrafficMonitor.h"

#include <optional>

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
} // namespace corvane
