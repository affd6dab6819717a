#include "practice/PracticeSession.h"

#include "core/Text.h"
#include "practice/Callsigns.h"

#include <algorithm>
#include <array>
#include <cmath>
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
      m_grid(&grid),
      m_options(std::move(options)),
      m_random(m_options.Seed)
{
    constexpr std::int32_t RoomForOthers = 8;
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

Result<std::shared_ptr<SessionPeer>> PracticeSession::ConnectedPeer()
{
    auto peer = m_factory->DirectPlayCreate("");
    if (!peer)
        return peer.error();
    if (m_options.Address.empty()) {
        const auto connections = (*peer)->GetDPEnumConnections("", ConnectionDirectPlay);
        if (!connections)
            return connections.error();
        if (connections->empty())
            return Fail("GetDPEnumConnections", "there is no connection type");
        m_options.Address = connections->front().Address;
    }
    if (const auto ready = (*peer)->InitializeConnection(m_options.Address); !ready)
        return ready.error();
    return std::shared_ptr<SessionPeer>(*std::move(peer));
}

/// The session just created: the one of its name that was not there before.
Result<SessionEntry> PracticeSession::FindOwnSession(const std::vector<SessionEntry>& before)
{
    const auto peer = ConnectedPeer();
    if (!peer)
        return peer.error();
    const auto found = (*peer)->GetDPEnumSessions({}, 0, EnumSessionsPasswordRequired);
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
    const auto peer = ConnectedPeer();
    if (!peer)
        return peer.error();
    std::vector<SessionEntry> before;
    if (m_options.PeerForEach)
        if (auto listed = (*peer)->GetDPEnumSessions({}, 0, EnumSessionsPasswordRequired))
            before = *std::move(listed);
    m_entry = {.Name = m_options.SessionName,
               .MaxPlayers = m_options.MaxPlayers,
               .InstanceGuid = {},
               .Flags = SessionKeepAlive | (m_options.MigrateHost ? SessionMigrateHost : 0) |
                        (m_options.Password.empty() ? 0 : SessionPasswordRequired),
               .Password = m_options.Password};
    if (const auto opened = (*peer)->Open(m_entry, OpenCreate); !opened)
        return opened.error();
    const auto group = (*peer)->CreateGroup(MemberManners::Group);
    if (!group)
        return group.error();
    m_group = *group;
    std::optional<Pilot> pilot;
    std::string name = m_options.HostName;
    if (name.empty()) {
        const AircraftKind kind = NewKind();
        name = NewCallsign(kind);
        pilot.emplace(m_scene, *m_grid, kind, Scenario::Departure, m_random);
    }
    const auto host = AddMember(*peer, std::move(name), std::move(pilot));
    if (!host)
        return host.error();
    m_host = *host;
    if (m_options.PeerForEach) {
        auto entry = FindOwnSession(before);
        if (!entry)
            return entry.error();
        m_entry = *std::move(entry);
        m_entry.Password = m_options.Password;
    }
    m_host->EnterAdmitted(m_group);
    return {};
}

Result<void> PracticeSession::Open()
{
    if (const auto opened = OpenAsHost(); !opened)
        return opened.error();
    while (Count(true) < m_options.Pilots && MayJoin()) {
        const std::size_t before = m_members.size();
        JoinPilot();
        if (m_members.size() == before)
            break; // the session does not take more
    }
    if (m_options.Observers > 0 && MayJoin())
        JoinObserver();
    return {};
}

Result<PracticeMember*> PracticeSession::AddMember(std::shared_ptr<SessionPeer> peer, std::string name,
                                                   std::optional<Pilot> pilot)
{
    const auto id = peer->CreatePlayer(name, MemberManners::FormalName, 0, 0);
    if (!id)
        return id.error();
    auto member = std::make_unique<PracticeMember>(std::move(peer), *id, std::move(name), std::move(pilot));
    member->ShortPositions = m_random.Chance(m_options.ShortPositionShare);
    m_members.push_back(std::move(member));
    return m_members.back().get();
}

Result<void> PracticeSession::Join(std::string name, std::optional<Pilot> pilot)
{
    std::shared_ptr<SessionPeer> peer;
    if (m_options.PeerForEach) {
        auto connected = ConnectedPeer();
        if (!connected)
            return connected.error();
        peer = *std::move(connected);
        if (const auto opened = peer->Open(m_entry, OpenJoin); !opened)
            return opened.error();
    } else
        peer = m_members.front()->SharePeer();
    const auto member = AddMember(std::move(peer), std::move(name), std::move(pilot));
    if (!member)
        return member.error();
    (*member)->RequestAdmission(false);
    return {};
}

AircraftKind PracticeSession::NewKind()
{
    constexpr std::array<AircraftKind, 10> Mix{
        AircraftKind::Airliner,     AircraftKind::Airliner,  AircraftKind::Airliner,      AircraftKind::Airliner,
        AircraftKind::LightJet,     AircraftKind::LightJet,  AircraftKind::TwinTurboprop, AircraftKind::PistonSingle,
        AircraftKind::PistonSingle, AircraftKind::Helicopter};
    return m_random.Pick(std::span<const AircraftKind>(Mix));
}

std::string PracticeSession::NewCallsign(AircraftKind kind)
{
    constexpr int Tries = 50;
    std::string name;
    for (int i = 0; i < Tries; ++i) {
        name = InventCallsign(kind, m_random);
        const bool taken = std::any_of(m_members.begin(), m_members.end(),
                                       [&name](const auto& member) { return member->Name() == name; });
        if (!taken)
            break;
    }
    return name;
}

void PracticeSession::JoinPilot()
{
    constexpr std::array<Scenario, 6> Mix{Scenario::Departure, Scenario::Arrival, Scenario::Arrival,
                                          Scenario::Cruise,    Scenario::Cruise,  Scenario::Pattern};
    const AircraftKind kind = NewKind();
    const Scenario scenario = m_random.Pick(std::span<const Scenario>(Mix));
    std::string callsign = NewCallsign(kind);
    // A failed attempt is as if that pilot had stayed at home; the next one tries again.
    static_cast<void>(Join(std::move(callsign), Pilot(m_scene, *m_grid, kind, scenario, m_random)));
}

void PracticeSession::JoinObserver()
{
    static_cast<void>(Join(InventObserverName(m_random), std::nullopt));
}

int PracticeSession::Count(bool pilots) const noexcept
{
    return static_cast<int>(std::count_if(m_members.begin(), m_members.end(),
                                          [pilots](const auto& member) { return member->IsPilot() == pilots; }));
}

/// One place always stays free for a controller.
bool PracticeSession::MayJoin() const noexcept
{
    return static_cast<std::int32_t>(m_members.size()) + 1 < m_options.MaxPlayers;
}

void PracticeSession::Advance(double nowS)
{
    if (!m_clockS || nowS < *m_clockS)
        m_clockS = nowS;
    ReceiveAll();
    m_clockS = std::max(*m_clockS, nowS - LongestPauseS);
    const auto steps = static_cast<int>((nowS - *m_clockS) / StepS);
    for (int i = 0; i < steps; ++i)
        LiveOneStep();
    *m_clockS += steps * StepS;
    if (steps > 0) {
        AskForAdmissionAgain();
        for (const auto& member : m_members)
            if (member->Admitted)
                member->SendPosition();
    }
    RemoveLost();
}

void PracticeSession::End()
{
    for (const auto& member : m_members)
        if (member.get() != m_host)
            member->Leave();
    if (m_host != nullptr) {
        m_host->SendHostLeft();
        m_host->Leave();
    }
    m_host = nullptr;
    m_members.clear();
}
} // namespace corvane
