#include "debrief/DebriefWatch.h"

#include "core/GreatCircle.h"
#include "core/NumberText.h"
#include "core/Rounding.h"
#include "radar/DisplayOptions.h"
#include "session/FlightPlanMemory.h"

#include <algorithm>
#include <cmath>

namespace corvane {
DebriefWatch::DebriefWatch(const AreaModel& area, const MagVarGrid& grid)
    : m_area(&area),
      m_grid(&grid),
      m_scene(area.AreaAirports, area.AreaVors, area.AreaNdbs, area.AreaCenter),
      m_monitor(grid),
      m_flights(m_scene),
      m_finals(m_scene, grid)
{
    const auto modern = DisplayByName("modern", area.AreaMode);
    m_monitor.SetOptions(TracksOf(*modern), AlertsOf(*modern));
    m_monitor.SetArea(area);
}

void DebriefWatch::Meet(const PlayerRecord& player)
{
    if (player.Role == PilotRole && std::find(m_names.begin(), m_names.end(), player.Name) == m_names.end())
        m_names.push_back(player.Name);
}

void DebriefWatch::Hear(std::string_view from, std::string_view text, double nowS)
{
    m_radio.Hear(from, text, m_names, nowS);
}

const PlayerRecord* DebriefWatch::Find(std::int32_t id) const
{
    const auto found = std::find_if(m_pilots.begin(), m_pilots.end(),
                                    [id](const PlayerRecord& pilot) { return pilot.PlayerId == id; });
    return found == m_pilots.end() ? nullptr : &*found;
}

void DebriefWatch::SetPractice(const PracticeKnowledge& knowledge)
{
    m_scene.SetWind(knowledge.Wind);
    m_destinationOf = knowledge.DestinationOf;
}

/// Practice pilots fly by instrument rules, where nobody has entered a plan that says otherwise.
void DebriefWatch::FilePlan(PlayerRecord& pilot) const
{
    constexpr std::uint8_t InstrumentRules = 1;
    if (!m_destinationOf || HasFlightPlan(pilot))
        return;
    pilot.DestinationIcao = m_destinationOf(pilot.Name);
    pilot.FlightRules = pilot.DestinationIcao.empty() ? pilot.FlightRules : InstrumentRules;
}

void DebriefWatch::TakePilots(std::span<const PlayerRecord> players, double nowS)
{
    const std::vector<std::string> before = std::exchange(m_names, {});
    m_pilots.clear();
    for (const PlayerRecord& player : players) {
        if (player.Role == PilotRole)
            m_names.push_back(player.Name);
        if (player.Role != PilotRole || (player.Latitude == 0 && player.Longitude == 0))
            continue;
        PlayerRecord& pilot = m_pilots.emplace_back(player);
        FilePlan(pilot);
        pilot.MinimumAltitudeFt = m_altitudes.For(*m_area, pilot, m_pilots.size() - 1);
        const std::pair place(player.Latitude, player.Longitude);
        if (std::exchange(m_lastPlaces[player.Name], place) != place)
            m_monitor.Report(pilot, nowS);
        m_flights.Report(pilot, nowS);
    }
    for (const std::string& name : before)
        if (std::find(m_names.begin(), m_names.end(), name) == m_names.end()) {
            m_radio.Forget(name);
            m_lastPlaces.erase(name);
        }
}

void DebriefWatch::TakeLoss(const PlayerRecord& one, const PlayerRecord& other, double nowS)
{
    const double nm = RangeNm({one.Latitude, one.Longitude}, {other.Latitude, other.Longitude});
    std::vector<Loss>& losses = m_losses[std::minmax(one.Name, other.Name)];
    constexpr double SameLossS = 5;
    if (losses.empty() || nowS - losses.back().LastS > SameLossS) {
        const std::string why = m_radio.LastTold(one.Name, nowS);
        const std::string otherWhy = m_radio.LastTold(other.Name, nowS);
        const bool charged = m_radio.IsYours(one.Name) || m_radio.IsYours(other.Name);
        losses.push_back({nowS, nowS, nm, std::abs(one.AltitudeFt - other.AltitudeFt), charged,
                          why + (why.empty() || otherWhy.empty() ? "" : "; ") + otherWhy});
    }
    Loss& loss = losses.back();
    loss.LastS = nowS;
    if (nm < loss.ClosestNm) {
        loss.ClosestNm = nm;
        loss.ApartFt = std::abs(one.AltitudeFt - other.AltitudeFt);
    }
}

void DebriefWatch::TakeLow(const Alert& alert, const PlayerRecord& pilot, double nowS)
{
    const auto givenFt = m_radio.GivenFt(pilot.Name);
    const bool charged = m_radio.IsYours(pilot.Name) && givenFt && *givenFt < alert.MinimumAltitudeFt;
    if (!charged || !m_lowNow.insert(pilot.Name).second)
        return;
    m_items.push_back({nowS,
                       DebriefKind::LowAltitude,
                       {pilot.Name},
                       "at " + NumberText(alert.AltitudeFt) + " ft, below the minimum of " +
                           NumberText(alert.MinimumAltitudeFt) + " ft",
                       m_radio.LastTold(pilot.Name, nowS)});
}

void DebriefWatch::TakeAlerts(double nowS)
{
    std::set<std::string> low;
    for (const Alert& alert : m_monitor.Alerts()) {
        const PlayerRecord* const first = Find(alert.FirstId);
        const PlayerRecord* const second = Find(alert.SecondId);
        if (alert.Kind == AlertKind::Conflict && alert.Violated && first != nullptr && second != nullptr)
            TakeLoss(*first, *second, nowS);
        if (alert.Kind == AlertKind::LowAltitude && first != nullptr) {
            TakeLow(alert, *first, nowS);
            low.insert(first->Name);
        }
    }
    std::erase_if(m_lowNow, [&low](const std::string& name) { return !low.contains(name); });
}

void DebriefWatch::Refresh(std::span<const PlayerRecord> players, double nowS)
{
    m_nowS = nowS;
    TakePilots(players, nowS);
    std::vector<const PlayerRecord*> all;
    std::vector<const PlayerRecord*> airborne;
    int yours = 0;
    for (const PlayerRecord& pilot : m_pilots) {
        all.push_back(&pilot);
        if (m_flights.IsAirborne(pilot.Name))
            airborne.push_back(&pilot);
        yours += m_radio.IsYours(pilot.Name) ? 1 : 0;
    }
    m_monitor.Refresh(all, nowS);
    TakeAlerts(nowS);
    m_radio.Refresh(nowS);
    m_finals.Refresh(
        airborne, nowS, [this](const std::string& name) { return m_radio.IsYours(name); },
        [this, nowS](const std::string& name) { return m_radio.LastTold(name, nowS); });
    constexpr double MinuteS = 60;
    constexpr std::size_t MostMinutes = 20000; // two weeks
    const auto minutes = static_cast<std::size_t>(std::max(0.0, nowS) / MinuteS);
    if (minutes < MostMinutes && minutes >= m_handled.size())
        m_handled.resize(minutes + 1, yours);
}

void DebriefWatch::AddSeparation(Debrief& debrief) const
{
    for (const auto& [who, losses] : m_losses)
        for (const Loss& loss : losses) {
            if (!loss.Charged)
                continue;
            const std::string nm = NumberText(RoundTo<std::int32_t>(loss.ClosestNm * 10) / 10.0);
            debrief.Items.push_back({loss.SinceS,
                                     DebriefKind::Separation,
                                     {who.first, who.second},
                                     "closest " + nm + " nm, " + NumberText(loss.ApartFt) +
                                         " ft apart then, lost for " +
                                         NumberText(RoundTo<std::int32_t>(loss.LastS - loss.SinceS + 1)) + " s",
                                     loss.Why});
        }
}

Debrief DebriefWatch::Judge(std::string session) const
{
    Debrief debrief;
    debrief.Session = std::move(session);
    debrief.LengthS = m_nowS;
    RadioWatch(m_radio).Fill(debrief, m_nowS);
    debrief.Items.insert(debrief.Items.end(), m_items.begin(), m_items.end());
    const std::vector<DebriefItem> wake = m_finals.Items();
    debrief.Items.insert(debrief.Items.end(), wake.begin(), wake.end());
    AddSeparation(debrief);
    std::stable_sort(debrief.Items.begin(), debrief.Items.end(),
                     [](const DebriefItem& a, const DebriefItem& b) { return a.TimeS < b.TimeS; });
    debrief.Handled = m_handled;
    debrief.Flights =
        m_flights.Flights(*m_grid, [this](const std::string& callsign) { return m_radio.FirstCallS(callsign); });
    for (DebriefFlight& flight : debrief.Flights) {
        flight.YoursS = m_radio.YoursSince(flight.Callsign);
        flight.Instructions = m_radio.InstructionsTo(flight.Callsign);
        if (!flight.YoursS)
            continue;
        debrief.Landings += flight.LandedS ? 1 : 0;
        debrief.TakeOffs += flight.TookOffS ? 1 : 0;
        debrief.DelayS += flight.DelayS().value_or(0);
    }
    return debrief;
}
} // namespace corvane
