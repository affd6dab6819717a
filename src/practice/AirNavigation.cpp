#include "practice/AirNavigation.h"

#include "core/Rounding.h"
#include "practice/PilotTalk.h"
#include "session/WireUnits.h"

#include <algorithm>
#include <cmath>

namespace corvane {
static constexpr double SpeedLimitFt = 10000; ///< below it nobody flies faster than SpeedLimitKt unasked
static constexpr double SpeedLimitKt = 250;
static constexpr double FarNm = 200; ///< stands for a goal that asks for no slowing down

double AirNavigation::TrueHeadingFor(const FlightState& state, int magnetic) const noexcept
{
    // The receiver takes the variation at the position that it reads off the message, so the pilot does the same.
    const double lat = LatitudeFromWire(LatitudeToWire(state.Position.Lat));
    const double lon = LongitudeFromWire(LongitudeToWire(state.Position.Lon));
    return TrueFromMagnetic(*m_grid, magnetic, {lat, lon});
}

double AirNavigation::OwnSpeedKt(const FlightState& state, double altitudeFt, double leftNm) const noexcept
{
    constexpr double SlowingNm = 6; // before the approach begins
    constexpr double SlowingFt = 4000;
    if (leftNm < Aircraft().FinalNm + SlowingNm)
        return Aircraft().PatternKt;
    const bool descending = state.VerticalFpm < -300;
    if (altitudeFt < SpeedLimitFt || (descending && altitudeFt < SpeedLimitFt + SlowingFt))
        return std::min(Aircraft().CruiseKt, SpeedLimitKt);
    return Aircraft().CruiseKt;
}

/// Climb to the cruise altitude, and down from it so that the platform of the approach is reached before its gate.
void AirNavigation::FlyOwnProfile(const FlightState& state, const Journey& journey, FlightTarget& target,
                                  double leftNm) const
{
    constexpr double FeetPerDescentNm = 250;
    constexpr double LevelNm = 3;
    target.AltitudeFt = journey.CruiseFt;
    const PracticeRunway* runway =
        journey.Destination != nullptr ? journey.Destination->RunwayInUse(Aircraft().RunwayFt) : nullptr;
    if (runway != nullptr && (!journey.WayPoint || journey.Enters)) {
        const double downNm = std::max(0.0, leftNm - Aircraft().FinalNm - LevelNm);
        target.AltitudeFt =
            std::min(target.AltitudeFt, Approach::PlatformFt(*runway, Aircraft()) + downNm * FeetPerDescentNm);
    }
    target.SpeedKt = OwnSpeedKt(state, std::max(state.AltitudeFt, target.AltitudeFt - 1), leftNm);
}

/// Of the way on which it may come down.
double AirNavigation::ProfileNm(const FlightState& state, const Journey& journey)
{
    if (!journey.WayPoint && journey.Destination != nullptr)
        return RangeNm(state.Position, journey.Destination->Position);
    if (!journey.Enters || !journey.WayPoint || journey.Destination == nullptr)
        return FarNm;
    return RangeNm(state.Position, *journey.WayPoint) + RangeNm(*journey.WayPoint, journey.Destination->Position);
}

void AirNavigation::BeginEnRoute(FlightState& state, const Journey& journey) const
{
    const bool direct = journey.Destination != nullptr && !journey.Enters;
    const LatLon goal = direct ? journey.Destination->Position : *journey.WayPoint;
    FlightTarget target{.AltitudeFt = journey.CruiseFt};
    FlyOwnProfile(state, journey, target, direct ? RangeNm(state.Position, goal) : ProfileNm(state, journey));
    state.HeadingDeg = CourseTo(state.Position, goal);
    state.AltitudeFt = target.AltitudeFt;
    state.SpeedKt = target.SpeedKt;
    state.OnGround = false;
}

void AirNavigation::BeginClimbOut(const PracticeRunway& runway) noexcept
{
    constexpr double TurnHeightFt = 700;
    m_steering = UpwindLeg{runway.Course, runway.ElevationFt + TurnHeightFt};
}

void AirNavigation::SteerRoute(const FlightState& state, Journey& journey, FlightTarget& target, PracticeRandom& random)
{
    constexpr double ReachedNm = 1.5;
    if (journey.WayPoint && RangeNm(state.Position, *journey.WayPoint) < ReachedNm) {
        journey.WayPoint.reset();
        journey.Enters = false;
    }
    if (!journey.WayPoint && journey.Destination == nullptr)
        journey.WayPoint = m_planner.RandomPlace(10, 60, random);
    const LatLon goal =
        journey.WayPoint || journey.Destination == nullptr ? *journey.WayPoint : journey.Destination->Position;
    const double leftNm = RangeNm(state.Position, goal);
    target.HeadingDeg = CourseTo(state.Position, goal);
    target.IsTrack = true;
    FlyOwnProfile(state, journey, target, ProfileNm(state, journey));
    constexpr double BeginsNm = 8; // before the length of its final
    const PracticeRunway* runway = journey.WayPoint || journey.Destination == nullptr
                                       ? nullptr
                                       : journey.Destination->RunwayInUse(Aircraft().RunwayFt);
    constexpr double OverheadNm = 3;
    if (runway != nullptr && !m_askedFt && leftNm < Aircraft().FinalNm + BeginsNm)
        m_approach.emplace(*runway, state, Aircraft());
    else if (m_askedFt && !journey.WayPoint && leftNm < OverheadNm) { // nobody goes down from an altitude unasked
        m_call = "over " + journey.Destination->Icao + ", holding, request approach";
        m_steering = Hold(state);
    }
}

void AirNavigation::SteerHeading(const FlightState& state, OnHeading& heading, FlightTarget& target) const
{
    constexpr double OnItDeg = 0.5;
    target.HeadingDeg = TrueHeadingFor(state, heading.Magnetic);
    target.Turn = heading.Reached ? TurnWay::Shorter : heading.Turn;
    heading.Reached = heading.Reached || std::abs(TurnTo(state.HeadingDeg, target.HeadingDeg)) < OnItDeg;
}

void AirNavigation::SteerDirect(const FlightState& state, const DirectTo& direct, FlightTarget& target)
{
    target.HeadingDeg = CourseTo(state.Position, direct.Place);
    target.IsTrack = true;
    if (RangeNm(state.Position, direct.Place) < TurnRadiusNm(state.SpeedKt) / 2) {
        m_call = "over " + direct.Name;
        if (direct.Then)
            m_steering = Hold(*direct.Then);
        else
            m_steering = Route{};
    }
}

void AirNavigation::SteerTurn(const FlightState& state, Turning& turning, FlightTarget& target)
{
    constexpr double AheadDeg = 90;
    const double turned = TurnTo(turning.LastDeg, state.HeadingDeg) * (turning.Way == TurnWay::Left ? -1 : 1);
    turning.LeftDeg -= turned;
    turning.LastDeg = state.HeadingDeg;
    if (turning.LeftDeg < AheadDeg) {
        m_steering = OnHeading{turning.Magnetic, turning.Way};
        target.HeadingDeg = TrueHeadingFor(state, turning.Magnetic);
        return;
    }
    target.HeadingDeg = WrapCourse(state.HeadingDeg + (turning.Way == TurnWay::Left ? -AheadDeg : AheadDeg));
    target.Turn = turning.Way;
}

void AirNavigation::Steer(const FlightState& state, Journey& journey, FlightTarget& target, PracticeRandom& random)
{
    if (const auto* upwind = std::get_if<UpwindLeg>(&m_steering)) {
        target.HeadingDeg = upwind->Course;
        target.IsTrack = true;
        target.SpeedKt = Aircraft().ClimbKt;
        constexpr double AsGoodAsThereFt = 20;
        const double untilFt = std::min(upwind->UntilFt, m_askedFt.value_or(journey.CruiseFt) - AsGoodAsThereFt);
        if (state.AltitudeFt > untilFt)
            m_steering = Route{};
    } else if (auto* heading = std::get_if<OnHeading>(&m_steering)) {
        SteerHeading(state, *heading, target);
    } else if (auto* turning = std::get_if<Turning>(&m_steering)) {
        SteerTurn(state, *turning, target);
    } else if (const auto* direct = std::get_if<DirectTo>(&m_steering)) {
        SteerDirect(state, *direct, target);
    } else if (auto* hold = std::get_if<Hold>(&m_steering)) {
        hold->Guide(state, target);
    } else if (!m_approach) {
        SteerRoute(state, journey, target, random);
    }
}

void AirNavigation::LeaveApproach() noexcept
{
    m_approach.reset();
    m_askedToLand = false;
    m_level = false;
    m_mayLand = true;
}

/// Whoever is taken off an approach stays at its altitude until told otherwise, but not below the approach's beginning.
void AirNavigation::LeaveApproachLevel(const FlightState& state)
{
    constexpr double WholeHundreds = 100;
    if (m_approach && !m_askedFt)
        m_askedFt = std::max(Approach::PlatformFt(m_approach->Runway(), Aircraft()),
                             RoundHalfEven(state.AltitudeFt / WholeHundreds) * WholeHundreds);
    LeaveApproach();
}

/// On the way to the final: down along the profile, so that its platform is reached shortly before, and never up but to
/// the platform.
double AirNavigation::ApproachFt(const FlightState& state) const noexcept
{
    constexpr double FeetPerDescentNm = 300;
    constexpr double LevelNm = 2;
    const double platform = Approach::PlatformFt(m_approach->Runway(), Aircraft());
    const double downNm = std::max(0.0, m_approach->LeftNm(state) - LevelNm);
    return std::max(platform, std::min(state.AltitudeFt, platform + downNm * FeetPerDescentNm));
}

void AirNavigation::StartGoAround(Journey& journey)
{
    constexpr double GoAroundFt = 1500;
    constexpr double WholeHundreds = 100;
    const PracticeRunway& runway = m_approach->Runway();
    const double missedFt = RoundHalfEven((runway.ElevationFt + 2 * GoAroundFt) / WholeHundreds) * WholeHundreds;
    m_steering = UpwindLeg{runway.Course, runway.ElevationFt + GoAroundFt};
    journey.CruiseFt = std::max(journey.CruiseFt, runway.ElevationFt + 2 * GoAroundFt);
    m_approach.reset();
    m_askedFt.reset();
    m_askedKt.reset();
    if (m_waitsForWord) { // the missed approach as published, then over the field until it is cleared again
        m_askedFt = missedFt;
        m_call += ", climbing " + AltitudeText(RoundTo<std::int32_t>(missedFt));
    }
    m_askedToLand = false;
    m_mayLand = true;
}

/// Whether it must be known now if it may land.
bool AirNavigation::IsAtDecision(const FlightState& state) const noexcept
{
    constexpr double LatestNm = 0.7;
    return IsEstablished() && RangeNm(state.Position, m_approach->Runway().Threshold) < LatestNm;
}

void AirNavigation::SeeRunway(const FlightState& state, const GroundView& view) noexcept
{
    // Over the threshold nobody goes around for somebody at the far end any more.
    const bool looks =
        IsAtDecision(state) &&
        OffsetFromLine(m_approach->Runway().Threshold, m_approach->Runway().Course, state.Position).OutNm > 0.1;
    m_runwayOccupied = looks && view.IsOccupied(m_approach->Runway());
}

const PracticeRunway* AirNavigation::GuideApproach(const FlightState& state, Journey& journey, FlightTarget& target)
{
    const PracticeRunway& runway = m_approach->Runway();
    const bool refused = (!m_mayLand || m_runwayOccupied) && IsAtDecision(state);
    switch (refused ? ApproachEvent::GoAround : m_approach->Guide(state, target, m_askedKt.value_or(0), !m_level)) {
    case ApproachEvent::Flying: break;
    case ApproachEvent::Established:
        if (m_askedToLand)
            m_call = "established, runway " + runway.Name;
        m_steering = Route{};
        break;
    case ApproachEvent::GoAround:
        if (m_level) { // the localizer ends; its altitude was the controller's
            m_call = "at the end of the localizer, runway heading";
            BreakOff(state, *m_askedFt);
            break;
        }
        m_call = std::string(m_runwayOccupied ? "traffic on the runway, " : "") + "going around, runway " + runway.Name;
        StartGoAround(journey);
        break;
    case ApproachEvent::Touchdown:
        journey.Airport = journey.Destination;
        LeaveApproach();
        m_askedFt.reset();
        m_askedKt.reset();
        return &runway;
    }
    return nullptr;
}

const PracticeRunway* AirNavigation::Step(FlightState& state, Journey& journey, PracticeRandom& random)
{
    FlightTarget target{.HeadingDeg = state.HeadingDeg, .AltitudeFt = journey.CruiseFt};
    target.SpeedKt = OwnSpeedKt(state, state.AltitudeFt, FarNm);
    Steer(state, journey, target, random);
    if (m_approach && !m_askedFt) {
        target.AltitudeFt = ApproachFt(state);
        target.SpeedKt = OwnSpeedKt(state, state.AltitudeFt, m_approach->LeftNm(state) + Aircraft().FinalNm);
    }
    if (m_askedFt)
        target.AltitudeFt = *m_askedFt;
    if (m_askedKt)
        target.SpeedKt = *m_askedKt;
    if (m_approach)
        if (const PracticeRunway* runway = GuideApproach(state, journey, target))
            return runway;
    FlyStep(state, target, Aircraft());
    return nullptr;
}
} // namespace corvane
