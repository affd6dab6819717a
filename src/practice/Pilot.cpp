#include "practice/Pilot.h"

#include "core/Rounding.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace corvane {
Pilot::Pilot(const PracticeScene& scene, const MagVarGrid& grid, AircraftKind kind, Scenario scenario,
             PracticeRandom& random)
    : m_planner(scene, ClassOf(kind)),
      m_grid(&grid),
      m_orders{
          .Trip = {}, .Ground = GroundRun(ClassOf(kind), random.Below(1000)), .Air = AirNavigation(m_planner, grid)}
{
    m_orders.Trip.Pattern = scenario == Scenario::Pattern;
    const bool fromTheGround = scenario == Scenario::Departure || scenario == Scenario::Pattern;
    if (fromTheGround)
        m_orders.Trip.Airport = m_planner.PickAirport(random);
    if (m_orders.Trip.Airport != nullptr)
        BeginParked(random);
    else
        BeginAirborne(scenario, random);
}

Pilot::Pilot(const PracticeScene& scene, const MagVarGrid& grid, AircraftKind kind, const PilotStart& start,
             PracticeRandom& random)
    : m_planner(scene, ClassOf(kind)),
      m_grid(&grid),
      m_orders{
          .Trip = {}, .Ground = GroundRun(ClassOf(kind), random.Below(1000)), .Air = AirNavigation(m_planner, grid)}
{
    Journey& trip = m_orders.Trip;
    trip.Airport = start.Airport;
    if (start.Airport != nullptr)
        BeginParked(random);
    else {
        m_orders.Ground.BeginAirborne();
        m_planner.Plan(trip, nullptr, random);
    }
    if (start.Destination != nullptr) {
        trip.Destination = start.Destination;
        if (start.Destination != start.Airport)
            trip.WayPoint.reset();
    }
    if (start.Over && trip.Destination != nullptr) {
        trip.WayPoint = *start.Over;
        trip.Enters = true;
    }
    if (start.AltitudeFt && *start.AltitudeFt <= Aircraft().CeilingFt)
        trip.CruiseFt = *start.AltitudeFt;
    if (start.AsksFirst) {
        m_orders.Ground.AskFirst();
        m_orders.Air.WaitForWord();
    }
    m_state.FuelMin = start.FuelMin;
    if (start.Airport != nullptr)
        return;
    m_state.Position = start.Position;
    m_orders.Air.BeginEnRoute(m_state, trip);
    if (start.AltitudeFt && *start.AltitudeFt <= Aircraft().CeilingFt) {
        m_state.AltitudeFt = *start.AltitudeFt;
        if (start.AsksFirst)
            m_orders.Air.AskAltitude(*start.AltitudeFt); // as the controller before cleared it
    }
}

std::string Pilot::FirstCall() const
{
    const std::string where = PositionText(Report(), m_planner.Scene());
    if (Phase() != PilotPhase::Airborne)
        return "hello, at the stand, request pushback and taxi";
    const std::string wish = Destination() != nullptr ? ", landing " + Destination()->Icao : std::string();
    return "hello, " + where + ", " + PresentAltitudeText(m_state.AltitudeFt) + wish;
}

std::string Pilot::Request() const
{
    const GroundRun& ground = m_orders.Ground;
    if (m_orders.Handed)
        return {};
    if (ground.WaitsAtStand())
        return "request taxi";
    if (ground.WaitsAtRunway())
        return "holding short runway " + ground.Runway()->Name + ", ready for departure";
    return {};
}

void Pilot::BeginParked(PracticeRandom& random)
{
    constexpr double LongestFirstWaitS = 90;
    m_orders.Ground.BeginParked(m_state, *m_orders.Trip.Airport, std::floor(random.Between(0, 360)));
    m_orders.Ground.Wait(random.Between(5, LongestFirstWaitS));
    m_planner.Plan(m_orders.Trip, m_orders.Trip.Airport, random);
}

void Pilot::StandApart(const GroundView& view)
{
    if (Phase() == PilotPhase::Parked && m_orders.Trip.Airport != nullptr)
        m_orders.Ground.FindFreeStand(m_state, *m_orders.Trip.Airport, view);
}

void Pilot::BeginAirborne(Scenario scenario, PracticeRandom& random)
{
    m_orders.Ground.BeginAirborne();
    m_planner.Plan(m_orders.Trip, nullptr, random);
    const PracticeAirport* destination = m_orders.Trip.Destination;
    const bool arrival = scenario == Scenario::Arrival && destination != nullptr;
    const LatLon around = arrival ? destination->Position : m_planner.Scene().Center();
    const double distanceNm = arrival ? random.Between(25, 55) : random.Between(10, 70);
    m_state.Position = Along(around, random.Between(0, 360), distanceNm);
    if (const LatLon* entry = arrival ? m_planner.PickEntry(*destination, random) : nullptr) {
        constexpr double AsideDeg = 25; // they come from where the way over the navaid leads on
        const double from = CourseTo(destination->Position, *entry) + random.Between(-AsideDeg, AsideDeg);
        m_state.Position = Along(*entry, from, distanceNm - 20);
        m_orders.Trip.WayPoint = *entry;
        m_orders.Trip.Enters = true;
    }
    m_orders.Air.BeginEnRoute(m_state, m_orders.Trip);
}

