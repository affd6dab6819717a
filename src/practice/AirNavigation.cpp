#include "practice/AirNavigation.h"

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
    if (runway != nullptr && !journey.WayPoint) {
        const double downNm = std::max(0.0, leftNm - Aircraft().FinalNm - LevelNm);
        target.AltitudeFt =
            std::min(target.AltitudeFt, Approach::PlatformFt(*runway, Aircraft()) + downNm * FeetPerDescentNm);
    }
    target.SpeedKt = OwnSpeedKt(state, std::max(state.AltitudeFt, target.AltitudeFt - 1), leftNm);
}

void AirNavigation::BeginEnRoute(FlightState& state, const Journey& journey) const
{
    const LatLon goal = journey.Destination != nullptr ? journey.Destination->Position : *journey.WayPoint;
    FlightTarget target{.AltitudeFt = journey.CruiseFt};
    FlyOwnProfile(state, journey, target, RangeNm(state.Position, goal));
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
    if (journey.WayPoint && RangeNm(state.Position, *journey.WayPoint) < ReachedNm)
        journey.WayPoint.reset();
    if (!journey.WayPoint && journey.Destination == nullptr)
        journey.WayPoint = m_planner.RandomPlace(10, 60, random);
    const LatLon goal =
        journey.WayPoint || journey.Destination == nullptr ? *journey.WayPoint : journey.Destination->Position;
    const double leftNm = RangeNm(state.Position, goal);
    target.HeadingDeg = CourseTo(state.Position, goal);
    FlyOwnProfile(state, journey, target, journey.WayPoint ? FarNm : leftNm);
    constexpr double BeginsNm = 8; // before the length of its final
    const PracticeRunway* runway = journey.WayPoint || journey.Destination == nullptr
                                       ? nullptr
                                       : journey.Destination->RunwayInUse(Aircraft().RunwayFt);
    if (runway != nullptr && leftNm < Aircraft().FinalNm + BeginsNm)
        m_approach.emplace(*runway, state, Aircraft());
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
    if (RangeNm(state.Position, direct.Place) < TurnRadiusNm(state.SpeedKt) / 2) {
        m_call = "over " + direct.Name;
        m_steering = Route{};
    }
}

void AirNavigation::Steer(const FlightState& state, Journey& journey, FlightTarget& target, PracticeRandom& random)
{
    if (const auto* upwind = std::get_if<UpwindLeg>(&m_steering)) {
        target.HeadingDeg = upwind->Course;
        target.SpeedKt = Aircraft().ClimbKt;
        constexpr double AsGoodAsThereFt = 20;
        const double untilFt = std::min(upwind->UntilFt, m_askedFt.value_or(journey.CruiseFt) - AsGoodAsThereFt);
        if (state.AltitudeFt > untilFt)
            m_steering = Route{};
    } else if (auto* heading = std::get_if<OnHeading>(&m_steering)) {
        SteerHeading(state, *heading, target);
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
}

void AirNavigation::StartGoAround(Journey& journey)
{
    constexpr double GoAroundFt = 1500;
    const PracticeRunway& runway = m_approach->Runway();
    m_steering = UpwindLeg{runway.Course, runway.ElevationFt + GoAroundFt};
    journey.CruiseFt = std::max(journey.CruiseFt, runway.ElevationFt + 2 * GoAroundFt);
    m_approach.reset();
    m_askedFt.reset();
    m_askedKt.reset();
}

const PracticeRunway* AirNavigation::GuideApproach(const FlightState& state, Journey& journey, FlightTarget& target)
{
    const PracticeRunway& runway = m_approach->Runway();
    switch (m_approach->Guide(state, target, m_askedKt.value_or(0))) {
    case ApproachEvent::Flying: break;
    case ApproachEvent::Established:
        if (m_askedToLand)
            m_call = "established, runway " + runway.Name;
        m_steering = Route{};
        break;
    case ApproachEvent::GoAround:
        m_call = "going around, runway " + runway.Name;
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
    if (m_approach && !m_askedFt)
        target.AltitudeFt = Approach::PlatformFt(m_approach->Runway(), Aircraft());
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

void AirNavigation::FlyHeading(int magnetic, TurnWay way)
{
    m_steering = OnHeading{magnetic, way};
    // A heading given before the localizer leads to it; one given on the localizer leads away.
    if (m_approach && m_askedToLand && !m_approach->IsEstablished())
        m_approach.emplace(m_approach->Runway(), Aircraft());
    else
        LeaveApproach();
}

void AirNavigation::FlyDirect(const LatLon& place, std::string name)
{
    LeaveApproach();
    m_steering = DirectTo{place, std::move(name)};
}

void AirNavigation::FlyApproach(const PracticeRunway& runway, const FlightState& state)
{
    m_askedToLand = true;
    const auto* heading = std::get_if<OnHeading>(&m_steering);
    const bool leadsThere =
        heading != nullptr &&
        Approach::HeadingMeetsFinal(runway, state, TrueHeadingFor(state, heading->Magnetic), Aircraft());
    if (leadsThere) {
        m_approach.emplace(runway, Aircraft());
        return;
    }
    m_steering = Route{};
    m_approach.emplace(runway, state, Aircraft());
}

void AirNavigation::HoldHere(const FlightState& state) noexcept
{
    LeaveApproach();
    m_steering = Hold(state);
}

void AirNavigation::ResumeOwn() noexcept
{
    m_askedFt.reset();
    m_askedKt.reset();
    LeaveApproach();
    m_steering = Route{};
}

double AirNavigation::ReportedHeading(const FlightState& state) const noexcept
{
    const auto* heading = std::get_if<OnHeading>(&m_steering);
    if (heading == nullptr || !heading->Reached || (m_approach && m_approach->IsEstablished()))
        return state.HeadingDeg;
    // The variation changes by whole degrees from one cell of the grid to the next: the compass follows at once, the
    // aircraft within a second or two.
    return TrueHeadingFor(state, heading->Magnetic);
}
} // namespace corvane
