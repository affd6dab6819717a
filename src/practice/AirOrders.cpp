#include "core/Rounding.h"
#include "practice/AirNavigation.h"

// What a controller asks of an AirNavigation.

namespace corvane {
int AirNavigation::MagneticHeading(const FlightState& state) const noexcept
{
    const int magnetic = MagneticFromTrue(*m_grid, RoundTo<std::int32_t>(ReportedHeading(state)), state.Position);
    return magnetic == 0 ? 360 : magnetic;
}

void AirNavigation::FlyHeading(const FlightState& state, int magnetic, TurnWay way)
{
    m_steering = OnHeading{magnetic, way};
    // A heading given before the localizer leads to it where it meets it; one given on the localizer leads away.
    const bool leadsThere =
        ClearedApproach() && !IsEstablished() &&
        Approach::HeadingMeetsFinal(m_approach->Runway(), state, TrueHeadingFor(state, magnetic), Aircraft());
    if (leadsThere)
        m_approach.emplace(m_approach->Runway(), Aircraft());
    else
        LeaveApproachLevel(state);
}

void AirNavigation::TurnBy(const FlightState& state, int degrees, TurnWay way)
{
    const int change = way == TurnWay::Left ? -degrees : degrees;
    const int magnetic = (MagneticHeading(state) + change + 719) % 360 + 1;
    FlyHeading(state, magnetic, way);
    constexpr int LargestPlainTurn = 170; // a larger one would be taken for the shorter way
    if (degrees > LargestPlainTurn)
        m_steering = Turning{static_cast<double>(degrees), way, magnetic, state.HeadingDeg};
}

void AirNavigation::KeepHeading(const FlightState& state)
{
    FlyHeading(state, MagneticHeading(state), TurnWay::Shorter);
}

void AirNavigation::FlyDirect(const FlightState& state, const LatLon& place, std::string name)
{
    LeaveApproachLevel(state);
    m_steering = DirectTo{place, std::move(name)};
}

void AirNavigation::FlyApproach(const PracticeRunway& runway, const FlightState& state, bool keepsAltitude)
{
    const auto* heading = std::get_if<OnHeading>(&m_steering);
    if (IsEstablished() && ApproachRunway() == &runway) {
        m_askedToLand = true;
        m_level = false;
        return;
    }
    LeaveApproach();
    m_askedToLand = true;
    const bool leadsThere =
        heading != nullptr &&
        Approach::HeadingMeetsFinal(runway, state, TrueHeadingFor(state, heading->Magnetic), Aircraft());
    if (leadsThere) {
        m_approach.emplace(runway, Aircraft());
        return;
    }
    m_steering = Route{};
    m_approach.emplace(runway, state, Aircraft());
    if (!keepsAltitude)
        m_askedFt.reset();
}

void AirNavigation::JoinLocalizer(const PracticeRunway& runway, const FlightState& state)
{
    constexpr double WholeHundreds = 100;
    FlyApproach(runway, state, true);
    m_level = true;
    if (!m_askedFt)
        m_askedFt = RoundHalfEven(state.AltitudeFt / WholeHundreds) * WholeHundreds;
}

void AirNavigation::HoldHere(const FlightState& state, TurnWay turns, int minutes)
{
    LeaveApproachLevel(state);
    m_steering = Hold(state.Position, state.HeadingDeg, turns, minutes);
}

void AirNavigation::HoldAt(const FlightState& state, const LatLon& place, std::string name,
                           std::optional<double> inbound, TurnWay turns, int minutes)
{
    FlyDirect(state, place, std::move(name));
    std::get<DirectTo>(m_steering).Then =
        Hold(place, inbound.value_or(CourseTo(state.Position, place)), turns, minutes);
}

void AirNavigation::BreakOff(const FlightState& state, double feet)
{
    KeepHeading(state);
    LeaveApproach();
    m_askedFt = feet;
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
