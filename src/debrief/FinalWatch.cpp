#include "debrief/FinalWatch.h"

#include "core/GreatCircle.h"
#include "core/NumberText.h"
#include "core/Rounding.h"
#include "practice/AircraftClass.h"

#include <algorithm>
#include <cmath>

namespace corvane {
static constexpr double FinalNm = 15;

WakeCategory WakeOf(const PlayerRecord& aircraft) noexcept
{
    for (const std::string_view heavy : {"747", "767", "777", "787", "A330", "A340", "A380", "MD-11", "Concorde"})
        if (aircraft.AircraftTitle.find(heavy) != std::string::npos)
            return WakeCategory::Heavy;
    const AircraftKind kind = KindOfAircraft(aircraft.AircraftTitle, aircraft.AircraftType);
    return kind == AircraftKind::Airliner || kind == AircraftKind::LightJet ? WakeCategory::Medium
                                                                            : WakeCategory::Light;
}

double WakeDistanceNm(WakeCategory leader, WakeCategory follower) noexcept
{
    constexpr double Radar = 3;
    if (leader == WakeCategory::Heavy)
        return follower == WakeCategory::Heavy ? 4 : follower == WakeCategory::Medium ? 5 : 6;
    return leader == WakeCategory::Medium && follower == WakeCategory::Light ? 5 : Radar;
}

std::vector<FinalWatch::OnFinal> FinalWatch::Established(std::span<const PlayerRecord* const> airborne,
                                                         const PracticeAirport& airport,
                                                         const PracticeRunway& runway) const
{
    constexpr double BoxDeg = 0.4;
    constexpr double BesideNm = 0.4;
    constexpr double AskewDeg = 30;
    constexpr double FeetPerFinalNm = 450; // well above any glide path
    std::vector<OnFinal> established;
    for (const PlayerRecord* aircraft : airborne) {
        const LatLon at{aircraft->Latitude, aircraft->Longitude};
        if (std::abs(at.Lat - airport.Position.Lat) > BoxDeg || RangeNm(at, airport.Position) > FinalNm + 3)
            continue;
        const LineOffset offset = OffsetFromLine(runway.Threshold, runway.Course, at);
        const double heading = TrueFromMagnetic(*m_grid, aircraft->MagHeading, at);
        const double highestFt = runway.ElevationFt + 500 + offset.OutNm * FeetPerFinalNm;
        if (offset.OutNm > 0 && offset.OutNm < FinalNm && std::abs(offset.LeftNm) < BesideNm &&
            std::abs(TurnTo(runway.Course, heading)) < AskewDeg && aircraft->AltitudeFt < highestFt)
            established.push_back({aircraft, offset.OutNm});
    }
    std::sort(established.begin(), established.end(),
              [](const OnFinal& a, const OnFinal& b) { return a.OutNm < b.OutNm; });
    return established;
}

void FinalWatch::Refresh(std::span<const PlayerRecord* const> airborne, double nowS,
                         const std::function<bool(const std::string&)>& isCharged,
                         const std::function<std::string(const std::string&)>& why)
{
    for (const PracticeAirport& airport : m_scene->Airports())
        for (const PracticeRunway& runway : airport.Runways) {
            const std::vector<OnFinal> final = Established(airborne, airport, runway);
            for (std::size_t i = 1; i < final.size(); ++i) {
                const PlayerRecord& leader = *final[i - 1].Aircraft;
                const PlayerRecord& follower = *final[i].Aircraft;
                const double neededNm = WakeDistanceNm(WakeOf(leader), WakeOf(follower));
                const double nm = final[i].OutNm - final[i - 1].OutNm;
                if (nm >= neededNm)
                    continue;
                const auto [entry, isNew] =
                    m_pairs.try_emplace({leader.Name, follower.Name, airport.Icao + ' ' + runway.Name},
                                        Pair{nowS, nowS, nm, neededNm, isCharged(follower.Name), why(follower.Name)});
                entry->second.LastS = nowS;
                entry->second.ClosestNm = std::min(entry->second.ClosestNm, nm);
            }
        }
}

std::vector<DebriefItem> FinalWatch::Items() const
{
    std::vector<DebriefItem> items;
    for (const auto& [key, pair] : m_pairs) {
        if (!pair.Charged)
            continue;
        const auto tenth = [](double nm) { return NumberText(RoundTo<std::int32_t>(nm * 10) / 10.0); };
        const auto& [leader, follower, runway] = key;
        items.push_back({pair.SinceS,
                         DebriefKind::Wake,
                         {leader, follower},
                         follower + " came within " + tenth(pair.ClosestNm) + " nm behind " + leader +
                             " on the final of " + runway + "; " + tenth(pair.NeededNm) + " nm are needed",
                         pair.Why});
    }
    return items;
}
} // namespace corvane
