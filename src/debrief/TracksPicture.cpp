#include "debrief/TracksPicture.h"

#include "core/NumberText.h"
#include "core/Rounding.h"
#include "debrief/SvgSurface.h"
#include "radar/MapLayers.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace corvane {
ScopeView ViewOfTracks(const Debrief& debrief, const AreaModel& area, std::int32_t widthPx, std::int32_t heightPx)
{
    constexpr std::int16_t ClosestLevel = 30;
    constexpr std::int16_t FarthestLevel = 8;
    const bool anyYours = std::any_of(debrief.Flights.begin(), debrief.Flights.end(),
                                      [](const DebriefFlight& flight) { return flight.YoursS.has_value(); });
    const auto allInside = [&debrief, anyYours](const ScopeView& view) {
        for (const DebriefFlight& flight : debrief.Flights)
            for (const DebriefPlace& place : flight.Track)
                if ((flight.YoursS || !anyYours) && !VisiblePixel(view, place.Position))
                    return false;
        return true;
    };
    std::int16_t level = ClosestLevel;
    ScopeView view;
    do
        view = WithTrueProportions(StartUpView(widthPx, heightPx, area.AreaCenter, level));
    while (--level >= FarthestLevel && !allInside(view));
    return view;
}

void DrawTracks(Surface& surface, const Debrief& debrief, const MapScene& scene)
{
    constexpr std::array<Color, 6> Colours{
        {{255, 176, 0}, {0, 200, 255}, {255, 96, 160}, {140, 220, 80}, {190, 150, 255}, {255, 255, 120}}};
    constexpr Color Others{110, 110, 110};
    DrawMapLayers(surface, scene);
    std::size_t next = 0;
    for (const DebriefFlight& flight : debrief.Flights) {
        surface.RestoreDefaults();
        surface.State.PenColor = flight.YoursS ? Colours[next++ % Colours.size()] : Others;
        for (std::size_t i = 1; i < flight.Track.size(); ++i)
            surface.Line(ProjectToScope(scene.View, flight.Track[i - 1].Position),
                         ProjectToScope(scene.View, flight.Track[i].Position));
        if (flight.YoursS && !flight.Track.empty())
            surface.TextOut(Offset(ProjectToScope(scene.View, flight.Track.back().Position), 4, 4), flight.Callsign);
    }
    surface.RestoreDefaults();
}

void DrawTracksPicture(Surface& surface, const Debrief& debrief, const AreaModel& area, const MagVarGrid& grid,
                       PictureSize size)
{
    DisplayFlags flags;
    flags.ShowTaxiwayIds = false;
    flags.ShowGates = false;
    const ScopeView view = ViewOfTracks(debrief, area, size.WidthPx, size.HeightPx);
    DrawTracks(surface, debrief, {area, grid, view, flags});
}

void DrawTimeline(Surface& surface, const Debrief& debrief, PictureSize size)
{
    constexpr std::int32_t LeftPx = 30;
    constexpr std::int32_t FootPx = 20;
    const int most =
        debrief.Handled.empty() ? 1 : std::max(1, *std::max_element(debrief.Handled.begin(), debrief.Handled.end()));
    const double minutePx = static_cast<double>(size.WidthPx - LeftPx) /
                            static_cast<double>(std::max<std::size_t>(debrief.Handled.size(), 1));
    const auto height = [&](int handled) {
        return static_cast<std::int32_t>(static_cast<double>(size.HeightPx - FootPx - 10) * handled / most);
    };
    surface.State.PenColor = {120, 120, 120};
    surface.Line({LeftPx, size.HeightPx - FootPx}, {size.WidthPx, size.HeightPx - FootPx});
    surface.TextOut({4, size.HeightPx - FootPx - height(most) - 6}, NumberText(std::int32_t{most}));
    surface.TextOut({4, size.HeightPx - FootPx - 8}, "0");
    const std::size_t step = std::max<std::size_t>(1, debrief.Handled.size() / 10);
    for (std::size_t minute = 0; minute < debrief.Handled.size(); ++minute) {
        const auto left = LeftPx + static_cast<std::int32_t>(static_cast<double>(minute) * minutePx);
        const auto right = LeftPx + static_cast<std::int32_t>(static_cast<double>(minute + 1) * minutePx);
        const std::int32_t top = size.HeightPx - FootPx - height(debrief.Handled[minute]);
        const std::int32_t before = minute == 0 ? top : size.HeightPx - FootPx - height(debrief.Handled[minute - 1]);
        surface.State.PenColor = ScopeGreen;
        surface.Line({left, before}, {left, top});
        surface.Line({left, top}, {right, top});
        surface.State.PenColor = {120, 120, 120};
        if (minute % step == 0)
            surface.TextOut({left, size.HeightPx - FootPx + 4}, NumberText(static_cast<std::int32_t>(minute)) + " min");
    }
}

std::string TracksSvg(const Debrief& debrief, const AreaModel& area, const MagVarGrid& grid)
{
    constexpr PictureSize Size{1000, 800};
    SvgSurface surface(Size.WidthPx, Size.HeightPx);
    DrawTracksPicture(surface, debrief, area, grid, Size);
    return surface.Element(TracksLabel);
}

std::string TimelineSvg(const Debrief& debrief)
{
    constexpr PictureSize Size{1000, 160};
    SvgSurface surface(Size.WidthPx, Size.HeightPx);
    DrawTimeline(surface, debrief, Size);
    return surface.Element(TimelineLabel);
}
} // namespace corvane
