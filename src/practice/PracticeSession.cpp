#include "practice/PracticeSession.h"

#include "core/Text.h"
#include "practice/Callsigns.h"
#include "practice/MemberMessages.h"
#include "practice/PracticeUpkeep.h"
#include "session/HostedSession.h"

#include <algorithm>
#include <utility>

namespace corvane {
std::string PracticeSessionName(std::string_view areaName)
{
    return "Practice - " + std::string(areaName);
}

PracticeSession::PracticeSession(SessionPeerFactory& factory, PracticeScene scene, const MagVarGrid& grid,
                                 PracticeOptions options)
    : m_factory(&factory),
      m_scene(std::move(scene)),
      m_options(std::move(options)),
      m_random(m_options.Seed),
      m_traffic(m_scene, grid)
{
    constexpr std::int32_t RoomForOthers = 8;
    if (m_options.Scenario) {
        m_options.Pilots = static_cast<int>(m_options.Scenario->Aircraft.size());
        m_options.Observers = 0;
        m_options.ComeAndGo = false;
        if (m_options.HostName.empty())
            m_options.HostName = "Instructor";
        m_scene.SetWind(m_options.Scenario->Wind);
        m_scene.UseRunways(m_options.Scenario->Landing, m_options.Scenario->TakeOff);
        m_director.emplace(*m_options.Scenario, m_scene, grid);
    }
    if (m_options.MaxPlayers <= 0)
        m_options.MaxPlayers = m_options.Pilots + m_options.Observers + 1 + RoomForOthers;
}

Result<std::unique_ptr<PracticeSession>> PracticeSession::Create(SessionPeerFactory& factory, PracticeScene scene,
                                                                 const MagVarGrid& grid, PracticeOptions options)
{
    std::unique_ptr<PracticeSession> session(new PracticeSession(factory, std::move(scene), grid, std::move(options)));
    if (const auto opened = session->Open(); !opened)
        return opened.error();
    return session;
}

/// The session just created: the one of its name that was not there before.
Result<SessionEntry> PracticeSession::FindOwnSession(const std::vector<SessionEntry>& before)
{
    const auto peer = ConnectedPeer(*m_factory, m_options.Address);
    if (!peer)
        return peer.error();
    const auto found = (*peer)->GetDPEnumSessions(0, EnumSessionsPasswordRequired);
    if (!found)
        return found.error();
    for (const SessionEntry& entry : *found) {
        const bool known = std::any_of(before.begin(), before.end(), [&entry](const SessionEntry& old) {
            return old.InstanceGuid == entry.InstanceGuid;
        });
        if (!known && entry.Name == m_entry.Name)
            return entry;
    }
    return Fail("GetDPEnumSessions", "the new session \"" + Windows1252ToUtf8(m_entry.Name) + "\" is not listed");
}

Result<void> PracticeSession::OpenAsHost()
{
    auto connected = ConnectedPeer(*m_factory, m_options.Address);
    if (!connected)
        return connected.error();
    const std::shared_ptr<SessionPeer> peer = *std::move(connected);
    std::vector<SessionEntry> before;
    if (m_options.PeerForEach)
        if (auto listed = peer->GetDPEnumSessions(0, EnumSessionsPasswordRequired))
            before = *std::move(listed);
    m_entry = DescribeHosted(m_options.SessionName, m_options.MaxPlayers, m_options.Password, m_options.MigrateHost);
    const auto group = CreateHosted(*peer, m_entry);
    if (!group)
        return group.error();
    m_group = *group;
    std::optional<Pilot> pilot;
    std::string name = m_options.HostName;
    if (name.empty()) {
        TrafficMaker::NewPilot first = m_traffic.Departure(m_crew, m_random);
        name = std::move(first.Callsign);
        pilot = std::move(first.Flying);
    }
    const auto host = AddMember(peer, std::move(name), std::move(pilot));
    if (!host)
        return host.error();
    m_crew.SetHost(**host);
    if (m_options.PeerForEach) {
        auto entry = FindOwnSession(before);
        if (!entry)
            return entry.error();
        m_entry = *std::move(entry);
        m_entry.Password = m_options.Password;
    }
    m_crew.Host()->EnterAdmitted(m_group);
    return {};
}

Result<void> PracticeSession::Open()
{
    if (const auto opened = OpenAsHost(); !opened)
        return opened.error();
    while (!m_director && m_crew.Count(true) < m_options.Pilots && MayJoin()) {
        const std::size_t before = Members().size();
        JoinPilot();
        if (Members().size() == before)
            break; // the session does not take more
    }
    if (m_options.Observers > 0 && MayJoin())
        JoinObserver();
    return {};
}

Result<PracticeMember*> PracticeSession::AddMember(std::shared_ptr<SessionPeer> peer, std::string name,
                                                   std::optional<Pilot> pilot)
{
    const auto id = peer->CreatePlayer(name, MemberManners::FormalName);
    if (!id)
        return id.error();
    if (pilot) {
        SeeGround();
        pilot->StandApart(GroundView(m_ground, GroundTraffic::Nobody));
    }
    auto member = std::make_unique<PracticeMember>(std::move(peer), *id, std::move(name), std::move(pilot));
    member->ShortPositions = m_random.Chance(m_options.ShortPositionShare);
    return &m_crew.Add(std::move(member));
}

Result<void> PracticeSession::Join(std::string name, std::optional<Pilot> pilot)
{
    std::shared_ptr<SessionPeer> peer;
    if (m_options.PeerForEach) {
        auto connected = ConnectedPeer(*m_factory, m_options.Address);
        if (!connected)
            return connected.error();
        peer = *std::move(connected);
        if (const auto opened = peer->Open(m_entry, OpenJoin); !opened)
            return opened.error();
    } else
        peer = Members().front()->SharePeer();
    const auto member = AddMember(std::move(peer), std::move(name), std::move(pilot));
    if (!member)
        return member.error();
    (*member)->RequestAdmission(false);
    return {};
}

/// A failed attempt is as if that pilot had stayed at home; the next one tries again.
void PracticeSession::JoinPilot()
{
    TrafficMaker::NewPilot pilot = m_traffic.Any(m_crew, m_random);
    static_cast<void>(Join(std::move(pilot.Callsign), std::move(pilot.Flying)));
}

void PracticeSession::JoinObserver()
{
    static_cast<void>(Join(InventObserverName(m_random), std::nullopt));
}

/// One place always stays free for a controller.
bool PracticeSession::MayJoin() const noexcept
{
    return static_cast<std::int32_t>(Members().size()) + 1 < m_options.MaxPlayers;
}

void PracticeSession::Advance(double nowS)
{
    if (!m_clockS || nowS < *m_clockS)
        m_clockS = nowS;
    MemberMessages(m_crew, {m_entry, m_group, m_options.MaxPlayers, m_options.PeerForEach}).ReceiveAll();
    m_clockS = std::max(*m_clockS, nowS - LongestPauseS);
    const auto steps = static_cast<int>((nowS - *m_clockS) / StepS);
    for (int i = 0; i < steps; ++i)
        LiveOneStep();
    *m_clockS += steps * StepS;
    if (steps > 0) {
        AskForAdmissionAgain();
        for (const auto& member : Members())
            if (member->Admitted)
                member->SendPosition();
    }
    m_crew.RemoveLost();
}

/// One that errs takes another number, and reads back what it took.
static void Mishear(std::vector<Instruction>& instructions)
{
    for (Instruction& instruction : instructions) {
        if (instruction.Kind == InstructionKind::Heading)
            instruction.Number = (instruction.Number + 9) % 360 + 1;
        else if (instruction.Kind == InstructionKind::Altitude)
            instruction.Number += 1000 * (instruction.Change < 0 ? -1 : 1);
    }
}

/// One line a second is read and answered, as long as a pilot takes to say it.
void PracticeSession::AnswerChat(PracticeMember& member)
{
    const auto line = member.TakeLine();
    if (!line || !member.Admitted || member.Silent)
        return;
    std::string answer = "go ahead";
    if (!line->empty()) {
        ParsedLine parsed = ParseInstructions(*line);
        if (member.ReadBackErrors > 0 && m_random.Chance(member.ReadBackErrors))
            Mishear(parsed.Instructions);
        answer = parsed.Understood ? member.Flying->Obey(parsed.Instructions) : member.Flying->NotUnderstood();
    }
    member.Say(answer + ", " + member.Name());
}

void PracticeSession::SeeGround()
{
    m_ground.Clear();
    for (const auto& member : Members())
        if (member->Flying)
            m_ground.Add(member->Flying->State(), member->Flying->Phase() == PilotPhase::Parked,
                         static_cast<std::size_t>(member->Id()), member->Flying->StandAhead());
}

void PracticeSession::LiveOneStep()
{
    m_crew.HostingS += StepS;
    SeeGround();
    for (const auto& member : Members()) {
        member->WaitingS += StepS;
        if (!member->Flying)
            continue;
        AnswerChat(*member);
        member->Flying->Step(m_random, GroundView(m_ground, static_cast<std::size_t>(member->Id())));
        if (const auto call = member->Flying->TakeRadioCall(); call && member->Admitted)
            member->Say(*call + ", " + member->Name());
    }
    if (m_director)
        m_director->Step(m_crew, m_random, [this](std::string name, Pilot pilot) {
            if (MayJoin())
                static_cast<void>(Join(std::move(name), std::move(pilot)));
        });
    if (m_options.ComeAndGo)
        PracticeUpkeep(m_crew, m_options, m_random)
            .Step({[this] { return MayJoin(); }, [this] { JoinPilot(); }, [this] { JoinObserver(); }});
}

/// Who is not admitted for two minutes goes again.
void PracticeSession::AskForAdmissionAgain()
{
    constexpr double RetryS = 30;
    constexpr int MostAttempts = 4;
    for (const auto& member : Members()) {
        if (member->Admitted || member->WaitingS < RetryS)
            continue;
        if (member->Attempts < MostAttempts)
            member->RequestAdmission(true);
        else
            member->Leave();
    }
}

std::string PracticeSession::DestinationOf(std::string_view name) const
{
    for (const auto& member : Members())
        if (member->Flying && member->Name() == name && member->Flying->Destination() != nullptr)
            return member->Flying->Destination()->Icao;
    return {};
}

void PracticeSession::End()
{
    PracticeMember* const host = m_crew.Host();
    for (const auto& member : Members())
        if (member.get() != host)
            member->Leave();
    if (host != nullptr) {
        host->SendHostLeft();
        host->Leave();
    }
    m_crew.Clear();
}
} // namespace corvane
