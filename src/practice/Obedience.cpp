#include "practice/Obedience.h"

#include "core/NumberText.h"
#include "core/Rounding.h"
#include "practice/AirObedience.h"
#include "practice/GroundObedience.h"
#include "practice/ReadBack.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace corvane {
using Kind = InstructionKind;

/// The usual words for what was heard are left out where something else is read back.
static std::string Joined(const std::vector<std::string>& readBacks)
{
    std::string text;
    for (const std::string& part : readBacks)
        if (!part.empty() && (part != "roger" || readBacks.size() == 1))
            text += (text.empty() ? "" : ", ") + part;
    return text.empty() ? "roger" : text;
}

ObeyAnswer Obedience::Obey(std::span<const Instruction> instructions, const ReportedPosition& report)
{
    m_report = report;
    m_departs = std::any_of(instructions.begin(), instructions.end(), [](const Instruction& instruction) {
        return instruction.Kind == Kind::TakeOff || instruction.Kind == Kind::LineUp ||
               instruction.Kind == Kind::Squawk || instruction.When.At == Moment::Kind::Airborne;
    });
    m_tellsAltitude = std::any_of(instructions.begin(), instructions.end(),
                                  [](const Instruction& instruction) { return instruction.Kind == Kind::Altitude; });
    const PilotOrders before = m_pilot.Orders;
    m_pilot.Orders.Handed = false; // whoever is called is back
    std::vector<std::string> readBacks;
    for (const Instruction& instruction : instructions) {
        ObeyAnswer answer = Obey(instruction);
        if (std::holds_alternative<ObeyRefusal>(answer)) {
            m_pilot.Orders = before; // a clearance is taken as a whole
            return answer;
        }
        readBacks.push_back(std::get<std::string>(std::move(answer)));
    }
    return Joined(readBacks);
}

ObeyAnswer Obedience::Obey(const Instruction& instruction)
{
    constexpr std::array AfterTakeOff{Kind::Heading,  Kind::TurnBy, Kind::RunwayHeading,
                                      Kind::Altitude, Kind::Speed,  Kind::Direct};
    const bool flown = std::find(AfterTakeOff.begin(), AfterTakeOff.end(), instruction.Kind) != AfterTakeOff.end();
    if (instruction.Kind == Kind::Report)
        return Postpone(instruction);
    if (instruction.When.IsSet())
        return Postpone(instruction);
    if (!m_pilot.Orders.IsAirborne() && m_departs && flown) {
        Instruction later = instruction;
        later.When.At = Moment::Kind::Airborne;
        if (const ObeyAnswer postponed = Postpone(later); std::holds_alternative<ObeyRefusal>(postponed))
            return postponed;
        return ReadBackOf(instruction, "climbing");
    }
    ObeyAnswer answer = ObeyNow(instruction);
    if (instruction.Until.IsSet() && std::holds_alternative<std::string>(answer))
        EndThen(instruction);
    return answer;
}

/// "until": the pilot's own way again at that moment.
void Obedience::EndThen(const Instruction& instruction)
{
    Instruction end{.Kind = Kind::Advice, .When = instruction.Until};
    switch (instruction.Kind) {
    case Kind::Speed:
    case Kind::SlowestSpeed: end.Kind = Kind::OwnSpeed; break;
    case Kind::Heading:
    case Kind::TurnBy:
    case Kind::PresentHeading:
    case Kind::RunwayHeading:
    case Kind::Hold: end.Kind = Kind::Resume; break;
    default: break; // an altitude ends with the approach, a place when it is reached
    }
    const bool approachEnds = end.Kind == Kind::Resume && instruction.Until.At == Moment::Kind::Established;
    if (end.Kind != Kind::Advice && !approachEnds)
        m_pilot.Orders.Pending.push_back({end, m_pilot.State.AltitudeFt > instruction.Until.Number});
}

ObeyAnswer Obedience::Postpone(const Instruction& instruction)
{
    constexpr std::size_t Most = 8;
    const Moment& moment = instruction.When;
    if (m_pilot.Orders.Pending.size() >= Most)
        return ObeyRefusal{"that is too much at once"};
    if (moment.At == Moment::Kind::Fix && m_pilot.Scene.FindPlace(moment.Name, m_pilot.State.Position) == nullptr)
        return ObeyRefusal{"we do not know " + moment.Name};
    if (moment.At == Moment::Kind::Airborne && m_pilot.Orders.IsAirborne())
        return ObeyRefusal{"we are airborne"};
    if (moment.At == Moment::Kind::Altitude && std::abs(moment.Number - m_pilot.State.AltitudeFt) < SameAltitudeFt)
        return ObeyRefusal{"we are at " + PresentAltitudeText(m_pilot.State.AltitudeFt)};
    m_pilot.Orders.Pending.push_back({instruction, m_pilot.State.AltitudeFt > moment.Number});
    const bool climbs = instruction.Number > m_pilot.State.AltitudeFt;
    return ReadBackOf(instruction, climbs ? "climbing" : "descending");
}

