#include "radar/WorldOutlines.h"

#include <algorithm>

namespace corvane {
namespace {
/// Joins the visible points of one polyline after the other. No pixel on the scope has a zero coordinate.
class OutlinePen {
public:
    OutlinePen(Surface& surface, const ScopeView& view) noexcept : m_surface(surface), m_view(view) {}

    void Lift() noexcept { m_down = false; }
    void MoveOn(const OutlinePoint& point)
    {
        const ScopePoint at = ProjectToScope(m_view, point.Lat, point.Lon);
        if (!InsideScope(m_view, at) || !OnEarth(point.Lat, point.Lon))
            return;
        const bool onAxis = point.Lat == 0 || point.Lon == 0;
        if (m_down && !onAxis)
            m_surface.Line(m_previous, at);
        m_down = !onAxis;
        m_previous = at;
    }

private:
    Surface& m_surface;
    const ScopeView& m_view;
    ScopePoint m_previous;
    bool m_down = false;
};
} // namespace

void DrawWorldOutlines(Surface& surface, const ScopeView& view, std::span<const OutlinePoint> points)
{
    constexpr Color OutlineGrey{128, 128, 128};
    surface.State.PenColor = OutlineGrey;
    surface.State.PenWidth = 1;
    OutlinePen pen(surface, view);
    const auto stride = static_cast<std::size_t>(std::max<std::int16_t>(view.OutlineStep, 1));
    for (std::size_t i = 0; i < points.size(); i += stride) {
        pen.MoveOn(points[i]);
        const auto passed = points.subspan(i, std::min(stride, points.size() - i));
        if (std::any_of(passed.begin(), passed.end(), [](const OutlinePoint& p) { return p.IsSeparator(); }))
            pen.Lift();
    }
    surface.RestoreDefaults();
}
} // namespace corvane
