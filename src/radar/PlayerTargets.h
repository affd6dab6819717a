#pragma once

#include "area/AreaModel.h"
#include "core/MagVarGrid.h"
#include "radar/MinimumAltitude.h"
#include "radar/ScopeView.h"
#include "radar/Surface.h"
#include "session/PlayerTable.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
/// A target's data block; line 1 stands above line 2.
struct TargetLines {
    std::string Line1; ///< "N123  Hdg: 90*  Alt: 4500ft"; the asterisk stands for the degree sign
    std::string Line2; ///< "GS: 120kts  Min Alt: 5200ft", or "-None-" for a minimum altitude of 0
};

/// Writes a target's data block, reusing the memory of what lines held.
void FormatTargetLines(const PlayerRecord& target, TargetLines& lines);

/// Keeps the data blocks by place in the player table, so that they are written once a report and not once a drawing.
class TargetTexts {
public:
    /// The target's lines, valid until the next call.
    const TargetLines& LinesFor(const PlayerRecord& target, std::size_t slot);

private:
    struct Entry {
        // what the lines were written from
        std::string Name;
        double MagHeading = 0;
        std::int32_t AltitudeFt = 0;
        std::int32_t MinimumAltitudeFt = 0;
        std::int16_t GroundSpeedKt = 0;
        TargetLines Lines; // empty until first written
    };
    std::vector<Entry> m_entries;
};

/// What the targets are drawn from.
struct TargetScene {
    const AreaModel& Area;
    const MagVarGrid& Grid;
    std::span<PlayerRecord> Players; ///< MinimumAltitudeFt is written
    std::int32_t OwnPlayerId = 0;
    std::string_view OwnName; ///< the controller's own friendly name in the session
    bool MeasureActive = false;
};

/// What is kept from one drawing of the targets to the next. Altitudes must be reset when another area is loaded.
struct TargetMemory {
    MinimumAltitudes Altitudes;
    TargetTexts Texts;
};

/// Stores the minimum altitude of every target that is on the scope. Nothing while measuring: the values of the last
/// drawing before it stay. DrawTargets does this by itself; it stands alone for a drawing that starts in the middle of
/// measuring.
void UpdateMinimumAltitudes(const ScopeView& view, const TargetScene& scene, MinimumAltitudes& altitudes);

/// Draws the pilots' targets over the map, in table order: dot, heading vector, leader line and data block. Updates
/// the minimum altitudes of those on the scope, unless measuring. Leaves the drawing defaults set.
void DrawTargets(Surface& surface, const ScopeView& view, const TargetScene& scene, TargetMemory& memory);
} // namespace corvane
