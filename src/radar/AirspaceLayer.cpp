#include "radar/AirspaceLayer.h"

#include "core/Rounding.h"

#include <cmath>

namespace corvane {
static constexpr Color AirspaceCyan{0, 255, 255};
static constexpr Color ControlledMagenta{192, 0, 192};
static constexpr Color SelectedYellow{255, 255, 0};

bool AirspacesShown(const MapScene& scene) noexcept
{
    constexpr std::int16_t FirstLevel = 5;
    constexpr std::int16_t LastLevel = 34;
    return scene.View.ZoomLevel >= FirstLevel && scene.View.ZoomLevel <= LastLevel &&
           !scene.Area.AreaAirspaces.empty() && scene.Flags.ShowAirspaces;
}

namespace {
/// Walks boundaries point by point. One walker serves a whole drawing call: the arc centre stays from one airspace to
/// the next, as boundaries without a centre of their own rely on the one before.
class BoundaryWalker {
public:
    BoundaryWalker(Surface& surface, const ScopeView& view) noexcept : m_surface(surface), m_view(view) {}

    void Draw(const AirspaceRecord& airspace)
    {
        m_current = {};
        for (const BoundaryPoint& point : airspace.Points)
            Step(point);
    }

private:
    void Step(const BoundaryPoint& point)
    {
        const LatLon at{point.Lat, point.Lon};
        switch (point.Kind) {
        case BoundaryKind::Start: break;
        case BoundaryKind::ArcCenter: m_center = at; return;
        case BoundaryKind::Circle: DrawCircle(point.Radius); return;
        case BoundaryKind::ClockwiseArc: DrawArc(at, true); break;
        case BoundaryKind::CounterClockwiseArc: DrawArc(at, false); break;
        case BoundaryKind::Line: DrawLine(at); break;
        default: return; // codes of later scenery formats
        }
        m_current = at;
    }

    [[nodiscard]] ScopePoint Project(const LatLon& at) const noexcept { return ProjectToScope(m_view, at); }
    static bool Drawable(const LatLon& at) noexcept { return OnEarth(at); }

    /// The corner of a bounding rectangle, some miles from the arc centre.
    [[nodiscard]] ScopePoint Corner(int course, int distanceNm) const noexcept
    {
        return Project(DestinationNm(m_center, course, distanceNm));
    }

    void DrawCircle(std::int32_t radiusNm)
    {
        if (Drawable(m_center))
            m_surface.Ellipse(Corner(315, radiusNm), Corner(135, radiusNm));
    }

    /// How far a corner lies from the centre so that the ellipse passes at the distance of a position.
    [[nodiscard]] int DiagonalNm(const LatLon& at) const noexcept
    {
        const double d = DistanceNm(m_center, at);
        return RoundTo<std::int32_t>(std::sqrt(d * d + d * d));
    }

    void DrawArc(const LatLon& to, bool clockwise)
    {
        if (!Drawable(m_center) || !Drawable(m_current) || !Drawable(to))
            return;
        const ScopePoint corner1 = Corner(315, DiagonalNm(m_current));
        const ScopePoint corner2 = Corner(135, DiagonalNm(to));
        if (clockwise) // the surface draws counter-clockwise
            m_surface.Arc(corner1, corner2, Project(to), Project(m_current));
        else
            m_surface.Arc(corner1, corner2, Project(m_current), Project(to));
    }

    void DrawLine(const LatLon& to)
    {
        if (Drawable(m_current) && Drawable(to))
            m_surface.Line(Project(m_current), Project(to));
    }

    Surface& m_surface;
    const ScopeView& m_view;
    LatLon m_current;
    LatLon m_center;
};
} // namespace

static void DrawCenterDot(Surface& surface, ScopePoint at, Color color)
{
    surface.SetSolid(color);
    surface.State.PenWidth = 1;
    surface.State.Style = PenStyle::Solid;
    surface.Circle(at, 5);
}

static void SetOutlinePen(DrawState& state, Color color, std::int32_t width, PenStyle style)
{
    state.PenColor = color;
    state.PenWidth = width;
    state.Style = style;
    state.FillSolid = false;
}

/// Airspaces of any other kind keep the pen and the fill of their centre dot.
static void SetPenForKind(DrawState& state, const std::string& kind, Color highSectorColor, Color color)
{
    constexpr std::int32_t HighSectorWidth = 3;
    if (kind == HighSectorKind)
        SetOutlinePen(state, highSectorColor, HighSectorWidth, PenStyle::Solid);
    else if (kind == TraconKind)
        SetOutlinePen(state, color, 1, PenStyle::Solid);
    else if (kind == ClassBKind || kind == ClassCKind)
        SetOutlinePen(state, color, 1, PenStyle::Dash);
}

static bool IsControlledSector(const AreaModel& area, const AirspaceRecord& airspace)
{
    return area.AreaMode == ControlMode::Sector && airspace.ComName == area.AreaName;
}

void DrawAirspaces(Surface& surface, const MapScene& scene)
{
    BoundaryWalker walker(surface, scene.View);
    for (const AirspaceRecord& airspace : scene.Area.AreaAirspaces) {
        const auto center = VisiblePixel(scene.View, {airspace.CenterLat, airspace.CenterLon});
        if (!center)
            continue;
        if (airspace.Kind == LowSectorKind || (airspace.Kind == TraconKind && !scene.Flags.ShowTracon))
            continue;
        const Color color = IsControlledSector(scene.Area, airspace) ? ControlledMagenta : AirspaceCyan;
        DrawCenterDot(surface, *center, color);
        SetPenForKind(surface.State, airspace.Kind, color, AirspaceCyan);
        walker.Draw(airspace);
    }
}

static const AirspaceRecord* SelectedAmong(const std::vector<AirspaceRecord>& airspaces,
                                           const PositionRecord& selection)
{
    const AirspaceRecord* selected = nullptr;
    if (selection.Name.empty() || selection.Kind.empty())
        return selected;
    for (const AirspaceRecord& airspace : airspaces)
        if (airspace.CenterLat == selection.Lat && airspace.CenterLon == selection.Lon)
            selected = &airspace;
    return selected;
}

void DrawAirspaceHighlight(Surface& surface, const MapScene& scene, const PositionRecord& selectedAirspace)
{
    const AirspaceRecord* airspace = SelectedAmong(scene.Area.AreaAirspaces, selectedAirspace);
    if (airspace == nullptr || !OnEarth({airspace->CenterLat, airspace->CenterLon}))
        return;
    DrawCenterDot(surface, ProjectToScope(scene.View, {airspace->CenterLat, airspace->CenterLon}), SelectedYellow);
    SetPenForKind(surface.State, airspace->Kind, SelectedYellow, SelectedYellow);
    BoundaryWalker(surface, scene.View).Draw(*airspace);
    surface.RestoreDefaults();
}
} // namespace corvane
