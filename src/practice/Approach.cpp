#include "practice/Approach.h"

#include "core/Rounding.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace corvane {
// The glide path descends 3 degrees.
static constexpr double TanGlide = 0.0524077792830412;

LatLon Approach::Gate(const PracticeRunway& runway, const AircraftClass& aircraft) noexcept
{
    return Along(runway.Threshold, runway.Course + 180, aircraft.FinalNm);
}

double Approach::PlatformFt(const PracticeRunway& runway, const AircraftClass& aircraft) noexcept
{
    constexpr double BelowThePath = 0.8; // so that the glide path is met from below
    constexpr double WholeHundreds = 100;
    const double above = aircraft.FinalNm * FeetPerNm * TanGlide * BelowThePath;
    return RoundHalfEven((runway.ElevationFt + above) / WholeHundreds) * WholeHundreds;
}

Approach::Approach(const PracticeRunway& runway, const FlightState& state, const AircraftClass& aircraft)
    : m_runway(&runway), m_aircraft(&aircraft), m_leg(Leg::ToGate), m_point(Gate(runway, aircraft))
{
    constexpr double StraightInDeg = 80;
    if (std::abs(TurnTo(runway.Course, CourseTo(state.Position, m_point))) <= StraightInDeg)
        return;
    // From the runway's side: around it on the side where the aircraft is.
    const bool onTheLeft = OffsetFromLine(runway.Threshold, runway.Course, state.Position).LeftNm >= 0;
    m_leg = Leg::ToDownwind;
    m_point = Along(m_point, runway.Course + (onTheLeft ? -90 : 90), aircraft.OffsetNm);
    m_baseHeading = WrapCourse(runway.Course + (onTheLeft ? 90 : -90));
}

Approach::Approach(const PracticeRunway& runway, const AircraftClass& aircraft) noexcept
    : m_runway(&runway), m_aircraft(&aircraft)
{
}

bool Approach::HeadingMeetsFinal(const PracticeRunway& runway, const FlightState& state, double heading,
                                 const AircraftClass& aircraft) noexcept
{
    constexpr double WidestAngleDeg = 100;
    constexpr double FarthestNm = 30;
    constexpr double OnTheLineNm = 0.2;
    const LineOffset offset = OffsetFromLine(runway.Threshold, runway.Course, state.Position);
    const double angle = TurnTo(runway.Course, OverGround(heading, state.SpeedKt, state.Wind).TrackDeg);
    if (std::abs(angle) > WidestAngleDeg)
        return false;
    double meetsAtNm = offset.OutNm;
    if (std::abs(offset.LeftNm) > OnTheLineNm) {
        const double across = offset.LeftNm / std::sin(angle * RadiansPerDegree); // along the heading
        if (!(across > 0))
            return false;
        meetsAtNm -= across * std::cos(angle * RadiansPerDegree);
    }
    return meetsAtNm > aircraft.FinalNm * 0.4 && meetsAtNm < FarthestNm;
}

bool Approach::IsShortFinal(const PracticeRunway& runway, const FlightState& state,
                            const AircraftClass& aircraft) noexcept
{
    constexpr double Share = 0.45; // of the final
    return OffsetFromLine(runway.Threshold, runway.Course, state.Position).OutNm < aircraft.FinalNm * Share;
}

/// The turn onto the centreline must begin before it, by the part of the turn's radius that its angle takes.
bool Approach::CanJoin(const FlightState& state) const noexcept
{
    constexpr double WidestAngleDeg = 120;
    constexpr double MarginNm = 0.1;
    constexpr double LatestNm = 0.7;
    const LineOffset offset = OffsetFromLine(m_runway->Threshold, m_runway->Course, state.Position);
    const GroundVector ground = state.Ground();
    const double angle = TurnTo(m_runway->Course, ground.TrackDeg);
    if (std::abs(angle) > WidestAngleDeg || offset.OutNm < LatestNm)
        return false;
    const double leadNm = GroundTurnRadiusNm(state) * (1 - std::cos(angle * RadiansPerDegree)) + MarginNm;
    return std::abs(offset.LeftNm) <= leadNm;
}

double Approach::GlideFt(double outNm) const noexcept
{
    constexpr double FarthestAimFt = 500;
    const double aimFt = std::min(FarthestAimFt, m_runway->LengthFt / 10); // the path meets the ground this far in
    return m_runway->ElevationFt + (outNm * FeetPerNm + aimFt) * TanGlide;
}

double Approach::LeftNm(const FlightState& state) const noexcept
{
    switch (m_leg) {
    case Leg::Localizer: return 0;
    case Leg::ToDownwind: return RangeNm(state.Position, m_point) + m_aircraft->OffsetNm;
    case Leg::Base: return m_aircraft->OffsetNm;
    default: return RangeNm(state.Position, Gate(*m_runway, *m_aircraft));
    }
}

