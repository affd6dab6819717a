#pragma once

#include "area/AreaModel.h"
#include "core/MagVarGrid.h"
#include "radar/DisplayFlags.h"
#include "radar/ScopeView.h"

namespace corvane {
/// Everything that the map under the targets is drawn from; borrowed for one drawing call.
struct MapScene {
    const AreaModel& Area;
    const MagVarGrid& Variation;
    const ScopeView& View;
    const DisplayFlags& Flags;
};
} // namespace corvane
