#pragma once

#include "radar/MapScene.h"
#include "radar/TargetMarks.h"
#include "radar/TargetSources.h"

#include <vector>

namespace corvane {
/// Decides how every target on the scope is drawn, all but the places of the blocks; and what the scope says of alerts
/// and filters. metrics  measures texts
void ChooseTargets(const TargetSources& sources, const Surface& metrics, TargetMarks& marks);

/// The boxes of the airports' names as the map draws them.
std::vector<PixelBox> AirportNameBoxes(const MapScene& scene, const Surface& metrics);
} // namespace corvane
