#include "world/Pavement.h"

#include "core/Rounding.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace corvane {
static constexpr double MetresPerDegree = 60 * 1852.0;
static constexpr double ToleranceM = 0.5;

void PavementEdges::AddPoint(const LatLon& point)
{
    if (m_points.size() >= MostPoints) {
        ++m_leftOut;
        return;
    }
    if (m_points.size() > m_lineStart && m_points.back() == point)
        return;
    m_points.push_back(point);
}

/// The size in metres of how far b is off the middle of a and c, doubled: what a curve's bend is measured by.
static double BendM(const LatLon& a, const LatLon& b, const LatLon& c) noexcept
{
    const double north = (a.Lat - 2 * b.Lat + c.Lat) * MetresPerDegree;
    const double east = (a.Lon - 2 * b.Lon + c.Lon) * MetresPerDegree * std::cos(b.Lat * RadiansPerDegree);
    return std::hypot(north, east);
}

/// How many equal pieces keep chords within the tolerance: a chord is off by at most an eighth of the square of its
/// share of the curve times the second derivative, which is degree * (degree - 1) times the bend of control points.
static int PieceCount(double bendM, int degree) noexcept
{
    constexpr int MostPieces = 100;
    const double pieces = std::sqrt(degree * (degree - 1) * bendM / (8 * ToleranceM));
    return std::clamp(RoundTo<std::int32_t>(std::ceil(pieces)), 1, MostPieces);
}

/// A position with the longitude counted on from another's, so that curves may cross 180 degrees.
static LatLon Near(const LatLon& position, const LatLon& other) noexcept
{
    return {position.Lat, other.Lon + NormalizeLongitude(position.Lon - other.Lon)};
}

static LatLon Mirrored(const LatLon& control, const LatLon& at) noexcept
{
    return {2 * at.Lat - control.Lat, 2 * at.Lon - control.Lon};
}

static LatLon Between(const LatLon& a, const LatLon& b, double t) noexcept
{
    return {a.Lat + (b.Lat - a.Lat) * t, a.Lon + (b.Lon - a.Lon) * t};
}

void PavementEdges::Join(const PavementNode& from, const PavementNode& to)
{
    if (from.Position == to.Position)
        return; // vertices that stand twice to bend the ways in and out differently
    const LatLon start = from.Position;
    const LatLon end = Near(to.Position, start);
    if (from.Control || to.Control) {
        // A curve with one control point is a cubic one of equal shape, so one formula serves both.
        std::array<LatLon, 2> controls;
        if (from.Control && to.Control) {
            controls = {Near(*from.Control, start), Mirrored(Near(*to.Control, start), end)};
        } else {
            const LatLon only = from.Control ? Near(*from.Control, start) : Mirrored(Near(*to.Control, start), end);
            controls = {Between(start, only, 2.0 / 3), Between(end, only, 2.0 / 3)};
        }
        const double bendM = std::max(BendM(start, controls[0], controls[1]), BendM(controls[0], controls[1], end));
        const int pieces = PieceCount(bendM, 3);
        for (int i = 1; i < pieces; ++i) {
            const double t = static_cast<double>(i) / pieces;
            const LatLon ab = Between(start, controls[0], t);
            const LatLon bc = Between(controls[0], controls[1], t);
            const LatLon cd = Between(controls[1], end, t);
            const LatLon point = Between(Between(ab, bc, t), Between(bc, cd, t), t);
            AddPoint({std::clamp(point.Lat, -90.0, 90.0), NormalizeLongitude(point.Lon)});
        }
    }
    AddPoint(to.Position);
}

void PavementEdges::Add(const PavementNode& node)
{
    if (!m_first) {
        m_first = node;
        m_lineStart = m_points.size();
        m_leftOutBefore = m_leftOut;
        AddPoint(node.Position);
    } else {
        Join(m_last, node);
    }
    m_last = node;
}

void PavementEdges::End(bool closed)
{
    if (!m_first)
        return;
    if (closed) {
        const std::int64_t leftOut = m_leftOut;
        Join(m_last, *m_first);
        if (m_leftOut > leftOut)
            --m_leftOut; // the first point again
    }
    std::size_t count = m_points.size() - m_lineStart;
    if (closed && count > 1 && m_points.back() == m_points[m_lineStart]) {
        m_points.pop_back(); // the closing line leads back to the first point itself
        --count;
    }
    if (count >= 2)
        m_lines.push_back({m_lineStart, count, closed && count > 2 && m_leftOut == m_leftOutBefore});
    else
        m_points.resize(m_lineStart);
    m_first.reset();
}
} // namespace corvane
