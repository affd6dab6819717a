#include "radar/PointerReadout.h"

#include "core/NumberText.h"
#include "core/Rounding.h"

namespace corvane {
static PositionRecord PointerRecord(LatLon at)
{
    return {"Mouse Position in Radar Screen", "Fix point", at.Lat, at.Lon};
}

void PressLeftButton(PointerState& state, ScopeDegrees at) noexcept
{
    state.FixLat = at.Y;
    state.FixLon = NormalizeLongitude(at.X);
    state.MeasureActive = true;
}

void ReleaseLeftButton(PointerState& state) noexcept
{
    state.FixLat = 0;
    state.FixLon = 0;
    state.MeasureActive = false;
}

LatLon RecenterPosition(ScopeDegrees at) noexcept
{
    return {at.Y, NormalizeLongitude(at.X)};
}

void MovePointer(PointerState& state, ScopeDegrees at)
{
    state.PointerPositionRaw = PointerRecord({at.Y, at.X});
    state.PointerPosition = PointerRecord({at.Y, NormalizeLongitude(at.X)});
    state.PanelText.clear();
    if (!state.SelectedAirspace.Name.empty() && !state.SelectedAirspace.Kind.empty())
        state.SelectedAirspace = {};
}

/// The point half-way along the course, its distance rounded to whole miles.
static LatLon ReadoutPosition(const MagVarGrid& grid, LatLon fix, int magneticCourse, int distanceNm) noexcept
{
    const std::int16_t trueCourse = TrueFromMagnetic(grid, magneticCourse, fix);
    return DestinationNm(fix, trueCourse, RoundTo<std::int16_t>(distanceNm / 2.0));
}

void DrawMeasurement(Surface& surface, const ScopeView& view, const MagVarGrid& grid, LatLon fix, LatLon pointer)
{
    constexpr Color White{255, 255, 255};
    const std::int16_t distance = DistanceNm(fix, pointer);
    const std::int16_t course = MagneticCourse(grid, fix, pointer);
    const LatLon middle = ReadoutPosition(grid, fix, course, distance);

    surface.State.PenColor = ScopeGreen;
    surface.State.Style = PenStyle::Dot;
    surface.Line(ProjectToScope(view, fix), ProjectToScope(view, pointer));
    surface.State.PenColor = White;
    std::string readout = "Dist: ";
    AppendNumber(readout, distance);
    readout += " nm  Course: ";
    AppendNumber(readout, course);
    readout += " *"; // stands for the degree sign
    surface.TextOut(ProjectToScope(view, middle), readout);
    surface.RestoreDefaults();
}

void DrawMeasurement(Surface& surface, const ScopeView& view, const MagVarGrid& grid, const PointerState& state)
{
    if (state.MeasureActive)
        DrawMeasurement(surface, view, grid, {state.FixLat, state.FixLon},
                        {state.PointerPosition.Lat, state.PointerPosition.Lon});
}
} // namespace corvane
