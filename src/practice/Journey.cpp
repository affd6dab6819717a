#include "practice/Journey.h"

#include "practice/Approach.h"

#include <algorithm>
#include <cmath>

namespace corvane {
double Journey::FieldFt() const noexcept
{
    const PracticeAirport* field = Destination != nullptr ? Destination : Airport;
    return field != nullptr ? field->ElevationFt : 0;
}

const PracticeAirport* JourneyPlanner::PickAirport(PracticeRandom& random) const
{
    const auto& airports = m_scene->Airports();
    const auto usable = [this](const PracticeAirport& airport) {
        return airport.RunwayInUse(m_aircraft->RunwayFt) != nullptr;
    };
    constexpr double MainAirportShare = 0.55;
    if (random.Chance(MainAirportShare))
        if (const PracticeAirport* main = m_scene->MainAirport(m_aircraft->RunwayFt))
            return main;
    constexpr int Tries = 20;
    for (int i = 0; i < Tries && !airports.empty(); ++i)
        if (const auto& airport = airports[random.Below(airports.size())]; usable(airport))
            return &airport;
    return nullptr;
}

LatLon JourneyPlanner::RandomPlace(double nearestNm, double farthestNm, PracticeRandom& random) const
{
    const double distanceNm = random.Between(nearestNm, farthestNm);
    return Along(m_scene->Center(), random.Between(0, 360), distanceNm);
}

const LatLon* JourneyPlanner::PickEntry(const PracticeAirport& destination, PracticeRandom& random) const
{
    constexpr double NearestNm = 12;
    constexpr double FarthestNm = 35;
    std::vector<const LatLon*> entries;
    for (const PracticeFix& fix : m_scene->Fixes())
        if (const double nm = RangeNm(fix.Position, destination.Position); nm >= NearestNm && nm <= FarthestNm)
            entries.push_back(&fix.Position);
    return entries.empty() ? nullptr : entries[random.Below(entries.size())];
}

void JourneyPlanner::Plan(Journey& journey, const PracticeAirport* from, PracticeRandom& random) const
{
    journey.WayPoint.reset();
    journey.Enters = false;
    journey.Destination = journey.Pattern && from != nullptr ? from : PickAirport(random);
    constexpr double WholeThousands = 1000;
    journey.CruiseFt =
        std::floor(random.Between(m_aircraft->LowCruiseFt, m_aircraft->HighCruiseFt) / WholeThousands) * WholeThousands;
    const bool roundTrip = journey.Destination == from && !journey.Pattern;
    if (journey.Destination == nullptr || roundTrip)
        journey.WayPoint = RandomPlace(20, 60, random);
    if (journey.Destination == nullptr)
        return;
    constexpr double ShortHopNm = 40;
    constexpr double ShortHopFt = 9000;
    if (from != nullptr && !roundTrip && RangeNm(from->Position, journey.Destination->Position) < ShortHopNm)
        journey.CruiseFt = std::min(journey.CruiseFt, ShortHopFt);
    const PracticeRunway* runway = journey.Destination->RunwayInUse(m_aircraft->RunwayFt);
    const double lowestFt =
        runway != nullptr ? Approach::PlatformFt(*runway, *m_aircraft) : journey.Destination->ElevationFt;
    journey.CruiseFt = journey.Pattern ? lowestFt : std::max(journey.CruiseFt, lowestFt + WholeThousands);
}
} // namespace corvane
