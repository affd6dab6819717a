#include "practice/GroundObedience.h"

#include "practice/ReadBack.h"
#include "practice/TaxiRoute.h"

#include <utility>

namespace corvane {
using Kind = InstructionKind;

ObeyAnswer GroundObedience::Obey(const Instruction& instruction)
{
    GroundRun& ground = m_pilot.Orders.Ground;
    switch (instruction.Kind) {
    case Kind::Resume: ground.Continue(); return std::string("continuing");
    case Kind::Pushback:
        if (ground.Phase() != PilotPhase::Parked)
            return ObeyRefusal{"we are taxiing"};
        ground.Pushback();
        break;
    case Kind::Taxi: return ObeyTaxi(instruction);
    case Kind::TaxiIn:
        if (!m_pilot.Orders.Ground.IsOnWayIn())
            return ObeyRefusal{"we are going out"};
        if (!instruction.Via.empty())
            return ObeyRefusal{"we do not know the taxiways"};
        ground.Continue();
        break;
    case Kind::Cross: ground.Continue(); break;
    case Kind::HoldShort:
    case Kind::LineUp:
    case Kind::TakeOff: return ObeyRunwayEntry(instruction);
    default: return ObeyRefusal{"we are on the ground"};
    }
    return ReadBackOf(instruction);
}

ObeyAnswer GroundObedience::ObeyTaxi(const Instruction& instruction)
{
    GroundRun& ground = m_pilot.Orders.Ground;
    const PracticeAirport* airport = m_pilot.Orders.Trip.Airport;
    if (ground.Phase() != PilotPhase::Parked && ground.Phase() != PilotPhase::TaxiOut)
        return ObeyRefusal{m_pilot.Orders.Ground.IsOnWayIn() ? "we have landed" : "we are on the runway"};
    const PracticeRunway* runway = instruction.Name.empty() ? airport->TakeOffRunway(m_pilot.Aircraft.RunwayFt)
                                                            : airport->FindRunway(instruction.Name);
    if (runway == nullptr)
        return ObeyRefusal{"no runway " + instruction.Name + " at " + airport->Icao};
    if (runway->LengthFt < m_pilot.Aircraft.RunwayFt)
        return ObeyRefusal{"runway " + runway->Name + " is too short for us"};
    if (instruction.Via.empty())
        ground.TaxiTo(*runway, m_pilot.State, *airport);
    else if (NamedRoute route = RouteVia(*airport, *runway, m_pilot.State.Position, instruction.Via); route.Way.empty())
        return ObeyRefusal{std::move(route.WhyNot)};
    else
        ground.TaxiOn(*runway, std::move(route.Way));
    Instruction named = instruction;
    named.Name = runway->Name;
    return ReadBackOf(named);
}

ObeyAnswer GroundObedience::ObeyRunwayEntry(const Instruction& instruction)
{
    GroundRun& ground = m_pilot.Orders.Ground;
    if (m_pilot.Orders.Ground.IsOnWayIn())
        return ObeyRefusal{"we have landed"};
    if (ground.Phase() == PilotPhase::TakeOff)
        return ObeyRefusal{"we are rolling"};
    const PracticeRunway* expected = ground.Runway();
    if (expected != nullptr && !instruction.Name.empty() && !expected->IsNamed(instruction.Name) &&
        instruction.Kind != Kind::HoldShort)
        return ObeyRefusal{"we are at runway " + expected->Name};
    if (instruction.Kind == Kind::HoldShort) {
        if (ground.Phase() == PilotPhase::LineUp)
            return ObeyRefusal{"we are on the runway"};
        ground.HoldShort();
    } else if (instruction.Kind == Kind::LineUp)
        ground.LineUpAndWait();
    else
        ground.ClearTakeOff();
    return ReadBackOf(instruction);
}
} // namespace corvane
