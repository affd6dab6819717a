#include "radar/LiveLines.h"

#include "core/GreatCircle.h"
#include "core/NumberText.h"
#include "core/Rounding.h"
#include "tracks/ClosestApproach.h"

#include <string>

namespace corvane {
static Mover MoverOf(const TrackState& track) noexcept
{
    return MakeMover(track.Last.Position, track.Course, track.Last.GroundSpeedKt, track.Last.AltitudeFt,
                     track.ClimbFtPerMin);
}

/// Three digits, north as 360.
static std::string CourseText(std::int16_t course)
{
    return PaddedNumber(course <= 0 ? course + 360 : course, 3);
}

std::string LiveLineText(const TrackState& from, const TrackState& to, const MagVarGrid& grid)
{
    constexpr double LongestSeconds = 3600; // who meets later than in an hour does not close
    const LatLon& here = from.Last.Position;
    const LatLon& there = to.Last.Position;
    std::string line = TenthsText(RangeNm(here, there)) + " nm  ";
    line += CourseText(MagneticFromTrue(grid, CourseTo(here, there), here)) + '*';
    const ClosestPoint closest = FindClosestPoint(MoverOf(from), MoverOf(to), LongestSeconds);
    const auto seconds = RoundTo<std::int32_t>(closest.Seconds);
    if (seconds > 0 && closest.Seconds < LongestSeconds) {
        line += "  closest " + TenthsText(closest.Nm) + " nm in " + NumberText(seconds / 60) + ':' +
                PaddedNumber(seconds % 60, 2);
    }
    return line;
}

void DrawLiveLines(Surface& surface, const ScopeView& view, const MagVarGrid& grid, std::span<const LiveLine> lines,
                   const TrafficMonitor& monitor, double now)
{
    constexpr Color White{255, 255, 255};
    for (const LiveLine& line : lines) {
        const auto from = monitor.Find(line.From, now);
        const auto to = monitor.Find(line.To, now);
        if (!from || !to)
            continue;
        const ScopePoint here = ProjectToScope(view, from->Last.Position);
        const ScopePoint there = ProjectToScope(view, to->Last.Position);
        surface.State.PenColor = White;
        surface.State.Style = PenStyle::Dot;
        surface.Line(here, there);
        surface.TextOut({here.X + (there.X - here.X) / 2 + 6, here.Y + (there.Y - here.Y) / 2},
                        LiveLineText(*from, *to, grid));
        surface.RestoreDefaults();
    }
}
} // namespace corvane
