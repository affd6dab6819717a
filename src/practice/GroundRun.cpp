#include "practice/GroundRun.h"

#include "practice/TaxiRoute.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <utility>

namespace corvane {
static constexpr double TaxiKt = 18;

void GroundRun::BeginParked(FlightState& state, const PracticeAirport& airport, double heading)
{
    m_phase = PilotPhase::Parked;
    state = {
        .Position = airport.Stand(m_stand), .AltitudeFt = airport.ElevationFt, .HeadingDeg = heading, .OnGround = true};
}

void GroundRun::Touchdown(FlightState& state, const PracticeRunway& runway) noexcept
{
    m_runway = &runway;
    m_phase = PilotPhase::LandingRoll;
    m_holdPosition = false; // nobody stops on the runway unless told so there
    state.SpeedKt = state.Ground().SpeedKt;
    state.AltitudeFt = runway.ElevationFt;
    state.VerticalFpm = 0;
    state.HeadingDeg = CourseTo(state.Position, runway.FarEnd);
    RollStep(state, state.SpeedKt, 0);
}

void GroundRun::StartTaxiOut(const FlightState& state, const Journey& journey)
{
    m_runway = m_givenRunway != nullptr ? m_givenRunway : journey.Airport->TakeOffRunway(m_aircraft->RunwayFt);
    if (m_runway != nullptr)
        PlanTaxiOut(state, *journey.Airport);
}

void GroundRun::PlanTaxiOut(const FlightState& state, const PracticeAirport& airport)
{
    m_phase = PilotPhase::TaxiOut;
    m_taxiRoute = RouteToRunway(airport, *m_runway, state.Position);
}

/// Its stand, or the next one that nobody has or taxies to; with more aircraft than stands two share one.
void GroundRun::PickStand(const PracticeAirport& airport, const GroundView& view)
{
    for (std::size_t tries = airport.StandCount(); tries > 0 && view.IsTaken(airport.Stand(m_stand)); --tries)
        ++m_stand;
}

void GroundRun::FindFreeStand(FlightState& state, const PracticeAirport& airport, const GroundView& view)
{
    assert(m_phase == PilotPhase::Parked);
    PickStand(airport, view);
    state.Position = airport.Stand(m_stand);
}

void GroundRun::StartTaxiIn(const FlightState& state, const Journey& journey, const GroundView& view)
{
    m_phase = PilotPhase::TaxiIn;
    PickStand(*journey.Airport, view);
    m_taxiRoute = RouteToStand(*journey.Airport, *m_runway, state.Position, journey.Airport->Stand(m_stand));
}

void GroundRun::Step(FlightState& state, Journey& journey, const GroundView& view)
{
    switch (m_phase) {
    case PilotPhase::Parked:
        m_parkedS -= StepS;
        if (m_parkedS <= 0 && !m_holdPosition)
            StartTaxiOut(state, journey);
        break;
    case PilotPhase::TaxiOut:
    case PilotPhase::TaxiIn: StepTaxi(state, journey, view); break;
    case PilotPhase::LineUp: StepLineUp(state, view); break;
    case PilotPhase::TakeOff: StepTakeOff(state); break;
    case PilotPhase::LandingRoll: StepLandingRoll(state, journey, view); break;
    case PilotPhase::Airborne: break;
    }
}

void GroundRun::Pushback() noexcept
{
    constexpr double ReadyS = 20;
    m_parkedS = std::min(m_parkedS, ReadyS);
    m_holdPosition = false;
}

void GroundRun::TaxiTo(const PracticeRunway& runway, const FlightState& state, const PracticeAirport& airport)
{
    m_givenRunway = &runway;
    m_runway = &runway;
    m_holdPosition = false;
    PlanTaxiOut(state, airport);
}

void GroundRun::TaxiOn(const PracticeRunway& runway, std::deque<LatLon> way)
{
    assert(!way.empty());
    m_givenRunway = &runway;
    m_runway = &runway;
    m_holdPosition = false;
    m_phase = PilotPhase::TaxiOut;
    m_taxiRoute = std::move(way);
}

void GroundRun::LineUpAndWait() noexcept
{
    m_atHoldingPoint = false;
    m_holdPosition = false;
    m_waitsLinedUp = true;
    m_parkedS = std::min(m_parkedS, 0.0);
}

void GroundRun::ClearTakeOff() noexcept
{
    LineUpAndWait();
    m_waitsLinedUp = false;
}

void GroundRun::StopTakeOff() noexcept
{
    m_waitsLinedUp = true;
    if (m_phase == PilotPhase::TakeOff)
        m_phase = PilotPhase::LandingRoll; // brakes, leaves the runway and goes back
}

void GroundRun::AskFirst() noexcept
{
    m_asksFirst = true;
    m_holdPosition = true;
    m_atHoldingPoint = true;
}

bool GroundRun::WaitsAtRunway() const noexcept
{
    return m_phase == PilotPhase::TaxiOut && m_atHoldingPoint && m_taxiRoute.size() == 1;
}

/// Whether it is about to taxi onto a runway that somebody takes off from or lands on.
static bool CrossesInFront(const FlightState& state, const PracticeAirport& airport, const GroundView& view)
{
    constexpr double BesideNm = 0.035;
    constexpr double AheadNm = 0.03;
    constexpr double RollingKt = 30;
    const LatLon ahead = Along(state.Position, state.HeadingDeg, AheadNm);
    for (const PracticeRunway& runway : airport.Runways) {
        const LineOffset here = OffsetFromLine(runway.Threshold, runway.Course, state.Position);
        const LineOffset there = OffsetFromLine(runway.Threshold, runway.Course, ahead);
        if (std::abs(here.LeftNm) < BesideNm || std::abs(there.LeftNm) >= BesideNm || there.OutNm > BesideNm ||
            there.OutNm < -runway.LengthFt / FeetPerNm - BesideNm)
            continue;
        if (view.IsOnShortFinal(runway) || view.IsOccupied(runway, RollingKt))
            return true;
    }
    return false;
}

/// Waits behind others; two that wait for each other do not do so for ever.
bool GroundRun::GivesWay(const FlightState& state, const PracticeAirport& airport, const GroundView& view)
{
    constexpr double LongestS = 60;
    constexpr double PassingS = 15;
    const bool enters = m_phase == PilotPhase::TaxiOut && m_taxiRoute.size() == 1 && !IsNearLine(state);
    if (enters && (view.IsOccupied(*m_runway) || (!m_asksFirst && view.IsOnShortFinal(*m_runway))))
        return true;
    if ((m_phase == PilotPhase::TaxiIn || m_taxiRoute.size() > 1) && CrossesInFront(state, airport, view))
        return true;
    if (m_passingS > 0) {
        m_passingS -= StepS;
        return false;
    }
    if (!view.BlocksWay(state)) {
        m_blockedS = 0;
        return false;
    }
    m_blockedS += StepS;
    if (m_blockedS > LongestS) {
        m_blockedS = 0;
        m_passingS = PassingS;
    }
    return true;
}

/// Whether it is on the runway already, which it does not stop on.
bool GroundRun::IsNearLine(const FlightState& state) const noexcept
{
    constexpr double BesideNm = 0.03;
    return std::abs(OffsetFromLine(m_runway->Threshold, m_runway->Course, state.Position).LeftNm) < BesideNm;
}

void GroundRun::StepTaxi(FlightState& state, Journey& journey, const GroundView& view)
{
    if (m_holdPosition || WaitsAtRunway() || GivesWay(state, *journey.Airport, view)) {
        constexpr double StopKtPerS = 4;
        RollStep(state, 0, StopKtPerS);
        return;
    }
    assert(!m_taxiRoute.empty());
    // Slows down for the last point: v^2 = 2 a s.
    constexpr double SlowestKt = 3;
    constexpr double SlowingKtPerS = 2;
    const double left = m_taxiRoute.size() == 1 ? RangeNm(state.Position, m_taxiRoute.front()) : 1;
    const double speed = std::clamp(std::sqrt(2 * SlowingKtPerS * left * 3600), SlowestKt, TaxiKt);
    if (!TaxiStep(state, m_taxiRoute.front(), speed))
        return;
    m_taxiRoute.pop_front();
    if (!m_taxiRoute.empty())
        return;
    if (m_phase == PilotPhase::TaxiOut) {
        m_phase = PilotPhase::LineUp;
        return;
    }
    m_phase = PilotPhase::Parked;
    state.SpeedKt = 0;
    journey.Destination = nullptr; // the next flight is planned with the next step
    ++m_flightsDone;
    m_givenRunway = nullptr;
    if (m_asksFirst)
        AskFirst();
}

void GroundRun::StepLineUp(FlightState& state, const GroundView& view)
{
    constexpr double StopKtPerS = 6;
    const double turn = TurnTo(state.HeadingDeg, m_runway->Course);
    state.HeadingDeg =
        WrapCourse(state.HeadingDeg + std::clamp(turn, -GroundTurnDegPerS * StepS, GroundTurnDegPerS * StepS));
    RollStep(state, 0, StopKtPerS);
    if (m_holdPosition || m_waitsLinedUp || state.SpeedKt > 0 || turn != 0)
        return;
    constexpr double LongestS = 180; // two that lined up at once do not wait for each other for ever
    m_blockedS = view.IsOccupied(*m_runway) ? m_blockedS + StepS : 0;
    if (m_blockedS > 0 && m_blockedS < LongestS)
        return;
    m_blockedS = 0;
    // The roll goes toward the far end: on the centreline even where the line-up stopped beside it.
    state.HeadingDeg = m_runway->Course;
    m_phase = PilotPhase::TakeOff;
}

void GroundRun::StepTakeOff(FlightState& state)
{
    constexpr double SlowestRollKt = 20; // a gale does not lift anybody off the spot
    const double headKt = state.Wind.Blows() ? state.Wind.HeadKt(m_runway->Course) : 0;
    const double rotateKt = std::max(m_aircraft->RotateKt - headKt, SlowestRollKt);
    RollStep(state, rotateKt, m_aircraft->TakeOffKtPerS);
    state.AltitudeFt = m_runway->ElevationFt;
    if (state.SpeedKt < rotateKt)
        return;
    m_phase = PilotPhase::Airborne;
    state.SpeedKt = m_aircraft->RotateKt; // through the air from here on
}

void GroundRun::StepLandingRoll(FlightState& state, const Journey& journey, const GroundView& view)
{
    const double leftNm =
        m_runway->LengthFt / FeetPerNm + OffsetFromLine(m_runway->Threshold, m_runway->Course, state.Position).OutNm;
    constexpr double ReserveNm = 0.05;
    // v^2 = 2 a s, with knots and nautical miles: a in knots a second is v^2 / (2 s) / 3600.
    const double stopNm = std::max(leftNm - ReserveNm, 0.02);
    const double needed = state.SpeedKt * state.SpeedKt / (2 * stopNm) / 3600;
    constexpr double HardestKtPerS = 8;
    RollStep(state, TaxiKt, std::min(std::max(needed, m_aircraft->BrakingKtPerS), HardestKtPerS));
    state.AltitudeFt = m_runway->ElevationFt;
    if (state.SpeedKt <= TaxiKt)
        StartTaxiIn(state, journey, view);
}
} // namespace corvane
