#include "core/NumberText.h"
#include "core/Rounding.h"
#include "practice/Pilot.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace corvane {
static std::string ThreeDigits(int degrees)
{
    std::string text = NumberText(std::int32_t{degrees});
    return text.size() < 3 ? text.insert(0, 3 - text.size(), '0') : text;
}

static std::string AltitudeText(int feet)
{
    constexpr int TransitionFt = 18000;
    constexpr int FeetPerLevel = 100;
    return feet >= TransitionFt ? "FL" + NumberText(std::int32_t{feet / FeetPerLevel}) : NumberText(std::int32_t{feet});
}

std::string Pilot::Obey(std::span<const Instruction> instructions)
{
    const Pilot before = *this;
    std::string readBack;
    for (const Instruction& instruction : instructions) {
        const Answer answer = Obey(instruction);
        if (const auto* refusal = std::get_if<Refusal>(&answer)) {
            *this = before; // a clearance is taken as a whole
            return "unable, " + refusal->Why;
        }
        if (!readBack.empty())
            readBack += ", ";
        readBack += std::get<std::string>(answer);
    }
    return readBack;
}

Pilot::Answer Pilot::Obey(const Instruction& instruction)
{
    if (instruction.Kind == InstructionKind::Say)
        return Say(instruction.What);
    if (instruction.Kind == InstructionKind::Hold)
        return ObeyHold();
    if (instruction.Kind == InstructionKind::Resume)
        return ObeyResume();
    if (m_phase != PilotPhase::Airborne)
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

Pilot::Answer Pilot::ObeyHeading(const Instruction& instruction)
{
    constexpr std::array<TurnWay, 3> Ways{TurnWay::Shorter, TurnWay::Left, TurnWay::Right};
    constexpr std::array<std::string_view, 3> Words{"heading ", "turning left heading ", "turning right heading "};
    const auto way = static_cast<std::size_t>(instruction.Turn);
    m_steering = OnHeading{instruction.Number, Ways[way]};
    // A heading given before the localizer leads to it; one given on the localizer leads away.
    if (m_approach && m_askedToLand && !m_approach->IsEstablished())
        m_approach.emplace(m_approach->Runway(), *m_aircraft);
    else {
        m_approach.reset();
        m_askedToLand = false;
    }
    return std::string(Words[way]) + ThreeDigits(instruction.Number);
}

Pilot::Answer Pilot::ObeyAltitude(const Instruction& instruction)
{
    constexpr double ClearOfGroundFt = 500;
    constexpr double SameFt = 50;
    const double change = instruction.Number - m_state.AltitudeFt;
    const std::string present = AltitudeText(RoundTo<std::int32_t>(m_state.AltitudeFt / 100) * 100);
    if (instruction.Number > m_aircraft->CeilingFt)
        return Refusal{"our ceiling is " + AltitudeText(m_aircraft->CeilingFt)};
    if (instruction.Number < FieldFt() + ClearOfGroundFt)
        return Refusal{"too close to the ground"};
    if (instruction.Change * change < -SameFt)
        return Refusal{"we are at " + present};
    m_askedFt = instruction.Number;
    const char* words = "maintaining ";
    if (std::abs(change) > SameFt)
        words = change > 0 ? "climbing " : "descending ";
    return words + AltitudeText(instruction.Number);
}

Pilot::Answer Pilot::ObeySpeed(const Instruction& instruction)
{
    const auto minimum = RoundTo<std::int32_t>(m_aircraft->MinimumKt);
    const auto maximum = RoundTo<std::int32_t>(m_aircraft->MaximumKt);
    if (instruction.Number < minimum)
        return Refusal{"our minimum speed is " + NumberText(minimum)};
    if (instruction.Number > maximum)
        return Refusal{"our maximum speed is " + NumberText(maximum)};
    m_askedKt = instruction.Number;
    return "speed " + NumberText(std::int32_t{instruction.Number});
}

Pilot::Answer Pilot::ObeyDirect(const Instruction& instruction)
{
    const LatLon* place = m_scene->FindPlace(instruction.Name, m_state.Position);
    if (place == nullptr)
        return Refusal{"we do not know " + instruction.Name};
    m_approach.reset();
    m_askedToLand = false;
    m_steering = DirectTo{*place, instruction.Name};
    return "direct " + instruction.Name;
}

/// The destination where it has that runway, else the nearest airport around that has it.
const PracticeAirport* Pilot::AirportWithRunway(std::string_view runway) const
{
    constexpr double AroundNm = 60;
    if (m_destination != nullptr && m_destination->FindRunway(runway) != nullptr &&
        RangeNm(m_state.Position, m_destination->Position) < AroundNm)
        return m_destination;
    const PracticeAirport* nearest = nullptr;
    double nearestNm = AroundNm;
    for (const PracticeAirport& airport : m_scene->Airports()) {
        const double nm = RangeNm(m_state.Position, airport.Position);
        if (nm < nearestNm && airport.FindRunway(runway) != nullptr) {
            nearest = &airport;
            nearestNm = nm;
        }
    }
    return nearest;
}

Pilot::Answer Pilot::ObeyApproach(const Instruction& instruction)
{
    const PracticeAirport* airport = AirportWithRunway(instruction.Name);
    if (airport == nullptr)
        return Refusal{"no runway " + instruction.Name + " at " +
                       (m_destination != nullptr ? m_destination->Icao : std::string("any airport near us"))};
    const PracticeRunway& runway = *airport->FindRunway(instruction.Name);
    const std::string where = "runway " + runway.Name + " at " + airport->Icao;
    if (instruction.Ils && !runway.HasIls)
        return Refusal{"no ILS for " + where};
    if (runway.LengthFt < m_aircraft->RunwayFt)
        return Refusal{where + " is too short for us"};
    m_destination = airport;
    m_wayPoint.reset();
    m_askedToLand = true;
    const auto* heading = std::get_if<OnHeading>(&m_steering);
    const bool leadsThere = heading != nullptr && Approach::HeadingMeetsFinal(
                                                      runway, m_state, TrueHeadingFor(heading->Magnetic), *m_aircraft);
    if (leadsThere)
        m_approach.emplace(runway, *m_aircraft);
    else {
        m_steering = Route{};
        m_approach.emplace(runway, m_state, *m_aircraft);
    }
    return (instruction.Ils ? "cleared ILS " : "cleared approach runway ") + runway.Name;
}

Pilot::Answer Pilot::ObeyGoAround()
{
    if (!m_approach)
        return Refusal{"we are not on approach"};
    StartGoAround();
    m_askedToLand = false;
    return std::string("going around");
}

Pilot::Answer Pilot::ObeyHold()
{
    if (m_phase == PilotPhase::TakeOff || m_phase == PilotPhase::LandingRoll)
        return Refusal{"we are rolling"};
    if (m_phase != PilotPhase::Airborne) {
        m_holdPosition = true;
        return std::string("holding position");
    }
    m_approach.reset();
    m_askedToLand = false;
    m_steering = Hold(m_state);
    return std::string("holding over present position, right turns");
}

Pilot::Answer Pilot::ObeyResume()
{
    if (m_phase != PilotPhase::Airborne) {
        m_holdPosition = false;
        return std::string("continuing");
    }
    m_askedFt.reset();
    m_askedKt.reset();
    m_approach.reset();
    m_askedToLand = false;
    m_steering = Route{};
    return std::string("own navigation");
}

std::string Pilot::Say(SayWhat what) const
{
    const ReportedPosition report = Report();
    switch (what) {
    case SayWhat::Altitude: return "altitude " + NumberText(RoundTo<std::int32_t>(report.AltitudeFt));
    case SayWhat::Heading:
        return "heading " +
               ThreeDigits(MagneticFromTrue(*m_grid, report.TrueHeading, report.Position.Lat, report.Position.Lon));
    case SayWhat::Speed: return "speed " + NumberText(RoundTo<std::int32_t>(report.SpeedKt));
    case SayWhat::Position: break;
    }
    const PracticeAirport* nearest = nullptr;
    for (const PracticeAirport& airport : m_scene->Airports())
        if (nearest == nullptr ||
            RangeNm(report.Position, airport.Position) < RangeNm(report.Position, nearest->Position))
            nearest = &airport;
    if (nearest == nullptr)
        return "no airport around";
    return NumberText(RoundTo<std::int32_t>(RangeNm(report.Position, nearest->Position))) + " miles from " +
           nearest->Icao;
}
} // namespace corvane
