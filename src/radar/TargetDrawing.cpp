#include "radar/TargetDrawing.h"

#include "core/Rounding.h"

#include <algorithm>
#include <cmath>

namespace corvane {
static constexpr std::int32_t TargetRadiusPx = 5;

static void DrawTrail(Surface& surface, const TargetMarks& marks, const TargetMark& mark, Color color)
{
    constexpr double Brightest = 0.8;
    constexpr double Darkest = 0.3;
    const auto points = marks.PointsOf(mark.Trail);
    for (std::size_t i = 0; i < points.size(); ++i) {
        const double part =
            Brightest - (Brightest - Darkest) * static_cast<double>(i) / static_cast<double>(points.size());
        surface.SetSolid(Dimmed(color, part));
        surface.Circle(points[i], 1);
    }
}

/// A short stroke across the line that arrives at a point.
static void DrawMinute(Surface& surface, ScopePoint from, ScopePoint at)
{
    constexpr double HalfStrokePx = 3;
    const double dx = static_cast<double>(at.X) - from.X;
    const double dy = static_cast<double>(at.Y) - from.Y;
    const double length = std::hypot(dx, dy);
    if (length < 1)
        return;
    const auto acrossX = RoundTo<std::int32_t>(-dy / length * HalfStrokePx);
    const auto acrossY = RoundTo<std::int32_t>(dx / length * HalfStrokePx);
    surface.Line(Offset(at, -acrossX, -acrossY), Offset(at, acrossX, acrossY));
}

static void DrawPrediction(Surface& surface, const TargetMarks& marks, const TargetMark& mark, Color color)
{
    const auto minutes = marks.PointsOf(mark.Minutes);
    if (minutes.empty())
        return;
    constexpr double Part = 0.75;
    surface.State.PenColor = Dimmed(color, Part);
    ScopePoint from = mark.At;
    for (const ScopePoint at : minutes) {
        surface.Line(from, at);
        DrawMinute(surface, from, at);
        from = at;
    }
}

static Color ColorOf(const TargetMark& mark, const TargetColours& colours) noexcept
{
    return Dimmed(mark.Selected ? colours.Selected : colours.Target, std::max(mark.Light, colours.LeastLight));
}

static void DrawSmall(Surface& surface, const TargetMark& mark, Color color)
{
    constexpr std::int32_t RadiusPx = 2;
    surface.SetSolid(color);
    surface.State.FillSolid = !mark.Stale;
    surface.Circle(mark.At, RadiusPx);
}

static void DrawMark(Surface& surface, const TargetMark& mark, const TargetColours& colours)
{
    const Color color = ColorOf(mark, colours);
    if (mark.Small) {
        DrawSmall(surface, mark, color);
        return;
    }
    surface.SetSolid(color);
    surface.State.FillSolid = !mark.Stale;
    surface.Circle(mark.At, TargetRadiusPx);
    surface.Line(mark.At, mark.VectorEnd);
    if (!mark.Block.Lines.empty())
        surface.Line(mark.At, mark.Place.LeaderEnd);
    DrawAlertSigns(surface, mark, colours);
}

static void DrawBlock(Surface& surface, const TargetMark& mark, const TargetColours& colours)
{
    surface.State.PenColor = ColorOf(mark, colours);
    DrawBlockText(surface, mark.Block, {mark.Place.Box.Left, mark.Place.Box.Top});
}

void DrawTargetMarks(Surface& surface, const TargetMarks& marks, ColourScheme scheme)
{
    const TargetColours colours = ColoursOf(scheme);
    surface.RestoreDefaults();
    for (const TargetMark& mark : marks.Targets) {
        DrawTrail(surface, marks, mark, ColorOf(mark, colours));
        DrawPrediction(surface, marks, mark, ColorOf(mark, colours));
    }
    DrawPairLines(surface, marks, colours);
    for (const bool selected : {false, true})
        for (const TargetMark& mark : marks.Targets)
            if (mark.Selected == selected) {
                DrawMark(surface, mark, colours);
                DrawBlock(surface, mark, colours);
            }
    DrawScopeNotes(surface, marks, colours);
    surface.RestoreDefaults();
}
} // namespace corvane
