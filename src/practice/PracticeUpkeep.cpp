#include "practice/PracticeUpkeep.h"

#include "practice/FlightModel.h"
#include "practice/TrafficMaker.h"

#include <algorithm>
#include <utility>

namespace corvane {
// Chances a step, written as one over the mean number of seconds between two events.
static constexpr double ArrivalChance = 1.0 / 60;
static constexpr double DepartureChance = 1.0 / 300;
static constexpr double ObserverChance = 1.0 / 600;
static constexpr double RenameChance = 1.0 / 900;
static constexpr double PositionChangeChance = 1.0 / 600;
static constexpr double HostLeavesChance = 1.0 / 1800;
static constexpr double FewestShare = 0.75; ///< of the pilots that always stay

void PracticeUpkeep::Step(const Door& door)
{
    const int pilots = m_crew.Count(true);
    if (pilots < m_options.Pilots && door.IsOpen() && m_random.Chance(ArrivalChance))
        door.JoinPilot();
    if (pilots - 1 >= m_options.Pilots * FewestShare && m_random.Chance(DepartureChance))
        LetOneGo();
    if (m_random.Chance(ObserverChance))
        ChangeObservers(door);
    if (m_random.Chance(RenameChance))
        RenameOne();
    if (m_random.Chance(PositionChangeChance))
        ChangePositionsOfOne();
    const bool hostMayLeave = m_options.HostStaysS >= 0 && m_options.MigrateHost && pilots > 1;
    if (hostMayLeave && m_crew.HostingS > m_options.HostStaysS && m_random.Chance(HostLeavesChance))
        LetHostGo();
    m_crew.RemoveLost();
}

void PracticeUpkeep::ChangeObservers(const Door& door)
{
    const PracticeMember* host = m_crew.Host();
    const int others = m_crew.Count(false) - (host != nullptr && !host->IsPilot() ? 1 : 0);
    if (others < m_options.Observers && door.IsOpen()) {
        door.JoinObserver();
        return;
    }
    const auto leaving = std::find_if(m_crew.Members().begin(), m_crew.Members().end(), [host](const auto& member) {
        return !member->IsPilot() && member.get() != host;
    });
    if (leaving != m_crew.Members().end())
        (*leaving)->Leave();
}

/// Those who have landed go first; in the air a pilot seldom drops out.
void PracticeUpkeep::LetOneGo()
{
    constexpr double DropOutChance = 0.15;
    PracticeMember* leaving = nullptr;
    for (const auto& member : m_crew.Members())
        if (member->IsPilot() && member.get() != m_crew.Host() && member->Flying->Phase() == PilotPhase::Parked &&
            member->Flying->FlightsDone() > 0)
            leaving = member.get();
    if (leaving == nullptr && m_random.Chance(DropOutChance))
        leaving = m_crew.RandomPilot(m_random);
    if (leaving != nullptr && leaving != m_crew.Host())
        leaving->Leave();
}

void PracticeUpkeep::LetHostGo()
{
    if (m_crew.Host() == nullptr)
        return;
    m_crew.Host()->SendHostLeft();
    m_crew.Host()->Leave();
}

/// At its stand, between two flights: nobody changes the callsign in flight.
void PracticeUpkeep::RenameOne()
{
    std::vector<PracticeMember*> parked;
    for (const auto& member : m_crew.Members())
        if (member->IsPilot() && member->Admitted && member->Flying->Phase() == PilotPhase::Parked)
            parked.push_back(member.get());
    if (parked.empty())
        return;
    PracticeMember& member = *parked[m_random.Below(parked.size())];
    member.Rename(TrafficMaker::NewCallsign(member.Flying->Aircraft().Kind, m_crew, m_random));
}

/// One more pilot sends short positions, or one of those who do stops, so that their share stays about the same.
void PracticeUpkeep::ChangePositionsOfOne()
{
    PracticeMember* member = m_crew.RandomPilot(m_random);
    if (member == nullptr)
        return;
    const auto shorts = std::count_if(m_crew.Members().begin(), m_crew.Members().end(),
                                      [](const auto& other) { return other->IsPilot() && other->ShortPositions; });
    const bool fewer = static_cast<double>(shorts) > m_options.ShortPositionShare * m_crew.Count(true);
    if (!fewer) {
        member->ShortPositions = true;
        return;
    }
    for (const auto& other : m_crew.Members())
        if (other->ShortPositions) {
            other->ShortPositions = false;
            return;
        }
}
} // namespace corvane
