#include "practice/Callsigns.h"
#include "practice/PracticeSession.h"

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

void PracticeSession::LiveOneStep()
{
    m_hostingS += StepS;
    for (const auto& member : m_members) {
        member->WaitingS += StepS;
        if (!member->Flying)
            continue;
        AnswerChat(*member);
        member->Flying->Step(m_random);
        if (const auto call = member->Flying->TakeRadioCall(); call && member->Admitted)
            member->Say(*call + ", " + member->Name());
    }
    if (m_options.ComeAndGo)
        ComeAndGo();
}

/// One line a second is read and answered, as long as a pilot takes to say it.
void PracticeSession::AnswerChat(PracticeMember& member)
{
    const auto line = member.TakeLine();
    if (!line || !member.Admitted)
        return;
    const ParsedLine parsed = ParseInstructions(*line);
    std::string answer = line->empty() ? "go ahead" : "say again";
    if (parsed.Understood)
        answer = member.Flying->Obey(parsed.Instructions);
    member.Say(answer + ", " + member.Name());
}

/// Who is not admitted for two minutes goes again.
void PracticeSession::AskForAdmissionAgain()
{
    constexpr double RetryS = 30;
    constexpr int MostAttempts = 4;
    for (const auto& member : m_members) {
        if (member->Admitted || member->WaitingS < RetryS)
            continue;
        if (member->Attempts < MostAttempts)
            member->RequestAdmission(true);
        else
            member->Leave();
    }
}

void PracticeSession::ComeAndGo()
{
    const int pilots = Count(true);
    if (pilots < m_options.Pilots && MayJoin() && m_random.Chance(ArrivalChance))
        JoinPilot();
    if (pilots - 1 >= m_options.Pilots * FewestShare && m_random.Chance(DepartureChance))
        LetOneGo();
    const int others = Count(false) - (m_host != nullptr && !m_host->IsPilot() ? 1 : 0);
    if (m_random.Chance(ObserverChance)) {
        if (others < m_options.Observers && MayJoin())
            JoinObserver();
        else if (others > 0)
            for (const auto& member : m_members)
                if (!member->IsPilot() && member.get() != m_host) {
                    member->Leave();
                    break;
                }
    }
    if (m_random.Chance(RenameChance))
        RenameOne();
    if (m_random.Chance(PositionChangeChance))
        ChangePositionsOfOne();
    const bool hostMayLeave = m_options.HostStaysS >= 0 && m_options.MigrateHost && pilots > 1;
    if (hostMayLeave && m_hostingS > m_options.HostStaysS && m_random.Chance(HostLeavesChance))
        LetHostGo();
    RemoveLost();
}

PracticeMember* PracticeSession::RandomPilot()
{
    std::vector<PracticeMember*> pilots;
    for (const auto& member : m_members)
        if (member->IsPilot() && member->Admitted && !member->IsLost())
            pilots.push_back(member.get());
    return pilots.empty() ? nullptr : pilots[m_random.Below(pilots.size())];
}

/// Those who have landed go first; in the air a pilot seldom drops out.
void PracticeSession::LetOneGo()
{
    constexpr double DropOutChance = 0.15;
    PracticeMember* leaving = nullptr;
    for (const auto& member : m_members)
        if (member->IsPilot() && member.get() != m_host && member->Flying->Phase() == PilotPhase::Parked &&
            member->Flying->FlightsDone() > 0)
            leaving = member.get();
    if (leaving == nullptr && m_random.Chance(DropOutChance))
        leaving = RandomPilot();
    if (leaving != nullptr && leaving != m_host)
        leaving->Leave();
}

void PracticeSession::LetHostGo()
{
    if (m_host == nullptr)
        return;
    m_host->SendHostLeft();
    m_host->Leave();
}

void PracticeSession::RenameOne()
{
    if (PracticeMember* member = RandomPilot())
        member->Rename(NewCallsign(member->Flying->Aircraft().Kind));
}

/// One more pilot sends short positions, or one of those who do stops, so that their share stays about the same.
void PracticeSession::ChangePositionsOfOne()
{
    PracticeMember* member = RandomPilot();
    if (member == nullptr)
        return;
    const auto shorts = std::count_if(m_members.begin(), m_members.end(),
                                      [](const auto& other) { return other->IsPilot() && other->ShortPositions; });
    const bool fewer = static_cast<double>(shorts) > m_options.ShortPositionShare * Count(true);
    if (!fewer) {
        member->ShortPositions = true;
        return;
    }
    for (const auto& other : m_members)
        if (other->ShortPositions) {
            other->ShortPositions = false;
            return;
        }
}

/// Lets go of members that left or lost the session; while none of the rest hosts, the longest-standing pilot does.
void PracticeSession::RemoveLost()
{
    if (m_host != nullptr && m_host->IsLost())
        m_host = nullptr;
    std::erase_if(m_members, [](const auto& member) { return member->IsLost(); });
    if (m_host != nullptr)
        return;
    const auto next = std::find_if(m_members.begin(), m_members.end(),
                                   [](const auto& member) { return member->IsPilot() && member->Admitted; });
    if (next == m_members.end())
        return;
    m_host = next->get();
    m_hostingS = 0;
}
} // namespace corvane
