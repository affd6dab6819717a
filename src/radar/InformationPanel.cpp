#include "radar/InformationPanel.h"

#include "radar/PanelText.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <utility>
#include <vector>

namespace corvane {
static constexpr std::int16_t LowestAirspaceZoom = 5;
static constexpr std::int16_t HighestAirspaceZoom = 34;
static constexpr std::int16_t LowestNavaidZoom = 25;
static constexpr std::int16_t LowestRunwayZoom = 30;
static constexpr std::int16_t LowestGateZoom = 35;
static constexpr std::int32_t NavaidLimitPx = 5;
static constexpr std::int32_t ObjectLimitPx = 7;

namespace {
/// Tells what lies under the pointer.
class Probe {
public:
    Probe(const ScopeView& view, const PositionRecord& pointer) noexcept
        : m_view(view), m_pointer(ProjectToScope(view, {pointer.Lat, pointer.Lon}))
    {
    }

    /// Whether a position's pixel is on the scope and at most limit pixels from the pointer's, their distance rounded.
    [[nodiscard]] bool Hits(LatLon position, std::int32_t limit) const noexcept
    {
        const ScopePoint at = ProjectToScope(m_view, position);
        const std::int64_t dx = std::abs(std::int64_t{at.X} - m_pointer.X);
        const std::int64_t dy = std::abs(std::int64_t{at.Y} - m_pointer.Y);
        if (dx > limit || dy > limit)
            return false;
        // A root rounds to at most limit when it is below limit + 1/2, thus its square below limit^2 + limit + 1/4.
        return dx * dx + dy * dy <= limit * limit + limit && InsideScope(m_view, at) && OnEarth(position);
    }
    /// The same for a record with a position of its own.
    template <class Record> [[nodiscard]] bool Hits(const Record& record, std::int32_t limit) const noexcept
    {
        return Hits(LatLon{record.Lat, record.Lon}, limit);
    }

private:
    const ScopeView& m_view;
    ScopePoint m_pointer;
};
} // namespace

/// The last element that fits, or null. Every hit replaces the one before it, so the searches go backward and stop at
/// the first.
template <class Range, class Predicate> static const auto* FindLast(const Range& range, Predicate fits)
{
    const auto found = std::find_if(std::rbegin(range), std::rend(range), fits);
    return found == std::rend(range) ? nullptr : &*found;
}

static const AirspaceRecord* AirspaceAt(const MapScene& scene, const Probe& probe)
{
    const std::int16_t zoom = scene.View.ZoomLevel;
    if (zoom < LowestAirspaceZoom || zoom > HighestAirspaceZoom || !scene.Flags.ShowAirspaces)
        return nullptr;
    return FindLast(scene.Area.AreaAirspaces, [&](const AirspaceRecord& airspace) {
        return probe.Hits(LatLon{airspace.CenterLat, airspace.CenterLon}, ObjectLimitPx) &&
               airspace.Kind != LowSectorKind && (scene.Flags.ShowTracon || airspace.Kind != TraconKind);
    });
}

static const NavaidRecord* NavaidAt(const MapScene& scene, const Probe& probe, const std::vector<NavaidRecord>& navaids,
                                    bool shown)
{
    if (scene.View.ZoomLevel < LowestNavaidZoom || !shown)
        return nullptr;
    return FindLast(navaids, [&](const NavaidRecord& navaid) { return probe.Hits(navaid, NavaidLimitPx); });
}

static const PlayerRecord* PilotAt(const Pilots& pilots, const Probe& probe)
{
    return FindLast(pilots.Players, [&](const PlayerRecord& player) {
        return probe.Hits(LatLon{player.Latitude, player.Longitude}, ObjectLimitPx) &&
               EligiblePilot(player, pilots.OwnPlayerId, pilots.OwnName);
    });
}

static std::optional<std::string> RunwayEndText(const AirportRecord& airport, const Probe& probe)
{
    for (auto runway = airport.Runways.rbegin(); runway != airport.Runways.rend(); ++runway) {
        if (probe.Hits(LatLon{runway->End2Lat, runway->End2Lon}, ObjectLimitPx))
            return RunwayText(*runway, runway->ReciprocalDesignation, runway->ReciprocalMagHeading);
        if (probe.Hits(LatLon{runway->End1Lat, runway->End1Lon}, ObjectLimitPx))
            return RunwayText(*runway, runway->Designation, runway->MagHeading);
    }
    return std::nullopt;
}

static std::optional<std::string> AirportObjectText(const MapScene& scene, const Probe& probe,
                                                    const AirportRecord& airport)
{
    const auto hit = [&](const auto& record) { return probe.Hits(record, ObjectLimitPx); };
    const std::int16_t zoom = scene.View.ZoomLevel;
    if (zoom >= LowestRunwayZoom && scene.Flags.ShowIls)
        if (const IlsRecord* ils = FindLast(airport.Ils, hit))
            return IlsText(*ils);
    if (zoom >= LowestRunwayZoom && scene.Flags.ShowRunways)
        if (auto text = RunwayEndText(airport, probe))
            return text;
    if (zoom >= LowestGateZoom && scene.Flags.ShowGates)
        if (const ParkingRecord* parking = FindLast(airport.Parkings, hit))
            return ParkingText(*parking);
    return std::nullopt;
}

static std::string TextAt(const MapScene& scene, const Pilots& pilots, const Probe& probe,
                          const AirspaceRecord* airspace)
{
    const std::vector<AirportRecord>& airports = scene.Area.AreaAirports;
    for (auto airport = airports.rbegin(); airport != airports.rend(); ++airport)
        if (auto text = AirportObjectText(scene, probe, *airport))
            return *std::move(text);
    if (const PlayerRecord* pilot = PilotAt(pilots, probe))
        return PilotText(*pilot);
    if (const NavaidRecord* vor = NavaidAt(scene, probe, scene.Area.AreaVors, scene.Flags.ShowVors))
        return NavaidText("VOR", *vor);
    if (const NavaidRecord* ndb = NavaidAt(scene, probe, scene.Area.AreaNdbs, scene.Flags.ShowNdbs))
        return NavaidText("NDB", *ndb);
    return airspace != nullptr ? AirspaceText(*airspace) : std::string();
}

PanelAnswer PanelTick(const MapScene& scene, const Pilots& pilots, const PointerState& pointer)
{
    PanelAnswer answer;
    if (pointer.MeasureActive || !pointer.PanelText.empty())
        return answer;
    const Probe probe(scene.View, pointer.PointerPosition);
    const AirspaceRecord* airspace = AirspaceAt(scene, probe);
    if (airspace != nullptr)
        answer.SelectedAirspace =
            PositionRecord{"Current Selected Airspace", airspace->Kind, airspace->CenterLat, airspace->CenterLon};
    answer.Text = TextAt(scene, pilots, probe, airspace);
    return answer;
}

PixelBox PanelBox(const PointerState& pointer, const ScopeView& view, const Surface& metrics)
{
    constexpr std::int32_t MarginPx = 4;
    if (pointer.PanelText.empty())
        return {};
    BlockSize size{0, 2 * MarginPx};
    for (std::string_view rest = pointer.PanelText; !rest.empty();) {
        const std::string_view line = rest.substr(0, rest.find("\r\n"));
        size.Width = std::max(size.Width, metrics.TextWidth(line) + 2 * MarginPx);
        size.Height += metrics.TextHeight();
        rest.remove_prefix(std::min(rest.size(), line.size() + 2));
    }
    const ScopePoint at = PixelAtDegrees(view, pointer.PointerPositionRaw.Lon, pointer.PointerPositionRaw.Lat);
    return PlacePanel(at, size, {0, 0, view.ScopeWidthPx, view.ScopeHeightPx}, {});
}

static PixelBox PanelInside(std::int32_t left, std::int32_t top, BlockSize size, const PixelBox& scope)
{
    left = std::clamp(left, scope.Left, std::max(scope.Right - size.Width, scope.Left));
    top = std::clamp(top, scope.Top, std::max(scope.Bottom - size.Height, scope.Top));
    return {left, top, left + size.Width, top + size.Height};
}

PixelBox PlacePanel(ScopePoint pointer, BlockSize size, const PixelBox& scope, const PixelBox& keepOff)
{
    const std::int32_t left = pointer.X - size.Width;
    const std::int32_t top = pointer.Y - size.Height;
    PixelBox best = PanelInside(pointer.X, pointer.Y, size, scope);
    for (const ScopePoint corner : {ScopePoint{left, pointer.Y}, ScopePoint{pointer.X, top}, ScopePoint{left, top}}) {
        const PixelBox box = PanelInside(corner.X, corner.Y, size, scope);
        if (SharedArea(box, keepOff) < SharedArea(best, keepOff))
            best = box;
    }
    return best;
}

void ShowPanel(PointerState& pointer, PanelAnswer&& answer) noexcept
{
    if (answer.SelectedAirspace)
        pointer.SelectedAirspace = *std::move(answer.SelectedAirspace);
    if (!answer.Text.empty())
        pointer.PanelText = std::move(answer.Text);
}
} // namespace corvane
