#include "radar/PlayerTargets.h"

#include "core/Geodesy.h"
#include "core/NumberText.h"
#include "core/Rounding.h"

#include <cmath>

namespace corvane {
void FormatTargetLines(const PlayerRecord& target, TargetLines& lines)
{
    lines.Line1 = target.Name;
    lines.Line1 += "  Hdg: ";
    AppendNumber(lines.Line1, target.MagHeading);
    lines.Line1 += "*  Alt: ";
    AppendNumber(lines.Line1, target.AltitudeFt);
    lines.Line1 += "ft";

    lines.Line2 = "GS: ";
    AppendNumber(lines.Line2, target.GroundSpeedKt);
    lines.Line2 += "kts  Min Alt: ";
    if (target.MinimumAltitudeFt == 0) {
        lines.Line2 += "-None-";
    } else {
        AppendNumber(lines.Line2, target.MinimumAltitudeFt);
        lines.Line2 += "ft";
    }
}

const TargetLines& TargetTexts::LinesFor(const PlayerRecord& target, std::size_t slot)
{
    if (m_entries.size() <= slot)
        m_entries.resize(slot + 1);
    Entry& entry = m_entries[slot];
    const bool current = !entry.Lines.Line1.empty() && entry.MagHeading == target.MagHeading &&
                         entry.AltitudeFt == target.AltitudeFt && entry.GroundSpeedKt == target.GroundSpeedKt &&
                         entry.MinimumAltitudeFt == target.MinimumAltitudeFt && entry.Name == target.Name;
    if (!current) {
        entry.Name = target.Name;
        entry.MagHeading = target.MagHeading;
        entry.AltitudeFt = target.AltitudeFt;
        entry.MinimumAltitudeFt = target.MinimumAltitudeFt;
        entry.GroundSpeedKt = target.GroundSpeedKt;
        FormatTargetLines(target, entry.Lines);
    }
    return entry.Lines;
}

void UpdateMinimumAltitudes(const MapScene& scene, const Pilots& pilots, MinimumAltitudes& altitudes)
{
    for (std::size_t slot = 0; slot < pilots.Players.size(); ++slot) {
        PlayerRecord& target = pilots.Players[slot];
        if (TargetPixel(scene.View, pilots, target))
            target.MinimumAltitudeFt = altitudes.For(scene.Area, target, slot);
    }
}

static void DrawTarget(Surface& surface, ScopePoint at, ScopePoint vectorEnd, const TargetLines& lines,
                       std::int32_t textHeight)
{
    constexpr std::int32_t DotRadiusPx = 5;
    constexpr std::int32_t LeaderPx = 21; // 30 pixels at 45 degrees
    const ScopePoint leaderEnd = Offset(at, LeaderPx, -LeaderPx);
    surface.SetSolid(ScopeGreen); // width and style stay as the map layers left them
    surface.Circle(at, DotRadiusPx);
    surface.Line(at, vectorEnd);
    surface.Line(at, leaderEnd);
    surface.TextOut(Offset(leaderEnd, 0, -2 * textHeight), lines.Line1);
    surface.TextOut(Offset(leaderEnd, 0, -textHeight), lines.Line2);
}

void DrawTargets(Surface& surface, const MapScene& scene, const Pilots& pilots, bool measureActive,
                 TargetMemory& memory)
{
    if (!measureActive)
        UpdateMinimumAltitudes(scene, pilots, memory.Altitudes);
    const std::int32_t textHeight = surface.TextHeight();
    for (std::size_t slot = 0; slot < pilots.Players.size(); ++slot) {
        const PlayerRecord& target = pilots.Players[slot];
        if (const auto at = TargetPixel(scene.View, pilots, target))
            DrawTarget(surface, *at, HeadingVectorEnd(scene.Variation, target, *at),
                       memory.Texts.LinesFor(target, slot), textHeight);
    }
    surface.RestoreDefaults();
}
} // namespace corvane
