#include "practice/ScenarioDirector.h"

#include "core/NumberText.h"
#include "core/Rounding.h"
#include "practice/PilotTalk.h"

#include <utility>

namespace corvane {
Pilot ScenarioDirector::PilotOf(const ScenarioAircraft& aircraft, PracticeRandom& random) const
{
    const PracticeAirport* main = m_scene->MainAirport(ClassOf(aircraft.Kind).RunwayFt);
    const auto airport = [&](const std::string& icao) { return icao.empty() ? main : m_scene->FindAirport(icao); };
    PilotStart start;
    start.Airport = aircraft.OnGround ? airport(aircraft.From) : nullptr;
    if (!aircraft.To.empty() || !aircraft.OnGround)
        start.Destination = airport(aircraft.To);
    const LatLon middle = main != nullptr ? main->Position : m_scene->Center();
    start.Position = Along(middle, aircraft.BearingDeg, aircraft.DistanceNm);
    start.AltitudeFt = aircraft.AltitudeFt;
    start.FuelMin = aircraft.FuelMin;
    if (const LatLon* over = aircraft.Over.empty() ? nullptr : m_scene->FindPlace(aircraft.Over, start.Position))
        start.Over = *over;
    start.AsksFirst = m_scenario.PilotsAsk;
    return {*m_scene, *m_grid, aircraft.Kind, start, random};
}

/// "Wind 240 at 15 knots, landing 16R, departing 16L": the direction is magnetic, as controllers say it.
std::string ScenarioDirector::WeatherText() const
{
    const PracticeWind& wind = m_scene->Wind();
    const int from =
        (MagneticFromTrue(*m_grid, RoundTo<std::int32_t>(wind.FromDeg) % 360, m_scene->Center()) + 359) % 360 + 1;
    std::string text =
        "Wind " + HeadingText(from) + " at " + NumberText(RoundTo<std::int32_t>(wind.SpeedKt)) + " knots";
    if (const PracticeAirport* main = m_scene->MainAirport(0)) {
        const double lengthFt = ClassOf(AircraftKind::PistonSingle).RunwayFt;
        if (const PracticeRunway* runway = main->RunwayInUse(lengthFt))
            text += ", landing " + runway->Name;
        if (const PracticeRunway* runway = main->TakeOffRunway(lengthFt))
            text += ", departing " + runway->Name;
    }
    return text;
}

void ScenarioDirector::LetJoin(PracticeCrew& crew, PracticeRandom& random, const Join& join)
{
    for (std::size_t i = 0; i < m_scenario.Aircraft.size(); ++i) {
        const ScenarioAircraft& aircraft = m_scenario.Aircraft[i];
        if (m_joined[i] || m_timeS < aircraft.AtS)
            continue;
        m_joined[i] = true;
        std::string name = aircraft.Callsign;
        if (name.empty())
            name = TrafficMaker::NewCallsign(aircraft.Kind, crew, random);
        m_parts[name] = Part{.Aircraft = i};
        join(std::move(name), PilotOf(aircraft, random));
    }
}

/// The first call, and requests when they are forgotten.
void ScenarioDirector::Call(PracticeMember& member, Part& part)
{
    constexpr double PatienceS = 90;
    Pilot& pilot = *member.Flying;
    part.WaitedS += StepS;
    const std::string request = pilot.Request();
    const bool first = !std::exchange(part.Called, true);
    if (first)
        member.Say(pilot.FirstCall() + ", " + member.Name());
    else if (!request.empty() && part.WaitedS >= PatienceS)
        member.Say(request + ", " + member.Name());
    else if (!request.empty())
        return;
    part.WaitedS = 0;
}

void ScenarioDirector::Direct(PracticeMember& member, Part& part) const
{
    const ScenarioAircraft& aircraft = m_scenario.Aircraft[part.Aircraft];
    member.Silent =
        aircraft.SilentAtS && m_timeS >= *aircraft.SilentAtS && m_timeS < *aircraft.SilentAtS + aircraft.SilentForS;
    member.ReadBackErrors = aircraft.ReadBackErrors;
    if (!member.Silent)
        Call(member, part);
    if (aircraft.EmergencyAtS && m_timeS >= *aircraft.EmergencyAtS && !std::exchange(part.Emergency, true))
        member.Say("mayday, mayday, mayday, " + aircraft.Emergency + ", request immediate landing, " + member.Name());
    if (member.Flying->IsDown() || (aircraft.LeavesAtS && m_timeS >= *aircraft.LeavesAtS))
        member.Leave();
}

void ScenarioDirector::Step(PracticeCrew& crew, PracticeRandom& random, const Join& join)
{
    LetJoin(crew, random, join);
    for (const auto& member : crew.Members()) {
        const auto part = m_parts.find(member->Name());
        if (part != m_parts.end() && member->IsPilot() && member->Admitted)
            Direct(*member, part->second);
    }
    PracticeMember* const host = crew.Host();
    constexpr double WeatherAtS = 15;
    if (host != nullptr && m_timeS == WeatherAtS && m_scene->Wind().Blows())
        host->Say(WeatherText());
    for (; m_hints < m_scenario.Hints.size() && m_timeS >= m_scenario.Hints[m_hints].AtS; ++m_hints)
        if (host != nullptr)
            host->Say(m_scenario.Hints[m_hints].Text);
    if (host != nullptr && m_scenario.HostLeavesAtS && m_timeS >= *m_scenario.HostLeavesAtS) {
        m_scenario.HostLeavesAtS.reset();
        host->SendHostLeft();
        host->Leave();
    }
    m_timeS += StepS;
}
} // namespace corvane
