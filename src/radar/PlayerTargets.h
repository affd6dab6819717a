#pragma once

#include "core/Geodesy.h"
#include "core/Rounding.h"
#include "radar/MapScene.h"
#include "radar/MinimumAltitude.h"
#include "radar/Pilots.h"
#include "radar/ScopeView.h"
#include "radar/Surface.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
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

/// What is kept from one drawing of the targets to the next. Altitudes must be reset when another area is loaded.
struct TargetMemory {
    MinimumAltitudes Altitudes;
    TargetTexts Texts;
};

/// A target's pixel, or nothing where it is not shown: the controller's own entry, observers, what lies off the scope.
/// Inline, as the next one, because it is asked for every target at each refresh.
inline std::optional<ScopePoint> TargetPixel(const ScopeView& view, const Pilots& pilots,
                                             const PlayerRecord& target) noexcept
{
    if (!EligiblePilot(target, pilots.OwnPlayerId, pilots.OwnName) || !OnEarth({target.Latitude, target.Longitude}))
        return std::nullopt;
    const ScopePoint at = ProjectToScope(view, {target.Latitude, target.Longitude});
    return InsideScope(view, at) ? std::optional(at) : std::nullopt;
}
/// The end of the heading vector of a target at a pixel.
inline ScopePoint HeadingVectorEnd(const MagVarGrid& grid, const PlayerRecord& target, ScopePoint at) noexcept
{
    constexpr double VectorPx = 15;
    const double heading =
        TrueFromMagnetic(grid, target.MagHeading, {target.Latitude, target.Longitude}) * RadiansPerDegree;
    return Offset(at, RoundTo<std::int32_t>(VectorPx * std::sin(heading)),
                  -RoundTo<std::int32_t>(VectorPx * std::cos(heading)));
}

/// Stores the minimum altitude of every target that is on the scope. DrawTargets does this by itself unless measuring;
/// it stands alone for a picture that begins in the middle of measuring.
void UpdateMinimumAltitudes(const MapScene& scene, const Pilots& pilots, MinimumAltitudes& altitudes);

/// Draws the pilots' targets over the map, in table order: dot, heading vector, leader line and data block. Updates
/// the minimum altitudes of those on the scope; while measuring these stay as they are. Pen width and style are the
/// caller's. Leaves the drawing defaults set.
void DrawTargets(Surface& surface, const MapScene& scene, const Pilots& pilots, bool measureActive,
                 TargetMemory& memory);
} // namespace corvane