/// The engines run from the stand to the stand.
void Pilot::BurnFuel()
{
    if (!m_state.FuelMin || Phase() == PilotPhase::Parked)
        return;
    const double before = *m_state.FuelMin;
    const double now = std::max(0.0, before - StepS / 60);
    m_state.FuelMin = now;
    constexpr double MinimumMin = 30;
    constexpr double EmergencyMin = 10;
    const auto falls = [&](double minutes) { return before > minutes && now <= minutes; };
    if (falls(MinimumMin))
        m_call = "minimum fuel, 30 minutes";
    else if (falls(EmergencyMin))
        m_call = "mayday fuel, 10 minutes, request immediate landing";
    else if (falls(0) && Phase() == PilotPhase::Airborne)
        m_call = "mayday, mayday, mayday, we are out of fuel";
}

/// Whoever is on the final already comes in without the engines.
bool Pilot::Glides() const noexcept
{
    return m_state.FuelMin && *m_state.FuelMin <= 0 && !m_orders.Air.IsEstablished();
}

void Pilot::Glide()
{
    constexpr double GlideFpm = -900;
    FlyStep(m_state,
            {.HeadingDeg = m_state.HeadingDeg,
             .AltitudeFt = m_orders.Trip.FieldFt(),
             .SpeedKt = Aircraft().PatternKt,
             .VerticalFpm = GlideFpm},
            Aircraft());
    m_isDown = m_state.AltitudeFt <= m_orders.Trip.FieldFt();
}

void Pilot::Step(PracticeRandom& random, const GroundView& view)
{
    Journey& trip = m_orders.Trip;
    m_state.Wind = m_planner.Scene().Wind();
    BurnFuel();
    if (Phase() == PilotPhase::Airborne && Glides()) {
        Glide();
        return;
    }
    if (!m_orders.Pending.empty())
        m_call = Obedience(Situation()).ObeyPending();
    if (Phase() == PilotPhase::Airborne) {
        m_orders.Air.SeeRunway(m_state, view);
        if (const PracticeRunway* runway = m_orders.Air.Step(m_state, trip, random))
            m_orders.Ground.Touchdown(m_state, *runway);
        return;
    }
    m_orders.Ground.Step(m_state, trip, view);
    if (Phase() == PilotPhase::Airborne)
        m_orders.Air.BeginClimbOut(*m_orders.Ground.Runway());
    if (Phase() == PilotPhase::Parked && trip.Destination == nullptr) {
        constexpr double TurnaroundS = 180;
        m_orders.Ground.Wait(random.Between(TurnaroundS / 3, TurnaroundS * 2));
        m_planner.Plan(trip, trip.Airport, random);
    }
}

/// Takes back the last instruction as far as it has not been carried out.
std::string Pilot::Disregard()
{
    if (!m_before || m_before->Ground.Phase() != Phase())
        return "unable, there is nothing to disregard";
    PilotOrders before = *std::exchange(m_before, std::nullopt);
    if (Phase() == PilotPhase::Airborne) // on the ground what is under way goes on; only what waits is dropped
        m_orders = std::move(before);
    else
        m_orders.Pending = std::move(before.Pending);
    return "disregarding";
}

std::string Pilot::Obey(std::span<const Instruction> instructions)
{
    if (instructions.size() == 1 && instructions.front().Kind == InstructionKind::Repeat)
        return m_lastSaid.empty() ? "go ahead" : m_lastSaid;
    if (instructions.size() == 1 && instructions.front().Kind == InstructionKind::Disregard)
        return m_lastSaid = Disregard();
    PilotOrders before = m_orders;
    const ObeyAnswer answer = Obedience(Situation()).Obey(instructions, Report());
    if (const auto* refusal = std::get_if<ObeyRefusal>(&answer))
        return m_lastSaid = "unable, " + refusal->Why;
    m_before = std::move(before);
    return m_lastSaid = std::get<std::string>(answer);
}

ReportedPosition Pilot::Report() const noexcept
{
    const double heading = Phase() == PilotPhase::Airborne ? m_orders.Air.ReportedHeading(m_state) : m_state.HeadingDeg;
    return {.Position = m_state.Position,
            .AltitudeFt = m_state.AltitudeFt,
            .TrueHeading = RoundTo<std::int32_t>(heading),
            .SpeedKt = m_state.Ground().SpeedKt};
}

std::optional<std::string> Pilot::TakeRadioCall()
{
    std::string call = std::exchange(m_call, {});
    if (std::string air = m_orders.Air.TakeCall(); !air.empty())
        call += (call.empty() ? "" : ", ") + air;
    if (call.empty())
        return std::nullopt;
    return m_lastSaid = std::move(call);
}
} // namespace corvane
