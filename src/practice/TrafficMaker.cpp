#include "practice/TrafficMaker.h"

#include "practice/Callsigns.h"

#include <array>
#include <utility>

namespace corvane {
static AircraftKind NewKind(PracticeRandom& random)
{
    constexpr std::array<AircraftKind, 10> Mix{
        AircraftKind::Airliner,     AircraftKind::Airliner,  AircraftKind::Airliner,      AircraftKind::Airliner,
        AircraftKind::LightJet,     AircraftKind::LightJet,  AircraftKind::TwinTurboprop, AircraftKind::PistonSingle,
        AircraftKind::PistonSingle, AircraftKind::Helicopter};
    return random.Pick(std::span<const AircraftKind>(Mix));
}

std::string TrafficMaker::NewCallsign(AircraftKind kind, const PracticeCrew& crew, PracticeRandom& random)
{
    constexpr int Tries = 50;
    std::string name;
    for (int i = 0; i < Tries; ++i) {
        name = InventCallsign(kind, random);
        if (!crew.HasName(name))
            break;
    }
    return name;
}

TrafficMaker::NewPilot TrafficMaker::Departure(const PracticeCrew& crew, PracticeRandom& random) const
{
    const AircraftKind kind = NewKind(random);
    std::string callsign = NewCallsign(kind, crew, random);
    return {std::move(callsign), Pilot(*m_scene, *m_grid, kind, Scenario::Departure, random)};
}

TrafficMaker::NewPilot TrafficMaker::Any(const PracticeCrew& crew, PracticeRandom& random) const
{
    constexpr std::array<Scenario, 6> Mix{Scenario::Departure, Scenario::Arrival, Scenario::Arrival,
                                          Scenario::Cruise,    Scenario::Cruise,  Scenario::Pattern};
    const AircraftKind kind = NewKind(random);
    const Scenario scenario = random.Pick(std::span<const Scenario>(Mix));
    std::string callsign = NewCallsign(kind, crew, random);
    return {std::move(callsign), Pilot(*m_scene, *m_grid, kind, scenario, random)};
}
} // namespace corvane
