#include "practice/AirObedience.h"

#include "core/NumberText.h"
#include "core/Rounding.h"
#include "practice/PilotTalk.h"
#include "practice/ReadBack.h"

#include <array>
#include <cmath>

namespace corvane {
using Kind = InstructionKind;

ObeyAnswer AirObedience::ObeyHeading(const Instruction& instruction)
{
    constexpr std::array<TurnWay, 3> Ways{TurnWay::Shorter, TurnWay::Left, TurnWay::Right};
    const TurnWay way = Ways[static_cast<std::size_t>(instruction.Turn)];
    AirNavigation& air = m_pilot.Orders.Air;
    const bool cleared = air.ClearedApproach();
    if (instruction.Kind == Kind::Heading)
        air.FlyHeading(m_pilot.State, instruction.Number, way);
    else if (instruction.Kind == Kind::TurnBy)
        air.TurnBy(m_pilot.State, instruction.Number, way);
    else
        air.KeepHeading(m_pilot.State);
    return ReadBackOf(instruction) + (cleared && !air.OnApproach() ? ", leaving the approach" : "");
}

ObeyAnswer AirObedience::Obey(const Instruction& instruction)
{
    AirNavigation& air = m_pilot.Orders.Air;
    switch (instruction.Kind) {
    case Kind::Heading:
    case Kind::TurnBy:
    case Kind::PresentHeading: return ObeyHeading(instruction);
    case Kind::RunwayHeading: return ObeyRunwayHeading(instruction);
    case Kind::Altitude: return ObeyAltitude(instruction);
    case Kind::Speed: return ObeySpeed(instruction);
    case Kind::OwnSpeed: air.OwnSpeed(); break;
    case Kind::SlowestSpeed: air.AskSpeed(m_pilot.Aircraft.MinimumKt); break;
    case Kind::Direct: return ObeyDirect(instruction);
    case Kind::Localizer:
    case Kind::Approach: return ObeyApproach(instruction);
    case Kind::Land: return ObeyLand(instruction);
    case Kind::TouchAndGo: return ObeyRefusal{"we want a full stop landing"};
    case Kind::GoAround: return ObeyGoAround(instruction);
    case Kind::Resume: air.ResumeOwn(); break;
    default: return ObeyRefusal{"we are airborne"};
    }
    return ReadBackOf(instruction);
}

ObeyAnswer AirObedience::ObeyAltitude(const Instruction& instruction)
{
    constexpr double ClearOfGroundFt = 500;
    const double change = instruction.Number - m_pilot.State.AltitudeFt;
    AirNavigation& air = m_pilot.Orders.Air;
    if (instruction.Number > m_pilot.Aircraft.CeilingFt)
        return ObeyRefusal{"our ceiling is " + AltitudeText(m_pilot.Aircraft.CeilingFt)};
    if (instruction.Number < m_pilot.Orders.Trip.FieldFt() + ClearOfGroundFt)
        return ObeyRefusal{"too close to the ground"};
    if (instruction.Change * change < -SameAltitudeFt)
        return ObeyRefusal{"we are at " + PresentAltitudeText(m_pilot.State.AltitudeFt)};
    std::string_view word = "maintaining";
    if (std::abs(change) > SameAltitudeFt)
        word = change > 0 ? "climbing" : "descending";
    const std::string readBack = ReadBackOf(instruction, word);
    const bool untilThen = instruction.Until.At == Moment::Kind::Established;
    if (air.IsEstablished() && (change < -SameAltitudeFt || untilThen))
        return ObeyRefusal{"we are established on the approach"};
    // Whoever comes down on an approach cannot keep an altitude, and the approach's end is the only honest answer.
    if (air.IsEstablished() || (air.ClearedApproach() && change > SameAltitudeFt && !untilThen)) {
        air.BreakOff(m_pilot.State, instruction.Number);
        return "breaking off the approach, " + readBack;
    }
    if (air.OnApproach() && !air.ClearedApproach())
        air.ResumeRoute(); // its own plan to come down waits for a clearance now
    air.AskAltitude(instruction.Number);
    return readBack;
}

ObeyAnswer AirObedience::ObeySpeed(const Instruction& instruction)
{
    const auto minimum = RoundTo<std::int32_t>(m_pilot.Aircraft.MinimumKt);
    const auto maximum = RoundTo<std::int32_t>(m_pilot.Aircraft.MaximumKt);
    if (instruction.Number < minimum)
        return ObeyRefusal{"our minimum speed is " + NumberText(minimum)};
    if (instruction.Number > maximum)
        return ObeyRefusal{"our maximum speed is " + NumberText(maximum)};
    const PracticeRunway* runway = m_pilot.Orders.Air.ApproachRunway();
    if (m_pilot.Orders.Air.IsEstablished() && Approach::IsShortFinal(*runway, m_pilot.State, m_pilot.Aircraft))
        return ObeyRefusal{"we are on short final"};
    m_pilot.Orders.Air.AskSpeed(instruction.Number);
    return ReadBackOf(instruction);
}

ObeyAnswer AirObedience::ObeyDirect(const Instruction& instruction)
{
    const LatLon* place = m_pilot.Scene.FindPlace(instruction.Name, m_pilot.State.Position);
    if (place == nullptr)
        return ObeyRefusal{"we do not know " + instruction.Name};
    m_pilot.Orders.Air.FlyDirect(m_pilot.State, *place, instruction.Name);
    return ReadBackOf(instruction);
}

ObeyAnswer AirObedience::ObeyRunwayHeading(const Instruction& instruction)
{
    const PracticeRunway* runway = m_pilot.Orders.Air.ApproachRunway();
    if (runway == nullptr)
        runway = m_pilot.Orders.Ground.Runway();
    if (runway == nullptr)
        return ObeyRefusal{"we did not depart from a runway here"};
    const int magnetic = MagneticFromTrue(m_pilot.Grid, RoundTo<std::int32_t>(runway->Course), m_pilot.State.Position);
    m_pilot.Orders.Air.FlyHeading(m_pilot.State, magnetic == 0 ? 360 : magnetic, TurnWay::Shorter);
    return ReadBackOf(instruction);
}

/// The destination where it has that runway, else the nearest airport around that has it.
const PracticeAirport* AirObedience::AirportWithRunway(std::string_view runway) const
{
    constexpr double AroundNm = 60;
    const PracticeAirport* destination = m_pilot.Orders.Trip.Destination;
    if (destination != nullptr && destination->FindRunway(runway) != nullptr &&
        RangeNm(m_pilot.State.Position, destination->Position) < AroundNm)
        return destination;
    const PracticeAirport* nearest = nullptr;
    double nearestNm = AroundNm;
    for (const PracticeAirport& airport : m_pilot.Scene.Airports()) {
        const double nm = RangeNm(m_pilot.State.Position, airport.Position);
        if (nm < nearestNm && airport.FindRunway(runway) != nullptr) {
            nearest = &airport;
            nearestNm = nm;
        }
    }
    return nearest;
}

const PracticeRunway* AirObedience::UsualRunway(bool ils) const
{
    if (const PracticeRunway* runway = m_pilot.Orders.Air.ApproachRunway())
        return runway;
    if (m_pilot.Orders.Trip.Destination == nullptr)
        return nullptr;
    const PracticeRunway* runway = m_pilot.Orders.Trip.Destination->RunwayInUse(m_pilot.Aircraft.RunwayFt);
    return runway != nullptr && ils && !runway->HasIls ? nullptr : runway;
}

ObeyAnswer AirObedience::ObeyApproach(const Instruction& instruction)
{
    Journey& trip = m_pilot.Orders.Trip;
    Instruction named = instruction;
    if (named.Name.empty()) {
        const PracticeRunway* usual = UsualRunway(named.Ils);
        if (usual == nullptr)
            return ObeyRefusal{"which runway"};
        named.Name = usual->Name;
    }
    const PracticeAirport* airport = AirportWithRunway(named.Name);
    if (airport == nullptr)
        return ObeyRefusal{"no runway " + named.Name + " at " +
                           (trip.Destination != nullptr ? trip.Destination->Icao : std::string("any airport near us"))};
    const PracticeRunway& runway = *airport->FindRunway(named.Name);
    const std::string where = "runway " + runway.Name + " at " + airport->Icao;
    if (named.Ils && !runway.HasIls)
        return ObeyRefusal{"no ILS for " + where};
    if (runway.LengthFt < m_pilot.Aircraft.RunwayFt)
        return ObeyRefusal{where + " is too short for us"};
    trip.Destination = airport;
    trip.WayPoint.reset();
    if (named.Kind == Kind::Localizer)
        m_pilot.Orders.Air.JoinLocalizer(runway, m_pilot.State);
    else
        m_pilot.Orders.Air.FlyApproach(runway, m_pilot.State, m_tellsAltitude);
    named.Name = runway.Name;
    return ReadBackOf(named);
}

ObeyAnswer AirObedience::ObeyLand(const Instruction& instruction)
{
    const PracticeRunway* runway = m_pilot.Orders.Air.ApproachRunway();
    const bool other = runway == nullptr || (!instruction.Name.empty() && !runway->IsNamed(instruction.Name));
    if (runway != nullptr && other && m_pilot.Orders.Air.IsEstablished())
        return ObeyRefusal{"we are on final for runway " + runway->Name};
    m_pilot.Orders.Air.ForbidLanding(false);
    if (other || !m_pilot.Orders.Air.ClearedApproach()) {
        const ObeyAnswer approach = ObeyApproach(instruction);
        if (std::holds_alternative<ObeyRefusal>(approach))
            return approach;
    }
    Instruction named = instruction;
    named.Name = m_pilot.Orders.Air.ApproachRunway()->Name;
    return ReadBackOf(named);
}

ObeyAnswer AirObedience::ObeyGoAround(const Instruction& instruction)
{
    if (!m_pilot.Orders.Air.OnApproach())
        return ObeyRefusal{"we are not on approach"};
    m_pilot.Orders.Air.GoAround(m_pilot.Orders.Trip);
    return ReadBackOf(instruction);
}
} // namespace corvane