bool Obedience::HasCome(const PendingInstruction& pending) const
{
    constexpr double OverNm = 1.5;
    constexpr double SightNm = 12;
    const Moment& moment = pending.What.When;
    const bool airborne = m_pilot.Orders.IsAirborne();
    const PracticeRunway* runway = m_pilot.Orders.Air.ApproachRunway();
    const LatLon* place = nullptr;
    switch (moment.At) {
    case Moment::Kind::Altitude: return airborne && (m_pilot.State.AltitudeFt > moment.Number) != pending.WasAbove;
    case Moment::Kind::Fix:
        place = m_pilot.Scene.FindPlace(moment.Name, m_pilot.State.Position);
        return airborne && place != nullptr && RangeNm(m_pilot.State.Position, *place) < OverNm;
    case Moment::Kind::Established: return m_pilot.Orders.Air.IsEstablished();
    case Moment::Kind::Airborne: return airborne;
    case Moment::Kind::FinalMiles:
        return m_pilot.Orders.Air.IsEstablished() &&
               RangeNm(m_pilot.State.Position, runway->Threshold) <= moment.Number;
    case Moment::Kind::FieldInSight:
        return airborne && m_pilot.Orders.Trip.Destination != nullptr &&
               RangeNm(m_pilot.State.Position, m_pilot.Orders.Trip.Destination->Position) < SightNm;
    case Moment::Kind::Ready:
        return m_pilot.Orders.Ground.WaitsAtRunway() || m_pilot.Orders.Ground.Phase() == PilotPhase::LineUp;
    case Moment::Kind::None: break;
    }
    return true;
}

static std::string ReportText(const Moment& moment)
{
    switch (moment.At) {
    case Moment::Kind::Established: return "established";
    case Moment::Kind::Altitude: return "passing " + AltitudeText(moment.Number);
    case Moment::Kind::FinalMiles: return NumberText(std::int32_t{moment.Number}) + " mile final";
    case Moment::Kind::FieldInSight: return "field in sight";
    case Moment::Kind::Ready: return "ready for departure";
    default: return "over " + moment.Name;
    }
}

std::string Obedience::ObeyPending()
{
    std::vector<std::string> said;
    for (std::size_t i = 0; i < m_pilot.Orders.Pending.size();) {
        if (!HasCome(m_pilot.Orders.Pending[i])) {
            ++i;
            continue;
        }
        Instruction instruction = std::move(m_pilot.Orders.Pending[i].What);
        m_pilot.Orders.Pending.erase(m_pilot.Orders.Pending.begin() + static_cast<std::ptrdiff_t>(i));
        const Moment moment = std::exchange(instruction.When, {});
        if (instruction.Kind == Kind::Report) {
            said.push_back(ReportText(moment));
            continue;
        }
        if (const ObeyAnswer answer = Obey(instruction); const auto* refusal = std::get_if<ObeyRefusal>(&answer))
            said.push_back("unable " + ReadBackOf(instruction, "altitude") + ", " + refusal->Why);
    }
    return said.empty() ? std::string() : Joined(said);
}

ObeyAnswer Obedience::ObeyNow(const Instruction& instruction)
{
    switch (instruction.Kind) {
    case Kind::Say: return Say(instruction.What);
    case Kind::Squawk: m_pilot.Orders.Transponder = instruction.Name; break;
    case Kind::Ident:
    case Kind::Expect:
    case Kind::Advice: break;
    case Kind::Greeting: return std::string("good day");
    case Kind::Disregard: return ObeyRefusal{"there is nothing to disregard"};
    case Kind::Repeat: return std::string();
    case Kind::Contact: return ObeyContact(instruction);
    case Kind::Hold: return ObeyHold(instruction);
    case Kind::Cancel: return ObeyCancel(instruction);
    case Kind::Vacate: return ObeyVacate(instruction);
    default:
        return m_pilot.Orders.IsAirborne() ? AirObedience(m_pilot, m_tellsAltitude).Obey(instruction)
                                           : GroundObedience(m_pilot).Obey(instruction);
    }
    return ReadBackOf(instruction);
}

ObeyAnswer Obedience::ObeyHold(const Instruction& instruction)
{
    if (m_pilot.Orders.Ground.IsRolling())
        return ObeyRefusal{"we are rolling"};
    const TurnWay turns = instruction.Turn == HeadingTurn::Left ? TurnWay::Left : TurnWay::Right;
    const int minutes = instruction.Minutes > 0 ? instruction.Minutes : Hold::UsualMinutes;
    if (!m_pilot.Orders.IsAirborne()) {
        if (!instruction.Name.empty())
            return ObeyRefusal{"we are on the ground"};
        m_pilot.Orders.Ground.HoldPosition();
        return std::string("holding position");
    }
    if (instruction.Name.empty()) {
        m_pilot.Orders.Air.HoldHere(m_pilot.State, turns, minutes);
        return ReadBackOf(instruction);
    }
    const LatLon* place = m_pilot.Scene.FindPlace(instruction.Name, m_pilot.State.Position);
    if (place == nullptr)
        return ObeyRefusal{"we do not know " + instruction.Name};
    std::optional<double> inbound; // toward the fix, from the side that was said
    if (instruction.SideDeg >= 0)
        inbound = WrapCourse(instruction.SideDeg + 180.0);
    m_pilot.Orders.Air.HoldAt(m_pilot.State, *place, instruction.Name, inbound, turns, minutes);
    return ReadBackOf(instruction);
}

