#include "recording/PlaybackPeer.h"

#include "core/NumberText.h"
#include "recording/RecordedPast.h"

#include <algorithm>
#include <cassert>
#include <unordered_set>
#include <utility>

namespace corvane {
Result<std::vector<ConnectionEntry>> PlaybackPeer::GetDPEnumConnections()
{
    return std::vector<ConnectionEntry>{{std::string(PlaybackConnectionName), std::string(PlaybackConnectionAddress)}};
}

Result<void> PlaybackPeer::InitializeConnection(std::string_view address)
{
    if (address != PlaybackConnectionAddress)
        return Fail("InitializeConnection", "not an address of recordings");
    return {};
}

/// The session as it stood where playing begins.
SessionEntry PlaybackPeer::Entry() const
{
    RecordedMembers members(m_recording->Head);
    for (const RecordView& record : m_recording->Records) {
        if (record.TimeMs > m_beginMs)
            break;
        members.Apply(record);
    }
    return {.Name = m_recording->Head.SessionName,
            .CurrentPlayers = static_cast<std::int32_t>(std::count_if(
                members.All().begin(), members.All().end(), [](const RecordedMember& one) { return one.Present; })),
            .MaxPlayers = m_recording->Head.MaxPlayers,
            .InstanceGuid = m_recording->Head.InstanceGuid,
            .Flags = m_recording->Head.Flags,
            .Password = {}};
}

Result<std::vector<SessionEntry>> PlaybackPeer::GetDPEnumSessions(std::int32_t /*timeoutMs*/, std::uint32_t /*flags*/)
{
    if (!m_recording) {
        auto choice = m_source();
        if (!choice)
            return choice.error();
        assert(choice->What);
        m_recording = std::move(choice->What);
        m_beginMs = std::clamp<std::int64_t>(choice->BeginMs, 0, m_recording->LengthMs());
    }
    return std::vector<SessionEntry>{Entry()};
}

Result<void> PlaybackPeer::Open(const SessionEntry& session, std::uint32_t flags)
{
    if (flags != OpenJoin)
        return Fail("Open", "a recording can only be joined");
    if (!m_recording || m_members || session.InstanceGuid != m_recording->Head.InstanceGuid)
        return Fail("Open", "there is no session " + session.InstanceGuid);
    m_members.emplace(m_recording->Head);
    m_past = PassOver(m_recording->Records, m_beginMs, *m_members);
    m_next = FirstAt(m_recording->Records, m_beginMs);
    m_clock.Open(m_recording->LengthMs(), m_beginMs);
    return {};
}

std::optional<Error> PlaybackPeer::NotOpen(const char* operation) const
{
    if (m_members)
        return std::nullopt;
    return Fail(operation, "no session is open");
}

std::optional<Error> PlaybackPeer::NotViewer(const char* operation, PlayerId player) const
{
    if (m_viewer && m_viewer->Id == player)
        return std::nullopt;
    return Fail(operation, "player " + NumberText(player) + " is not this peer's");
}

/// The lowest id from 1 on that nobody has at any time of the recording.
static PlayerId UnusedId(const Recording& recording)
{
    std::unordered_set<PlayerId> used{recording.Head.OwnPlayerId};
    for (const RecordView& record : recording.Records)
        used.insert(record.Member);
    PlayerId id = 1;
    while (used.contains(id))
        ++id;
    return id;
}

Result<PlayerId> PlaybackPeer::CreatePlayer(std::string_view friendlyName, std::string_view /*formalName*/)
{
    if (auto refusal = NotOpen("CreatePlayer"))
        return *refusal;
    if (m_viewer)
        return Fail("CreatePlayer", "a recording has one viewer at a time");
    m_viewer = SessionMember{UnusedId(*m_recording), std::string(friendlyName)};
    return m_viewer->Id;
}

Result<void> PlaybackPeer::SetPlayerName(PlayerId player, std::string_view friendlyName)
{
    if (auto refusal = NotViewer("SetPlayerName", player))
        return *refusal;
    m_viewer->ShortName = friendlyName;
    return {};
}

Result<std::int32_t> PlaybackPeer::CreateGroup(std::string_view /*shortName*/)
{
    return Fail("CreateGroup", "a recording takes no groups");
}

Result<std::vector<SessionMember>> PlaybackPeer::GetDPEnumGroups()
{
    if (auto refusal = NotOpen("GetDPEnumGroups"))
        return *refusal;
    return std::vector<SessionMember>{};
}

Result<void> PlaybackPeer::AddPlayerToGroup(std::int32_t group, PlayerId /*player*/)
{
    return Fail("AddPlayerToGroup", "there is no group " + NumberText(group));
}

Result<std::vector<SessionMember>> PlaybackPeer::GetDPEnumPlayers()
{
    if (auto refusal = NotOpen("GetDPEnumPlayers"))
        return *refusal;
    PlayUpToNow();
    std::vector<SessionMember> members;
    for (const RecordedMember& member : m_members->All())
        if (member.Present)
            members.push_back({member.Id, member.Name});
    if (m_viewer)
        members.push_back(*m_viewer);
    return members;
}

/// Members come, go and change their names at once; messages queue. Nothing is said before playing has begun.
void PlaybackPeer::PlayUpToNow()
{
    const auto now = m_clock.PositionMs();
    const auto& records = m_recording->Records;
    for (; m_next < records.size() && records[m_next].TimeMs <= now; ++m_next) {
        const RecordView& record = records[m_next];
        const bool isSpoken = record.Kind == RecordKind::MemberSpoke;
        if (isSpoken && !m_clock.HasBegun())
            return;
        m_members->Apply(record);
        if (isSpoken)
            Say(record);
    }
}

void PlaybackPeer::Say(const RecordView& record)
{
    if (m_members->Find(record.Member) != nullptr && IsPlayed(record.Payload))
        Queue(record.Member, Bytes(record.Payload.begin(), record.Payload.end()));
}

void PlaybackPeer::Queue(PlayerId from, Bytes content)
{
    if (m_viewer)
        m_queue.push_back({from, m_viewer->Id, std::move(content)});
}

Result<std::int32_t> PlaybackPeer::GetMessageCount(PlayerId player)
{
    if (auto refusal = NotOpen("GetMessageCount"))
        return *refusal;
    if (auto refusal = NotViewer("GetMessageCount", player))
        return *refusal;
    PlayUpToNow();
    return static_cast<std::int32_t>(m_queue.size());
}

Result<ReceivedMessage> PlaybackPeer::Receive()
{
    if (m_queue.empty())
        return Fail("Receive", "no message is waiting");
    ReceivedMessage message = std::move(m_queue.front());
    m_queue.pop_front();
    return message;
}

Result<void> PlaybackPeer::Send(PlayerId from, PlayerId to, std::uint32_t /*flags*/, ByteSpan message)
{
    if (auto refusal = NotOpen("Send"))
        return *refusal;
    if (auto refusal = NotViewer("Send", from))
        return *refusal;
    const auto header = DecodeHeader(message);
    if (!header)
        return {};
    switch (header->Type) {
    case MessageType::JoinRequest:
    case MessageType::ObserverJoinRequest:
        Queue(m_members->Recorder().Id, MemberManners::Admission(header->Type, from, true));
        break;
    case MessageType::IdentifyRequest:
        m_clock.Begin();
        for (const std::size_t record : std::exchange(m_past, {}))
            Say(m_recording->Records[record]);
        AnswerAll(to, header->Type);
        break;
    case MessageType::AircraftInfoRequest: AnswerAll(to, header->Type); break;
    default: break;
    }
    return {};
}

void PlaybackPeer::AnswerAll(PlayerId to, MessageType request)
{
    PlayUpToNow();
    for (const RecordedMember& member : m_members->All())
        if (member.Present && (to == AllPlayers || to == member.Id))
            if (Bytes answer = MannersOf(member, member.Id).AnswerTo(request); !answer.empty())
                Queue(member.Id, std::move(answer));
}

Result<std::string> PlaybackPeer::GetPlayerFriendlyName(PlayerId player)
{
    if (auto refusal = NotOpen("GetPlayerFriendlyName"))
        return *refusal;
    if (m_viewer && m_viewer->Id == player)
        return m_viewer->ShortName;
    if (const RecordedMember* const member = m_members->Find(player))
        return member->Name;
    return Fail("GetPlayerFriendlyName", "there is no player " + NumberText(player));
}

Result<void> PlaybackPeer::DestroyPlayer(PlayerId player)
{
    if (auto refusal = NotViewer("DestroyPlayer", player))
        return *refusal;
    m_viewer.reset();
    m_queue.clear();
    return {};
}

Result<void> PlaybackPeer::Close()
{
    if (auto refusal = NotOpen("Close"))
        return *refusal;
    Leave();
    return {};
}

void PlaybackPeer::Leave() noexcept
{
    if (m_members)
        m_clock.Close();
    m_members.reset();
    m_past.clear();
    m_viewer.reset();
    m_queue.clear();
}
} // namespace corvane
