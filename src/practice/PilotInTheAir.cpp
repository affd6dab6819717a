#include "core/Rounding.h"
#include "practice/Pilot.h"
#include "session/WireUnits.h"

#include <algorithm>
#include <cmath>

namespace corvane {
static constexpr double SpeedLimitFt = 10000; ///< below it nobody flies faster than SpeedLimitKt unasked
static constexpr double SpeedLimitKt = 250;

double Pilot::FieldFt() const noexcept
{
    const PracticeAirport* field = m_destination != nullptr ? m_destination : m_airport;
    return field != nullptr ? field->ElevationFt : 0;
}

double Pilot::TrueHeadingFor(int magnetic) const noexcept
{
    // The receiver takes the variation at the position that it reads off the message, so the pilot does the same.
    const double lat = LatitudeFromWire(LatitudeToWire(m_state.Position.Lat));
    const double lon = LongitudeFromWire(LongitudeToWire(m_state.Position.Lon));
    return TrueFromMagnetic(*m_grid, magnetic, lat, lon);
}

double Pilot::OwnSpeedKt(double altitudeFt, double leftNm) const noexcept
{
    constexpr double SlowingNm = 6; // before the approach begins
    constexpr double SlowingFt = 4000;
    if (leftNm < m_aircraft->FinalNm + SlowingNm)
        return m_aircraft->PatternKt;
    const bool descending = m_state.VerticalFpm < -300;
    if (altitudeFt < SpeedLimitFt || (descending && altitudeFt < SpeedLimitFt + SlowingFt))
        return std::min(m_aircraft->CruiseKt, SpeedLimitKt);
    return m_aircraft->CruiseKt;
}

/// Climb to the cruise altitude, and down from it so that the platform of the approach is reached before its gate.
void Pilot::FlyOwnProfile(FlightTarget& target, double leftNm) const
{
    constexpr double FeetPerDescentNm = 250;
    constexpr double LevelNm = 3;
    target.AltitudeFt = m_cruiseFt;
    const PracticeRunway* runway =
        m_destination != nullptr ? m_destination->RunwayInUse(m_aircraft->RunwayFt) : nullptr;
    if (runway != nullptr && !m_wayPoint) {
        const double downNm = std::max(0.0, leftNm - m_aircraft->FinalNm - LevelNm);
        target.AltitudeFt =
            std::min(target.AltitudeFt, Approach::PlatformFt(*runway, *m_aircraft) + downNm * FeetPerDescentNm);
    }
    target.SpeedKt = OwnSpeedKt(std::max(m_state.AltitudeFt, target.AltitudeFt - 1), leftNm);
}

void Pilot::SteerRoute(FlightTarget& target, PracticeRandom& random)
{
    constexpr double ReachedNm = 1.5;
    if (m_wayPoint && RangeNm(m_state.Position, *m_wayPoint) < ReachedNm)
        m_wayPoint.reset();
    if (!m_wayPoint && m_destination == nullptr)
        m_wayPoint = RandomPlace(10, 60, random);
    const LatLon goal = m_wayPoint || m_destination == nullptr ? *m_wayPoint : m_destination->Position;
    const double leftNm = RangeNm(m_state.Position, goal);
    target.HeadingDeg = CourseTo(m_state.Position, goal);
    constexpr double FarNm = 200;
    FlyOwnProfile(target, m_wayPoint ? FarNm : leftNm);
    constexpr double BeginsNm = 8; // before the length of its final
    const PracticeRunway* runway =
        m_wayPoint || m_destination == nullptr ? nullptr : m_destination->RunwayInUse(m_aircraft->RunwayFt);
    if (runway != nullptr && leftNm < m_aircraft->FinalNm + BeginsNm)
        m_approach.emplace(*runway, m_state, *m_aircraft);
}

void Pilot::Steer(FlightTarget& target, PracticeRandom& random)
{
    if (const auto* upwind = std::get_if<UpwindLeg>(&m_steering)) {
        target.HeadingDeg = upwind->Course;
        target.SpeedKt = m_aircraft->ClimbKt;
        constexpr double AsGoodAsThereFt = 20;
        const double untilFt = std::min(upwind->UntilFt, m_askedFt.value_or(m_cruiseFt) - AsGoodAsThereFt);
        if (m_state.AltitudeFt > untilFt)
            m_steering = Route{};
    } else if (auto* heading = std::get_if<OnHeading>(&m_steering)) {
        constexpr double OnItDeg = 0.5;
        target.HeadingDeg = TrueHeadingFor(heading->Magnetic);
        target.Turn = heading->Reached ? TurnWay::Shorter : heading->Turn;
        heading->Reached = heading->Reached || std::abs(TurnTo(m_state.HeadingDeg, target.HeadingDeg)) < OnItDeg;
    } else if (const auto* direct = std::get_if<DirectTo>(&m_steering)) {
        target.HeadingDeg = CourseTo(m_state.Position, direct->Place);
        if (RangeNm(m_state.Position, direct->Place) < TurnRadiusNm(m_state.SpeedKt) / 2) {
            m_radioCall = "over " + direct->Name;
            m_steering = Route{};
        }
    } else if (auto* hold = std::get_if<Hold>(&m_steering)) {
        hold->Guide(m_state, target);
    } else if (!m_approach) {
        SteerRoute(target, random);
    }
}

void Pilot::StartGoAround()
{
    constexpr double GoAroundFt = 1500;
    m_steering = UpwindLeg{m_approach->Runway().Course, m_approach->Runway().ElevationFt + GoAroundFt};
    m_cruiseFt = std::max(m_cruiseFt, m_approach->Runway().ElevationFt + 2 * GoAroundFt);
    m_approach.reset();
    m_askedFt.reset();
    m_askedKt.reset();
}

void Pilot::FlyApproach(FlightTarget& target)
{
    const ApproachEvent event = m_approach->Guide(m_state, target, m_askedKt.value_or(0));
    switch (event) {
    case ApproachEvent::Flying: break;
    case ApproachEvent::Established:
        if (m_askedToLand)
            m_radioCall = "established, runway " + m_approach->Runway().Name;
        m_steering = Route{};
        break;
    case ApproachEvent::GoAround:
        m_radioCall = "going around, runway " + m_approach->Runway().Name;
        StartGoAround();
        break;
    case ApproachEvent::Touchdown:
        m_runway = &m_approach->Runway();
        m_airport = m_destination;
        m_state.AltitudeFt = m_runway->ElevationFt;
        m_state.VerticalFpm = 0;
        m_state.HeadingDeg = CourseTo(m_state.Position, m_runway->FarEnd);
        m_approach.reset();
        m_askedFt.reset();
        m_askedKt.reset();
        m_askedToLand = false;
        m_phase = PilotPhase::LandingRoll;
        break;
    }
}

void Pilot::StepAirborne(PracticeRandom& random)
{
    FlightTarget target{.HeadingDeg = m_state.HeadingDeg, .AltitudeFt = m_cruiseFt};
    constexpr double FarNm = 200;
    target.SpeedKt = OwnSpeedKt(m_state.AltitudeFt, FarNm);
    Steer(target, random);
    if (m_approach && !m_askedFt)
        target.AltitudeFt = Approach::PlatformFt(m_approach->Runway(), *m_aircraft);
    if (m_askedFt)
        target.AltitudeFt = *m_askedFt;
    if (m_askedKt)
        target.SpeedKt = *m_askedKt;
    if (m_approach)
        FlyApproach(target);
    if (m_phase == PilotPhase::Airborne)
        FlyStep(m_state, target, *m_aircraft);
    else
        RollStep(m_state, m_state.SpeedKt, 0);
}

ReportedPosition Pilot::Report() const noexcept
{
    ReportedPosition report{.Position = m_state.Position,
                            .AltitudeFt = m_state.AltitudeFt,
                            .TrueHeading = RoundTo<std::int32_t>(m_state.HeadingDeg),
                            .SpeedKt = m_state.SpeedKt};
    const auto* heading = std::get_if<OnHeading>(&m_steering);
    if (heading == nullptr || !heading->Reached || m_phase != PilotPhase::Airborne ||
        (m_approach && m_approach->IsEstablished()))
        return report;
    // The variation changes by whole degrees from one cell of the grid to the next: the compass follows at once, the
    // aircraft within a second or two.
    report.TrueHeading = RoundTo<std::int32_t>(TrueHeadingFor(heading->Magnetic));
    return report;
}
} // namespace corvane
