#include "radar/RadarDisplay.h"

#include "radar/AirspaceLayer.h"
#include "radar/InformationPanel.h"

#include <algorithm>
#include <utility>

namespace corvane {
RadarDisplay::RadarDisplay(const RadarSources& sources, const ScopeFont& font) : m_sources(sources), m_painter(font) {}

void RadarDisplay::Load(std::int32_t widthPx, std::int32_t heightPx)
{
    m_pointer = {};
    m_view = StartUpView(widthPx, heightPx, m_sources.Area.AreaCenterLon, m_sources.Area.AreaCenterLat);
    MapIsStale();
}

void RadarDisplay::Resize(std::int32_t widthPx, std::int32_t heightPx)
{
    m_view.ScopeWidthPx = widthPx;
    m_view.ScopeHeightPx = heightPx;
    RedrawAll();
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

void RadarDisplay::Recenter(double lon, double lat)
{
    RecenterView(m_view, lon, lat);
    MapIsStale();
}

void RadarDisplay::CenterOnArea()
{
    Recenter(m_sources.Area.AreaCenterLon, m_sources.Area.AreaCenterLat);
}

void RadarDisplay::Pan(int eastTenths, int northTenths)
{
    constexpr double Poles = 90;
    const double width = UserScaleRight(m_view) - m_view.ViewWest;
    const double height = m_view.ViewNorth - m_view.ViewSouth;
    const double lat = m_view.ViewCenterLat + height * northTenths / 10;
    Recenter(NormalizeLongitude(m_view.ViewCenterLon + width * eastTenths / 10), std::clamp(lat, -Poles, Poles));
}

void RadarDisplay::RedrawAll()
{
    Recenter(m_view.ViewCenterLon, m_view.ViewCenterLat);
}

void RadarDisplay::AreaChanged()
{
    m_memory.Altitudes.Reset();
    CenterOnArea();
}

void RadarDisplay::RefreshTargets()
{
    if (m_stale == Stale::Nothing && !Measuring()) // the measuring line must not be wiped
        m_stale = Stale::Targets;
}

void RadarDisplay::PressLeft(ScopePoint at)
{
    PressLeftButton(m_pointer, DegreesAtPixel(m_view, at));
}

void RadarDisplay::ReleaseLeft()
{
    ReleaseLeftButton(m_pointer);
}

void RadarDisplay::PressRight(ScopePoint at)
{
    const LatLon center = RecenterPosition(DegreesAtPixel(m_view, at));
    Recenter(center.Lon, center.Lat);
}

void RadarDisplay::MovePointerTo(ScopePoint at)
{
    MovePointer(m_pointer, DegreesAtPixel(m_view, at));
    if (Measuring() && m_stale == Stale::Nothing)
        m_stale = Stale::Targets;
}

std::string RadarDisplay::OwnName() const
{
    Result<std::string> name = OwnFriendlyName(m_sources.Session);
    return name ? *std::move(name) : std::string(); // the session is gone; the pump will notice
}

bool RadarDisplay::TickPanel()
{
    const std::string ownName = OwnName();
    PanelAnswer answer =
        PanelTick(Scene(), {m_sources.Players.Players(), m_sources.Session.OwnPlayerId, ownName}, m_pointer);
    const bool changed = !answer.Text.empty();
    ShowPanel(m_pointer, std::move(answer));
    return changed;
}

ScopePoint RadarDisplay::PanelPosition() const noexcept
{
    return PixelAtDegrees(m_view, m_pointer.PointerPositionRaw.Lon, m_pointer.PointerPositionRaw.Lat);
}

void RadarDisplay::DrawOverMap(bool highlight)
{
    Surface& scope = m_painter.Scope();
    const MapScene scene = Scene();
    if (highlight && AirspacesShown(scene))
        DrawAirspaceHighlight(scope, scene, m_pointer.SelectedAirspace);
    const std::string ownName = OwnName();
    DrawTargets(scope, scene, {m_sources.Players.Players(), m_sources.Session.OwnPlayerId, ownName}, Measuring(),
                m_memory);
    DrawMeasurement(scope, m_view, m_sources.Variation, m_pointer);
}

void RadarDisplay::Draw()
{
    const Stale stale = std::exchange(m_stale, Stale::Nothing);
    if (stale == Stale::Nothing)
        return;
    if (stale == Stale::Map)
        m_painter.DrawMap(Scene());
    else
        m_painter.RestoreMap();
    DrawOverMap(stale == Stale::Targets && !Measuring());
}
} // namespace corvane
