#include "radar/OutlineLayer.h"

#include <algorithm>

namespace corvane {
namespace {
/// Joins the visible points of one polyline after the other. No pixel on the scope has a zero coordinate.
class OutlinePen {
public:
    OutlinePen(Surface& surface, const ScopeView& view) noexcept : m_surface(surface), m_view(view) {}

    [[nodiscard]] bool IsDown() const noexcept { return m_down; }
    void Lift() noexcept { m_down = false; }
    void MoveOn(const OutlinePoint& point)
    {
        const auto at = VisiblePixel(m_view, {point.Lat, point.Lon});
        if (!at)
            return;
        const bool onAxis = point.Lat == 0 || point.Lon == 0;
        if (m_down && !onAxis)
            m_surface.Line(m_previous, *at);
        m_down = !onAxis;
        m_previous = *at;
    }

private:
    Surface& m_surface;
    const ScopeView& m_view;
    ScopePoint m_previous;
    bool m_down = false;
};
} // namespace

static std::size_t NextBetweenEdges(std::span<const OutlinePoint> points, const ScopeView& view, std::size_t i,
                                    std::size_t stride) noexcept
{
    while (i < points.size() && !BetweenEdges(view, {points[i].Lat, points[i].Lon}))
        i += stride;
    return i;
}

void DrawWorldOutlines(Surface& surface, const ScopeView& view, std::span<const OutlinePoint> points)
{
    constexpr Color OutlineGrey{128, 128, 128};
    surface.State.PenColor = OutlineGrey;
    surface.State.PenWidth = 1;
    OutlinePen pen(surface, view);
    const auto stride = static_cast<std::size_t>(std::max<std::int16_t>(view.OutlineStep, 1));
    for (std::size_t i = 0; i < points.size(); i += stride) {
        if (!pen.IsDown()) { // no line to go on with or to break: most of a large area's points are off the scope
            i = NextBetweenEdges(points, view, i, stride);
            if (i >= points.size())
                break;
        }
        pen.MoveOn(points[i]);
        const auto passed = points.subspan(i, std::min(stride, points.size() - i));
        if (std::any_of(passed.begin(), passed.end(), [](const OutlinePoint& p) { return p.IsSeparator(); }))
            pen.Lift();
    }
    surface.RestoreDefaults();
}
} // namespace corvane