ObeyAnswer Obedience::ObeyCancel(const Instruction& instruction)
{
    constexpr double TooFastKt = 80;
    AirNavigation& air = m_pilot.Orders.Air;
    switch (instruction.Cancels) {
    case CancelWhat::Approach:
        if (!m_pilot.Orders.IsAirborne() || !air.OnApproach())
            return ObeyRefusal{"we are not on approach"};
        air.BreakOff(m_pilot.State, air.AskedFt().value_or(RoundHalfEven(m_pilot.State.AltitudeFt / 100) * 100));
        break;
    case CancelWhat::Landing:
        if (!m_pilot.Orders.IsAirborne() || !air.OnApproach())
            return ObeyRefusal{"we are not on approach"};
        air.ForbidLanding(true);
        break;
    case CancelWhat::TakeOff:
        if (m_pilot.Orders.IsAirborne())
            return ObeyRefusal{"we are airborne"};
        if (m_pilot.Orders.Ground.IsOnWayIn())
            return ObeyRefusal{"we have landed"};
        if (m_pilot.Orders.Ground.Phase() == PilotPhase::TakeOff && m_pilot.State.SpeedKt > TooFastKt)
            return ObeyRefusal{"we are too fast to stop"};
        m_pilot.Orders.Ground.StopTakeOff();
        break;
    }
    return ReadBackOf(instruction);
}

ObeyAnswer Obedience::ObeyVacate(const Instruction& instruction)
{
    if (!m_pilot.Orders.Air.OnApproach() && !m_pilot.Orders.Ground.IsOnWayIn())
        return ObeyRefusal{"we are not landing"};
    const bool landed = m_pilot.Orders.Ground.IsOnWayIn();
    const PracticeAirport* airport = landed ? m_pilot.Orders.Trip.Airport : m_pilot.Orders.Trip.Destination;
    const PracticeRunway* runway = landed ? m_pilot.Orders.Ground.Runway() : m_pilot.Orders.Air.ApproachRunway();
    if (!instruction.Via.empty())
        return ObeyRefusal{"we do not know the taxiways"};
    const bool left = m_pilot.Orders.Ground.StandIsLeftOf(*runway, *airport);
    if (instruction.Turn != HeadingTurn::Shorter && left != (instruction.Turn == HeadingTurn::Left))
        return ObeyRefusal{"our stand is on the other side"};
    return ReadBackOf(instruction);
}

ObeyAnswer Obedience::ObeyContact(const Instruction& instruction)
{
    m_pilot.Orders.Handed = true;
    if (m_pilot.Orders.IsAirborne() && !m_pilot.Orders.Air.OnApproach())
        m_pilot.Orders.Air.ResumeOwn();
    return instruction.Name.empty() ? std::string("good day") : ReadBackOf(instruction) + ", good day";
}

ObeyAnswer Obedience::Say(SayWhat what) const
{
    const PracticeAirport* destination = m_pilot.Orders.Trip.Destination;
    constexpr std::array<std::string_view, AircraftKindCount> Kinds{"piston single", "twin turboprop", "light jet",
                                                                    "airliner", "helicopter"};
    switch (what) {
    case SayWhat::Altitude: return "altitude " + NumberText(RoundTo<std::int32_t>(m_report.AltitudeFt));
    case SayWhat::Heading:
        return "heading " + HeadingText(MagneticFromTrue(m_pilot.Grid, m_report.TrueHeading, m_report.Position));
    case SayWhat::Speed: return "speed " + NumberText(RoundTo<std::int32_t>(m_pilot.State.SpeedKt));
    case SayWhat::Position: return PositionText(m_report, m_pilot.Scene);
    case SayWhat::Intentions:
        return destination == nullptr ? std::string("local flight, no destination") : "landing " + destination->Icao;
    case SayWhat::AircraftType: return std::string(Kinds[static_cast<std::size_t>(m_pilot.Aircraft.Kind)]);
    case SayWhat::Transponder: return "squawking " + m_pilot.Orders.Transponder;
    case SayWhat::Fuel: break;
    }
    if (!m_pilot.State.FuelMin)
        return std::string("plenty of fuel");
    return "fuel for " + NumberText(RoundTo<std::int32_t>(*m_pilot.State.FuelMin)) + " minutes";
}
} // namespace corvane
