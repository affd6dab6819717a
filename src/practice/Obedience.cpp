#include "practice/Obedience.h"

#include "core/NumberText.h"
#include "core/Rounding.h"

#include <array>
#include <cmath>

namespace corvane {
std::string Obedience::Obey(std::span<const Instruction> instructions, const ReportedPosition& report)
{
    const PilotOrders before = m_orders;
    std::string readBack;
    for (const Instruction& instruction : instructions) {
        const Answer answer = instruction.Kind == InstructionKind::Say
                                  ? SayOf(instruction.What, report, m_scene, m_grid)
                                  : Obey(instruction);
        if (const auto* refusal = std::get_if<Refusal>(&answer)) {
            m_orders = before; // a clearance is taken as a whole
            return "unable, " + refusal->Why;
        }
        if (!readBack.empty())
            readBack += ", ";
        readBack += std::get<std::string>(answer);
    }
    return readBack;
}

Obedience::Answer Obedience::Obey(const Instruction& instruction)
{
    if (instruction.Kind == InstructionKind::Hold)
        return ObeyHold();
    if (instruction.Kind == InstructionKind::Resume)
        return ObeyResume();
    if (!IsAirborne())
        return Refusal{"we are on the ground"};
    switch (instruction.Kind) {
    case InstructionKind::Heading: return ObeyHeading(instruction);
    case InstructionKind::Altitude: return ObeyAltitude(instruction);
    case InstructionKind::Speed: return ObeySpeed(instruction);
    case InstructionKind::Direct: return ObeyDirect(instruction);
    case InstructionKind::Approach: return ObeyApproach(instruction);
    default: return ObeyGoAround();
    }
}

Obedience::Answer Obedience::ObeyHeading(const Instruction& instruction)
{
    constexpr std::array<TurnWay, 3> Ways{TurnWay::Shorter, TurnWay::Left, TurnWay::Right};
    constexpr std::array<std::string_view, 3> Words{"heading ", "turning left heading ", "turning right heading "};
    const auto way = static_cast<std::size_t>(instruction.Turn);
    m_orders.Air.FlyHeading(instruction.Number, Ways[way]);
    return std::string(Words[way]) + HeadingText(instruction.Number);
}

Obedience::Answer Obedience::ObeyAltitude(const Instruction& instruction)
{
    constexpr double ClearOfGroundFt = 500;
    constexpr double SameFt = 50;
    const double change = instruction.Number - m_state.AltitudeFt;
    const std::string present = AltitudeText(RoundTo<std::int32_t>(m_state.AltitudeFt / 100) * 100);
    if (instruction.Number > m_aircraft.CeilingFt)
        return Refusal{"our ceiling is " + AltitudeText(m_aircraft.CeilingFt)};
    if (instruction.Number < m_orders.Trip.FieldFt() + ClearOfGroundFt)
        return Refusal{"too close to the ground"};
    if (instruction.Change * change < -SameFt)
        return Refusal{"we are at " + present};
    m_orders.Air.AskAltitude(instruction.Number);
    const char* words = "maintaining ";
    if (std::abs(change) > SameFt)
        words = change > 0 ? "climbing " : "descending ";
    return words + AltitudeText(instruction.Number);
}

Obedience::Answer Obedience::ObeySpeed(const Instruction& instruction)
{
    const auto minimum = RoundTo<std::int32_t>(m_aircraft.MinimumKt);
    const auto maximum = RoundTo<std::int32_t>(m_aircraft.MaximumKt);
    if (instruction.Number < minimum)
        return Refusal{"our minimum speed is " + NumberText(minimum)};
    if (instruction.Number > maximum)
        return Refusal{"our maximum speed is " + NumberText(maximum)};
    m_orders.Air.AskSpeed(instruction.Number);
    return "speed " + NumberText(std::int32_t{instruction.Number});
}

Obedience::Answer Obedience::ObeyDirect(const Instruction& instruction)
{
    const LatLon* place = m_scene.FindPlace(instruction.Name, m_state.Position);
    if (place == nullptr)
        return Refusal{"we do not know " + instruction.Name};
    m_orders.Air.FlyDirect(*place, instruction.Name);
    return "direct " + instruction.Name;
}

/// The destination where it has that runway, else the nearest airport around that has it.
const PracticeAirport* Obedience::AirportWithRunway(std::string_view runway) const
{
    constexpr double AroundNm = 60;
    const PracticeAirport* destination = m_orders.Trip.Destination;
    if (destination != nullptr && destination->FindRunway(runway) != nullptr &&
        RangeNm(m_state.Position, destination->Position) < AroundNm)
        return destination;
    const PracticeAirport* nearest = nullptr;
    double nearestNm = AroundNm;
    for (const PracticeAirport& airport : m_scene.Airports()) {
        const double nm = RangeNm(m_state.Position, airport.Position);
        if (nm < nearestNm && airport.FindRunway(runway) != nullptr) {
            nearest = &airport;
            nearestNm = nm;
        }
    }
    return nearest;
}

Obedience::Answer Obedience::ObeyApproach(const Instruction& instruction)
{
    Journey& trip = m_orders.Trip;
    const PracticeAirport* airport = AirportWithRunway(instruction.Name);
    if (airport == nullptr)
        return Refusal{"no runway " + instruction.Name + " at " +
                       (trip.Destination != nullptr ? trip.Destination->Icao : std::string("any airport near us"))};
    const PracticeRunway& runway = *airport->FindRunway(instruction.Name);
    const std::string where = "runway " + runway.Name + " at " + airport->Icao;
    if (instruction.Ils && !runway.HasIls)
        return Refusal{"no ILS for " + where};
    if (runway.LengthFt < m_aircraft.RunwayFt)
        return Refusal{where + " is too short for us"};
    trip.Destination = airport;
    trip.WayPoint.reset();
    m_orders.Air.FlyApproach(runway, m_state);
    return (instruction.Ils ? "cleared ILS " : "cleared approach runway ") + runway.Name;
}

Obedience::Answer Obedience::ObeyGoAround()
{
    if (!m_orders.Air.OnApproach())
        return Refusal{"we are not on approach"};
    m_orders.Air.GoAround(m_orders.Trip);
    return std::string("going around");
}

Obedience::Answer Obedience::ObeyHold()
{
    if (m_orders.Ground.IsRolling())
        return Refusal{"we are rolling"};
    if (!IsAirborne()) {
        m_orders.Ground.HoldPosition();
        return std::string("holding position");
    }
    m_orders.Air.HoldHere(m_state);
    return std::string("holding over present position, right turns");
}

Obedience::Answer Obedience::ObeyResume()
{
    if (!IsAirborne()) {
        m_orders.Ground.Continue();
        return std::string("continuing");
    }
    m_orders.Air.ResumeOwn();
    return std::string("own navigation");
}
} // namespace corvane