void Approach::GuideToPoint(const FlightState& state, FlightTarget& target) noexcept
{
    target.HeadingDeg = CourseTo(state.Position, m_point);
    target.Turn = TurnWay::Shorter;
    target.IsTrack = true;
    const double leadNm = GroundTurnRadiusNm(state) + 0.1;
    if (RangeNm(state.Position, m_point) > leadNm)
        return;
    // The gate is reached without the centreline only from an odd side: then it is tracked from here.
    m_leg = m_leg == Leg::ToDownwind ? Leg::Base : Leg::Localizer;
}

ApproachEvent Approach::Guide(const FlightState& state, FlightTarget& target, double askedKt, bool descends) noexcept
{
    const bool joins = m_leg != Leg::Localizer && m_leg != Leg::ToDownwind && CanJoin(state);
    if (m_leg == Leg::Localizer || joins) {
        m_leg = Leg::Localizer;
        const ApproachEvent event = GuideOnLocalizer(state, target, askedKt, descends);
        const bool first = !std::exchange(m_announced, true);
        return first && event == ApproachEvent::Flying ? ApproachEvent::Established : event;
    }
    if (askedKt > 0)
        target.SpeedKt = askedKt;
    if (m_leg == Leg::Base) {
        target.HeadingDeg = m_baseHeading;
        target.IsTrack = true;
        target.Turn = TurnWay::Shorter;
    } else if (m_leg != Leg::OnHeading)
        GuideToPoint(state, target);
    return ApproachEvent::Flying;
}

/// Below the path: level until it comes down to the aircraft. On it or above: down with it.
void Approach::GuideDown(const FlightState& state, double outNm, FlightTarget& target) noexcept
{
    constexpr double CaptureFt = 40;
    constexpr double FlareFt = 20;
    constexpr double FlareFpm = -250;
    const double nextFt = GlideFt(outNm - state.Ground().SpeedKt / 3600 * StepS);
    if (state.AltitudeFt < m_runway->ElevationFt + FlareFt) {
        target.VerticalFpm = FlareFpm;
        return;
    }
    if (state.AltitudeFt < nextFt - CaptureFt)
        return;
    // Toward the path over a few seconds; never upward, a pilot below it flies level into it.
    constexpr double ClosingS = 4;
    const double pathFpm = -state.Ground().SpeedKt / 60 * FeetPerNm * TanGlide;
    target.VerticalFpm = std::min(0.0, pathFpm + (nextFt - state.AltitudeFt) / ClosingS * 60);
}

bool Approach::IsUnstable(const FlightState& state, const LineOffset& offset) const noexcept
{
    constexpr double DecisionNm = 0.5;
    constexpr double WideNm = 0.06;
    constexpr double AskewDeg = 8;
    constexpr double HighFt = 150;
    if (offset.OutNm > DecisionNm)
        return false;
    const bool pastTheRunway = offset.OutNm < -m_runway->LengthFt / FeetPerNm / 2;
    return std::abs(offset.LeftNm) > WideNm || std::abs(TurnTo(m_runway->Course, state.Ground().TrackDeg)) > AskewDeg ||
           state.AltitudeFt > GlideFt(std::max(offset.OutNm, 0.0)) + HighFt || pastTheRunway;
}

ApproachEvent Approach::GuideOnLocalizer(const FlightState& state, FlightTarget& target, double askedKt,
                                         bool descends) noexcept
{
    const LineOffset offset = OffsetFromLine(m_runway->Threshold, m_runway->Course, state.Position);
    if (IsUnstable(state, offset))
        return ApproachEvent::GoAround;
    if (offset.OutNm < 0.5 && state.AltitudeFt <= m_runway->ElevationFt)
        return ApproachEvent::Touchdown;
    constexpr double ClosingS = 12; // the offset is worked off in about this time
    constexpr double WidestAngleDeg = 35;
    const double nmPerS = std::max(state.Ground().SpeedKt, 1.0) / 3600;
    const double angle = offset.LeftNm / (nmPerS * ClosingS) * DegreesPerRadian;
    target.IsTrack = true;
    target.HeadingDeg = WrapCourse(m_runway->Course + std::clamp(angle, -WidestAngleDeg, WidestAngleDeg));
    target.Turn = TurnWay::Shorter;
    if (IsShortFinal(*m_runway, state, *m_aircraft))
        target.SpeedKt = m_aircraft->FinalKt;
    else
        target.SpeedKt = askedKt > 0 ? askedKt : m_aircraft->PatternKt;
    if (descends)
        GuideDown(state, offset.OutNm, target);
    return ApproachEvent::Flying;
}
} // namespace corvane
