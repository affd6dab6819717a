#include "radar/AirportLayers.h"

#include "core/Geodesy.h"
#include "core/Rounding.h"

#include <optional>

namespace corvane {
static constexpr Color White{255, 255, 255};

void DrawAirportDots(Surface& surface, const ScopeView& view, std::span<const AirportRecord> airports)
{
    for (const AirportRecord& airport : airports) {
        if (const auto at = VisiblePixel(view, {airport.Lat, airport.Lon}))
            surface.SetPixel(*at, {255, 0, 0});
    }
}

void DrawGates(Surface& surface, const ScopeView& view, const AirportRecord& airport)
{
    surface.SetSolid({128, 64, 64});
    for (const ParkingRecord& parking : airport.Parkings) {
        if (const auto at = VisiblePixel(view, {parking.Lat, parking.Lon}))
            surface.Circle(*at, 5);
    }
}

template <class Record> static std::optional<LatLon> PositionAt(std::span<const Record> records, std::int32_t index)
{
    if (index < 0 || static_cast<std::size_t>(index) >= records.size())
        return std::nullopt;
    const Record& record = records[static_cast<std::size_t>(index)];
    if (!OnEarth({record.Lat, record.Lon}))
        return std::nullopt;
    return LatLon{record.Lat, record.Lon};
}

namespace {
struct SegmentEnds {
    LatLon Start;
    LatLon End;
};
} // namespace

static std::optional<SegmentEnds> EndsOf(const TaxiPath& path, const AirportRecord& airport)
{
    constexpr std::int32_t KindToParking = 2;
    if (path.Kind < 0 || path.Kind > KindToParking)
        return std::nullopt;
    const auto start = PositionAt<TaxiPoint>(airport.TaxiPoints, path.StartPoint);
    const auto end = path.Kind == KindToParking ? PositionAt<ParkingRecord>(airport.Parkings, path.EndPoint)
                                                : PositionAt<TaxiPoint>(airport.TaxiPoints, path.EndPoint);
    if (!start || !end)
        return std::nullopt;
    return SegmentEnds{*start, *end};
}

/// The middle as the scope has always found it: along the magnetic course taken as if it were true.
static LatLon LabelPosition(const SegmentEnds& ends, const MagVarGrid& variation)
{
    const double lengthFt = DistanceFt(ends.Start, ends.End);
    const auto course = MagneticCourse(variation, ends.Start, ends.End);
    return DestinationFt(ends.Start, course, RoundTo<std::int16_t>(lengthFt / 2));
}

void DrawTaxiways(Surface& surface, const MapScene& scene, const AirportRecord& airport)
{
    constexpr Color TaxiwayGrey{192, 192, 192};
    for (const TaxiPath& path : airport.TaxiPaths) {
        const auto ends = EndsOf(path, airport);
        if (!ends)
            continue;
        const ScopePoint from = ProjectToScope(scene.View, ends->Start);
        const ScopePoint to = ProjectToScope(scene.View, ends->End);
        if (!InsideScope(scene.View, from) && !InsideScope(scene.View, to))
            continue;
        surface.State.PenColor = TaxiwayGrey;
        surface.State.PenWidth = 2;
        surface.Line(from, to);
        if (!scene.Flags.ShowTaxiwayIds || path.Kind != 0 || path.Name.empty() || path.Name == " ")
            continue;
        const LatLon middle = LabelPosition(*ends, scene.Variation);
        surface.State.PenColor = White;
        surface.TextOut(ProjectToScope(scene.View, middle), path.Name);
    }
}

static bool OnEarth(const RunwayRecord& runway)
{
    return OnEarth({runway.CenterLat, runway.CenterLon}) && OnEarth({runway.End1Lat, runway.End1Lon}) &&
           OnEarth({runway.End2Lat, runway.End2Lon});
}

void DrawRunways(Surface& surface, const ScopeView& view, const AirportRecord& airport)
{
    for (const RunwayRecord& runway : airport.Runways) {
        const ScopePoint center = ProjectToScope(view, {runway.CenterLat, runway.CenterLon});
        const ScopePoint end1 = ProjectToScope(view, {runway.End1Lat, runway.End1Lon});
        const ScopePoint end2 = ProjectToScope(view, {runway.End2Lat, runway.End2Lon});
        const bool visible = InsideScope(view, center) || InsideScope(view, end1) || InsideScope(view, end2);
        if (!visible || !OnEarth(runway))
            continue;
        surface.State.PenColor = ScopeGreen;
        surface.State.PenWidth = 2;
        surface.Line(end1, end2);
        surface.State.PenColor = White;
        surface.TextOut(end1, runway.Designation);
        surface.TextOut(end2, runway.ReciprocalDesignation);
    }
}

void DrawIls(Surface& surface, const ScopeView& view, const MagVarGrid& variation, const AirportRecord& airport)
{
    constexpr int HalfAngle = 5;
    constexpr int LengthFt = 1800;
    for (const IlsRecord& ils : airport.Ils) {
        const auto at = VisiblePixel(view, {ils.Lat, ils.Lon});
        if (!at)
            continue;
        surface.SetSolid({255, 255, 0});
        const int back = NormalizeCourse(TrueFromMagnetic(variation, ils.MagHeading, {ils.Lat, ils.Lon}) - 180);
        const LatLon left = DestinationFt({ils.Lat, ils.Lon}, NormalizeCourse(back - HalfAngle), LengthFt);
        const LatLon right = DestinationFt({ils.Lat, ils.Lon}, NormalizeCourse(back + HalfAngle), LengthFt);
        const ScopePoint leftAt = ProjectToScope(view, left);
        const ScopePoint rightAt = ProjectToScope(view, right);
        surface.Line(*at, leftAt);
        surface.Line(leftAt, rightAt);
        surface.Line(rightAt, *at);
    }
}

void DrawAirportName(Surface& surface, const ScopeView& view, const AirportRecord& airport, std::string& text)
{
    const auto at = VisiblePixel(view, {airport.Lat, airport.Lon});
    if (!at)
        return;
    surface.State.PenColor = White;
    text.assign(airport.Name).append(" - ").append(airport.Icao);
    surface.TextOut(*at, text);
}

static void DrawDetails(Surface& surface, const MapScene& scene, const AirportRecord& airport)
{
    constexpr std::int16_t FirstGroundLevel = 35;
    constexpr std::int16_t FirstRunwayLevel = 30;
    if (scene.View.ZoomLevel >= FirstGroundLevel) {
        if (!airport.Parkings.empty() && scene.Flags.ShowGates)
            DrawGates(surface, scene.View, airport);
        if (scene.Flags.ShowTaxiways)
            DrawTaxiways(surface, scene, airport);
    }
    if (scene.View.ZoomLevel >= FirstRunwayLevel) {
        if (scene.Flags.ShowRunways)
            DrawRunways(surface, scene.View, airport);
        if (scene.Flags.ShowIls)
            DrawIls(surface, scene.View, scene.Variation, airport);
    }
}

void DrawAirportDetails(Surface& surface, const MapScene& scene)
{
    const ScopeView& view = scene.View;
    const ScopePoint topLeft = ProjectToScope(view, {view.SavedNorth, view.SavedWest});
    const ScopePoint bottomRight = ProjectToScope(view, {view.SavedSouth, view.SavedEast});
    std::string text;
    for (const AirportRecord& airport : scene.Area.AreaAirports) {
        const ScopePoint at = ProjectToScope(view, {airport.Lat, airport.Lon});
        const bool shown = topLeft.X < at.X && at.X < bottomRight.X && topLeft.Y < at.Y && at.Y < bottomRight.Y;
        if (!shown || !OnEarth({airport.Lat, airport.Lon}))
            continue;
        DrawDetails(surface, scene, airport);
        if (scene.Flags.ShowAirportNames)
            DrawAirportName(surface, view, airport, text);
    }
}
} // namespace corvane
