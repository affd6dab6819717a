#include "practice/GroundRun.h"

#include <algorithm>
#include <cassert>
#include <cmath>

namespace corvane {
static constexpr double TaxiKt = 18;
static constexpr double TaxiwayNm = 0.1; ///< between a runway and the taxiway beside it

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
    state.SpeedKt = state.Ground().SpeedKt;
    state.AltitudeFt = runway.ElevationFt;
    state.VerticalFpm = 0;
    state.HeadingDeg = CourseTo(state.Position, runway.FarEnd);
    RollStep(state, state.SpeedKt, 0);
}

/// A point of the taxiway beside a runway, on the side of a place; outNm counts back from the threshold.
static LatLon Turnoff(const PracticeRunway& runway, const LatLon& toward, double outNm) noexcept
{
    const bool onTheLeft = OffsetFromLine(runway.Threshold, runway.Course, toward).LeftNm >= 0;
    const LatLon onTheLine = Along(runway.Threshold, runway.Course + 180, outNm);
    return Along(onTheLine, runway.Course + (onTheLeft ? -90 : 90), TaxiwayNm);
}

static double BesideTheRunway(const PracticeRunway& runway, const LatLon& place) noexcept
{
    return std::clamp(OffsetFromLine(runway.Threshold, runway.Course, place).OutNm, -runway.LengthFt / FeetPerNm, 0.0);
}

void GroundRun::StartTaxiOut(const FlightState& state, const Journey& journey)
{
    m_runway = m_givenRunway != nullptr ? m_givenRunway : journey.Airport->TakeOffRunway(m_aircraft->RunwayFt);
    if (m_runway != nullptr)
        PlanTaxiOut(state);
}

void GroundRun::PlanTaxiOut(const FlightState& state)
{
    constexpr double LineUpNm = 0.01;
    m_phase = PilotPhase::TaxiOut;
    m_taxiRoute = {Turnoff(*m_runway, state.Position, BesideTheRunway(*m_runway, state.Position)),
                   Turnoff(*m_runway, state.Position, -LineUpNm),
                   Along(m_runway->Threshold, m_runway->Course, LineUpNm)};
}

void GroundRun::StartTaxiIn(const FlightState& state, const Journey& journey)
{
    m_phase = PilotPhase::TaxiIn;
    const LatLon stand = journey.Airport->Stand(m_stand);
    const double outNm = OffsetFromLine(m_runway->Threshold, m_runway->Course, state.Position).OutNm;
    constexpr double TurnAheadNm = 0.03;
    m_taxiRoute = {Turnoff(*m_runway, stand, outNm - TurnAheadNm),
                   Turnoff(*m_runway, stand, BesideTheRunway(*m_runway, stand)), stand};
}

void GroundRun::Step(FlightState& state, Journey& journey)
{
    switch (m_phase) {
    case PilotPhase::Parked:
        m_parkedS -= StepS;
        if (m_parkedS <= 0 && !m_holdPosition)
            StartTaxiOut(state, journey);
        break;
    case PilotPhase::TaxiOut:
    case PilotPhase::TaxiIn: StepTaxi(state, journey); break;
    case PilotPhase::LineUp: StepLineUp(state); break;
    case PilotPhase::TakeOff: StepTakeOff(state); break;
    case PilotPhase::LandingRoll: StepLandingRoll(state, journey); break;
    case PilotPhase::Airborne: break;
    }
}

void GroundRun::Pushback() noexcept
{
    constexpr double ReadyS = 20;
    m_parkedS = std::min(m_parkedS, ReadyS);
    m_holdPosition = false;
}

void GroundRun::TaxiTo(const PracticeRunway& runway, const FlightState& state)
{
    m_givenRunway = &runway;
    m_runway = &runway;
    m_holdPosition = false;
    PlanTaxiOut(state);
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

void GroundRun::StepTaxi(FlightState& state, Journey& journey)
{
    if (m_holdPosition || WaitsAtRunway()) {
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

void GroundRun::StepLineUp(FlightState& state)
{
    constexpr double StopKtPerS = 6;
    const double turn = TurnTo(state.HeadingDeg, m_runway->Course);
    state.HeadingDeg =
        WrapCourse(state.HeadingDeg + std::clamp(turn, -GroundTurnDegPerS * StepS, GroundTurnDegPerS * StepS));
    RollStep(state, 0, StopKtPerS);
    if (m_holdPosition || m_waitsLinedUp || state.SpeedKt > 0 || turn != 0)
        return;
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

void GroundRun::StepLandingRoll(FlightState& state, const Journey& journey)
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
        StartTaxiIn(state, journey);
}
} // namespace corvane
