#include "world/OpenAirOutline.h"

#include "builder/AirspaceDecoder.h"
#include "core/GreatCircle.h"
#include "core/Rounding.h"

#include <algorithm>
#include <cassert>
#include <cmath>

namespace corvane {
static constexpr double StepDegrees = 2;

void OpenAirOutline::AddCorner(const LatLon& corner)
{
    if (!m_piece.empty() && m_piece.back() == corner)
        return;
    if (m_points.size() + m_piece.size() >= MostPoints)
        m_tooMany = true;
    else
        m_piece.push_back(corner);
}

LatLon OpenAirOutline::On(const Ray& ray) const noexcept
{
    assert(m_center);
    return Along(*m_center, ray.Bearing, ray.RangeNm);
}

/// Goes from one ray to the other, the ends left out. Equal bearings are a full turn.
void OpenAirOutline::Sweep(const Ray& from, const Ray& to, bool clockwise)
{
    const double turn = WrapCourse(clockwise ? to.Bearing - from.Bearing : from.Bearing - to.Bearing);
    const double angle = turn == 0 ? 360 : turn;
    const auto steps = RoundTo<std::int32_t>(std::ceil(angle / StepDegrees));
    for (std::int32_t i = 1; i < steps; ++i) {
        const double part = static_cast<double>(i) / steps;
        AddCorner(On(
            {from.Bearing + (clockwise ? angle : -angle) * part, from.RangeNm + (to.RangeNm - from.RangeNm) * part}));
    }
}

void OpenAirOutline::AddCircle(double radiusNm)
{
    ClosePiece();
    const Ray north{0, radiusNm};
    AddCorner(On(north));
    Sweep(north, north, true);
    ClosePiece();
}

void OpenAirOutline::AddArc(double radiusNm, double fromBearing, double toBearing)
{
    const Ray from{fromBearing, radiusNm};
    const Ray to{toBearing, radiusNm};
    AddCorner(On(from));
    Sweep(from, to, m_clockwise);
    AddCorner(On(to));
}

void OpenAirOutline::AddArcBetween(const LatLon& from, const LatLon& to)
{
    assert(m_center);
    AddCorner(from);
    Sweep({CourseTo(*m_center, from), RangeNm(*m_center, from)}, {CourseTo(*m_center, to), RangeNm(*m_center, to)},
          m_clockwise);
    AddCorner(to);
}

/// Lets the piece at hand lead back to where it began, once, and takes it over where it encloses anything.
void OpenAirOutline::ClosePiece()
{
    constexpr std::size_t FewestCorners = 3;
    while (m_piece.size() > 1 && m_piece.back() == m_piece.front())
        m_piece.pop_back();
    if (m_piece.size() >= FewestCorners) {
        m_piece.push_back(m_piece.front());
        BoundaryKind kind = BoundaryKind::Start;
        for (const LatLon& corner : m_piece) {
            m_points.push_back({kind, corner.Lat, corner.Lon, 0});
            kind = BoundaryKind::Line;
        }
    }
    m_piece.clear();
}

bool OpenAirOutline::Finish(AirspaceRecord& airspace)
{
    ClosePiece();
    if (m_points.empty() || m_tooMany)
        return false;
    airspace.Points = std::move(m_points);
    SetBoxAround(airspace);
    return true;
}

namespace {
/// How far an outline reaches, with longitudes counted on along it.
struct Reach {
    double North = -90;
    double South = 90;
    double East = 0;
    double West = 0;
    double Winding = 0; ///< longitudes gone through from the start to the end: a full turn where a pole lies inside

    void Include(LatLon at) noexcept
    {
        North = std::max(North, at.Lat);
        South = std::min(South, at.Lat);
        East = std::max(East, at.Lon);
        West = std::min(West, at.Lon);
    }
};
} // namespace

static Reach ReachOf(const std::vector<BoundaryPoint>& points) noexcept
{
    Reach reach;
    reach.East = reach.West = points.front().Lon;
    double lon = points.front().Lon;
    for (const BoundaryPoint& point : points) {
        lon += NormalizeLongitude(NormalizeLongitude(point.Lon) - NormalizeLongitude(lon));
        reach.Include({point.Lat, lon});
    }
    reach.Winding = lon - points.front().Lon;
    return reach;
}

/// A longitude counted beyond the half turn, brought back; those on it stay.
static double WithinHalfTurn(double lon) noexcept
{
    return lon > 180 ? lon - 360 : lon < -180 ? lon + 360 : lon;
}

void SetBoxAround(AirspaceRecord& airspace)
{
    assert(!airspace.Points.empty());
    Reach reach = ReachOf(airspace.Points);
    const bool aroundPole = std::abs(reach.Winding) > 180;
    if (aroundPole && reach.North + reach.South > 0)
        reach.North = 90;
    else if (aroundPole)
        reach.South = -90;
    if (aroundPole || reach.East - reach.West >= 360) {
        reach.East = 180;
        reach.West = -180;
    }
    airspace.North = RoundToFourPlaces(reach.North);
    airspace.South = RoundToFourPlaces(reach.South);
    airspace.West = RoundToFourPlaces(WithinHalfTurn(reach.West));
    airspace.East = RoundToFourPlaces(WithinHalfTurn(reach.East));
    SetCenterOfBox(airspace);
}
} // namespace corvane
