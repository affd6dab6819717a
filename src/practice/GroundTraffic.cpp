#include "practice/GroundTraffic.h"

#include <cmath>

namespace corvane {
/// Farther apart than this in latitude and two places have nothing to do with each other on the ground; spares most
/// pairs the distance.
static bool MayBeNear(const LatLon& one, const LatLon& other, double nm) noexcept
{
    constexpr double NmPerDegree = 60;
    return std::abs(one.Lat - other.Lat) * NmPerDegree <= nm;
}

void GroundTraffic::Add(const FlightState& state, bool parked, Index who, const std::optional<LatLon>& standAhead)
{
    m_aircraft.push_back({state, parked, standAhead, who});
}

bool GroundTraffic::BlocksWay(const FlightState& state, Index self) const noexcept
{
    constexpr double GapNm = 0.04;
    constexpr double AheadDeg = 45;
    constexpr double BesideDeg = 100;
    for (const Aircraft& other : m_aircraft) {
        if (other.Who == self || other.Parked || !other.State.OnGround ||
            !MayBeNear(other.State.Position, state.Position, GapNm))
            continue;
        const double nm = RangeNm(state.Position, other.State.Position);
        constexpr double SamePlaceNm = 0.008; // as from one stand: there one of them goes first
        if (nm < SamePlaceNm && other.Who > self)
            continue;
        if (nm < SamePlaceNm)
            return true;
        const double angle = std::abs(TurnTo(state.HeadingDeg, CourseTo(state.Position, other.State.Position)));
        // Where ways meet at a node, one of the two goes first.
        if (nm < GapNm && (angle < AheadDeg || (angle < BesideDeg && other.Who < self)))
            return true;
    }
    return false;
}

bool GroundTraffic::IsOccupied(const PracticeRunway& runway, Index self, double fromKt) const noexcept
{
    constexpr double HalfWidthNm = 0.025;
    const double lengthNm = runway.LengthFt / FeetPerNm;
    for (const Aircraft& other : m_aircraft) {
        if (other.Who == self || other.Parked || !other.State.OnGround || other.State.SpeedKt < fromKt ||
            !MayBeNear(other.State.Position, runway.Threshold, lengthNm + HalfWidthNm))
            continue;
        const LineOffset offset = OffsetFromLine(runway.Threshold, runway.Course, other.State.Position);
        if (std::abs(offset.LeftNm) < HalfWidthNm && offset.OutNm < HalfWidthNm && offset.OutNm > -lengthNm)
            return true;
    }
    return false;
}

bool GroundTraffic::IsOnShortFinal(const PracticeRunway& runway, Index self) const noexcept
{
    constexpr double FinalNm = 2;
    constexpr double BesideNm = 0.15;
    constexpr double HighestFt = 1200;
    for (const Aircraft& other : m_aircraft) {
        if (other.Who == self || other.State.OnGround || other.State.AltitudeFt > runway.ElevationFt + HighestFt ||
            !MayBeNear(other.State.Position, runway.Threshold, FinalNm + BesideNm))
            continue;
        const LineOffset offset = OffsetFromLine(runway.Threshold, runway.Course, other.State.Position);
        if (offset.OutNm > -BesideNm && offset.OutNm < FinalNm && std::abs(offset.LeftNm) < BesideNm)
            return true;
    }
    return false;
}

bool GroundTraffic::IsTaken(const LatLon& stand, Index self) const noexcept
{
    constexpr double StandNm = 0.01;
    const auto isThere = [&stand](const LatLon& place) {
        return MayBeNear(place, stand, StandNm) && RangeNm(place, stand) < StandNm;
    };
    for (const Aircraft& other : m_aircraft)
        if (other.Who != self && other.State.OnGround &&
            (isThere(other.State.Position) || (other.StandAhead && isThere(*other.StandAhead))))
            return true;
    return false;
}
} // namespace corvane
