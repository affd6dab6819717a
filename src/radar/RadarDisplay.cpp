#include "radar/RadarDisplay.h"

#include "core/Rounding.h"
#include "radar/AirspaceLayer.h"
#include "radar/ColourSchemes.h"
#include "radar/InformationPanel.h"

#include <algorithm>
#include <utility>

namespace corvane {
RadarDisplay::RadarDisplay(const RadarSources& sources, const ScopeFont& font)
    : m_sources(sources), m_targets(sources.Variation), m_hand(m_targets, sources.Players, m_focus), m_painter(font)
{
}

void RadarDisplay::MapIsStale() noexcept
{
    m_shown = m_options.TrueProportions ? WithTrueProportions(m_view) : m_view;
    m_viewChanged = true;
    m_stale = Stale::Map;
}

void RadarDisplay::Load(std::int32_t widthPx, std::int32_t heightPx)
{
    m_pointer = {};
    m_view = StartUpView(widthPx, heightPx, m_sources.Area.AreaCenter);
    MapIsStale();
}

void RadarDisplay::Resize(std::int32_t widthPx, std::int32_t heightPx)
{
    m_view.ScopeWidthPx = widthPx;
    m_view.ScopeHeightPx = heightPx;
    RedrawAll();
}

bool RadarDisplay::Classic() const noexcept
{
    DisplayOptions classic;
    classic.Colours = m_options.Colours;
    return m_options == classic;
}

void RadarDisplay::SetLineWidth(double width)
{
    m_painter.SetLineWidth(width);
    MapIsStale();
}

void RadarDisplay::SetScale(double scale)
{
    m_painter.SetScale(scale);
    MapIsStale();
}

void RadarDisplay::ZoomIn()
{
    corvane::ZoomIn(m_view);
    MapIsStale();
}

void RadarDisplay::ZoomOut()
{
    corvane::ZoomOut(m_view);
    MapIsStale();
}

void RadarDisplay::Recenter(LatLon center)
{
    m_following.Follow({});
    MoveViewTo(center);
}

void RadarDisplay::MoveViewTo(LatLon center)
{
    RecenterView(m_view, center);
    MapIsStale();
}

void RadarDisplay::CenterOnArea()
{
    Recenter(m_sources.Area.AreaCenter);
}

void RadarDisplay::Show(LatLon center, double zoomLevel)
{
    constexpr double Poles = 90;
    constexpr double Around = 360;
    Recenter({std::clamp(center.Lat, -Poles, Poles), NormalizeLongitude(std::clamp(center.Lon, -Around, Around))});
    ZoomTo(m_view, RoundTo<std::int16_t>(zoomLevel));
    MapIsStale();
}

void RadarDisplay::Pan(int eastTenths, int northTenths)
{
    constexpr double Poles = 90;
    const double width = UserScaleRight(m_shown) - m_shown.ViewWest;
    const double height = m_shown.ViewNorth - m_shown.ViewSouth;
    const double lat = m_view.ViewCenter.Lat + height * northTenths / 10;
    Recenter({std::clamp(lat, -Poles, Poles), NormalizeLongitude(m_view.ViewCenter.Lon + width * eastTenths / 10)});
}

void RadarDisplay::RedrawAll()
{
    MoveViewTo(m_view.ViewCenter);
}

void RadarDisplay::AreaChanged()
{
    m_memory.Altitudes.Reset();
    m_targets.SetArea(m_sources.Area);
    CenterOnArea();
}

void RadarDisplay::RefreshTargets(double now)
{
    m_now = now;
    if (Classic() && Measuring()) // the measuring line must not be wiped
        return;
    if (!Classic()) {
        KeepUpWithFollowed();
        RefreshPanel();
        WithFrame([this](const TargetDisplay::Frame& frame) { m_targets.Refresh(frame); });
        m_rearrange = false;
    }
    if (m_stale == Stale::Nothing)
        m_stale = Stale::Targets;
}

void RadarDisplay::SetDisplay(const DisplayOptions& options, double now)
{
    const bool wasClassic = Classic();
    const DisplayOptions before = std::exchange(m_options, options);
    m_now = now;
    if (Classic()) {
        m_targets.Clear();
        m_hand.LetGo();
        m_following.Follow({});
    } else if (wasClassic)
        BeginWatching();
    if (before.TrueProportions != options.TrueProportions || before.Colours != options.Colours)
        MapIsStale();
    TargetsChanged();
}

/// What is known of the members so far counts as reported now.
void RadarDisplay::BeginWatching()
{
    m_targets.SetArea(m_sources.Area);
    for (const PlayerRecord& player : m_sources.Players.Players())
        if (player.Latitude != 0 || player.Longitude != 0)
            m_targets.Report(player, m_now);
}

void RadarDisplay::Report(const PlayerRecord& member, double now)
{
    m_now = now;
    if (!Classic())
        m_targets.Report(member, now);
}

void RadarDisplay::Select(std::optional<MemberKey> member)
{
    m_focus.Selected = std::move(member);
    TargetsChanged();
}

void RadarDisplay::SetPanelBox(const PixelBox& box)
{
    m_focus.Panel = box; // the next refresh makes room for it
}

void RadarDisplay::TargetsChanged() noexcept
{
    m_rearrange = true;
    if (m_stale == Stale::Nothing)
        m_stale = Stale::Targets;
}

void RadarDisplay::PressLeft(ScopePoint at)
{
    if (Classic()) {
        PressLeftButton(m_pointer, DegreesAtPixel(m_shown, at));
        return;
    }
    m_hand.Press(at);
    TargetsChanged();
}

void RadarDisplay::ReleaseLeft(ScopePoint at)
{
    ReleaseLeftButton(m_pointer);
    if (Classic())
        return;
    m_hand.Release(at);
    TargetsChanged();
}

void RadarDisplay::CancelLeft()
{
    ReleaseLeftButton(m_pointer);
    m_hand.Cancel();
}

void RadarDisplay::PressRight(ScopePoint at)
{
    const LatLon center = RecenterPosition(DegreesAtPixel(m_shown, at));
    Recenter(center);
}

void RadarDisplay::MovePointerTo(ScopePoint at)
{
    m_pointerAway = false;
    MovePointer(m_pointer, DegreesAtPixel(m_shown, at));
    if (!Classic()) {
        const TargetHand::Motion motion = m_hand.Move(at);
        if (motion == TargetHand::Motion::MovesBlock)
            TargetsChanged();
        else if (motion == TargetHand::Motion::Measures && !Measuring())
            PressLeftButton(m_pointer, DegreesAtPixel(m_shown, m_hand.Origin()));
    }
    if (Measuring() && m_stale == Stale::Nothing)
        m_stale = Stale::Targets;
}

void RadarDisplay::PointerLeaves()
{
    m_pointerAway = true;
    m_pointer.PanelText.clear();
}

void RadarDisplay::DoubleClick(ScopePoint at)
{
    if (Classic())
        return;
    m_hand.DoubleClick(at);
    TargetsChanged();
}

std::optional<MemberKey> RadarDisplay::MemberAt(ScopePoint at) const
{
    return Classic() ? std::nullopt : m_hand.MemberAt(at);
}

void RadarDisplay::SelectNext()
{
    m_hand.SelectNext();
    TargetsChanged();
}

void RadarDisplay::TurnBlock(std::int32_t direction)
{
    m_hand.TurnBlock(direction);
    TargetsChanged();
}

void RadarDisplay::AcknowledgeNext()
{
    m_hand.AcknowledgeNext();
    TargetsChanged();
}

void RadarDisplay::LetGo()
{
    m_hand.LetGo();
    TargetsChanged();
}

void RadarDisplay::Follow(std::optional<MemberKey> member)
{
    m_following.Follow(std::move(member));
    KeepUpWithFollowed();
}

void RadarDisplay::KeepUpWithFollowed()
{
    if (const auto center = m_following.NewCenter(m_sources.Players, m_shown))
        MoveViewTo(*center);
}

std::string RadarDisplay::OwnName() const
{
    Result<std::string> name = OwnFriendlyName(m_sources.Session);
    return name ? *std::move(name) : std::string(); // the session is gone; the pump will notice
}

bool RadarDisplay::TickPanel()
{
    if (m_pointerAway)
        return false;
    const std::string ownName = OwnName();
    PanelAnswer answer =
        PanelTick(Scene(), {m_sources.Players.Players(), m_sources.Session.OwnPlayerId, ownName}, m_pointer);
    const bool changed = !answer.Text.empty();
    ShowPanel(m_pointer, std::move(answer));
    return changed;
}

/// What the panel tells is told anew; a panel whose object has moved away is hidden.
void RadarDisplay::RefreshPanel()
{
    if (m_pointer.PanelText.empty())
        return;
    m_pointer.PanelText.clear();
    TickPanel();
}

PixelBox RadarDisplay::PanelPlace(std::int32_t widthPx, std::int32_t heightPx) const
{
    const ScopePoint at = PixelAtDegrees(m_shown, m_pointer.PointerPositionRaw.Lon, m_pointer.PointerPositionRaw.Lat);
    const TargetMark* const target = Classic() ? nullptr : m_targets.TargetAt(at);
    return PlacePanel(at, {widthPx, heightPx}, {0, 0, m_shown.ScopeWidthPx, m_shown.ScopeHeightPx},
                      target == nullptr ? PixelBox() : target->Place.Box);
}

template <class Call> void RadarDisplay::WithFrame(const Call& call)
{
    const MapScene scene = Scene();
    const std::string ownName = OwnName();
    const Pilots members{m_sources.Players.Players(), m_sources.Session.OwnPlayerId, ownName, m_sources.Radios};
    call(TargetDisplay::Frame{scene, members, m_options, m_focus, m_painter.Scope(), m_now});
}

void RadarDisplay::DrawAllTargets(Surface& scope)
{
    if (Classic()) {
        const std::string ownName = OwnName();
        DrawTargets(scope, Scene(), {m_sources.Players.Players(), m_sources.Session.OwnPlayerId, ownName}, Measuring(),
                    m_memory);
        return;
    }
    const bool viewChanged = std::exchange(m_viewChanged, false);
    if (std::exchange(m_rearrange, false) || viewChanged)
        WithFrame([&](const TargetDisplay::Frame& frame) { m_targets.Rearrange(frame, viewChanged); });
    m_targets.Draw(m_painter.Scope(), m_options.Colours);
}

void RadarDisplay::DrawOverMap(Surface& scope, bool highlight)
{
    const MapScene scene = Scene();
    if (highlight && AirspacesShown(scene))
        DrawAirspaceHighlight(scope, scene, m_pointer.SelectedAirspace);
    DrawAllTargets(scope);
    if (!m_hand.Lines().empty())
        DrawLiveLines(scope, m_shown, m_sources.Variation, m_hand.Lines(), m_targets.Monitor(), m_now);
    DrawMeasurement(scope, m_shown, m_sources.Variation, m_pointer);
}

void RadarDisplay::Draw()
{
    const Stale stale = std::exchange(m_stale, Stale::Nothing);
    if (stale == Stale::Nothing)
        return;
    if (stale == Stale::Map)
        m_painter.DrawMap(Scene(), m_options.Colours);
    else
        m_painter.RestoreMap();
    const bool highlight = stale == Stale::Targets && !Measuring();
    if (m_options.Colours == ColourScheme::Classic) {
        DrawOverMap(m_painter.Scope(), highlight);
        return;
    }
    ColouredSurface coloured(m_painter.Scope(), m_options.Colours);
    DrawOverMap(coloured, highlight);
}
} // namespace corvane
