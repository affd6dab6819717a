#include "recording/SessionRecorder.h"

#include "core/File.h"
#include "session/MessageCodec.h"
#include "session/MessagePump.h"

#include <algorithm>
#include <limits>
#include <unordered_set>
#include <utility>

namespace corvane {
static std::unordered_set<PlayerId> IdsOf(std::span<const SessionMember> members)
{
    std::unordered_set<PlayerId> ids;
    for (const SessionMember& member : members)
        ids.insert(member.Id);
    return ids;
}

Result<void> SessionRecorder::Start(const std::filesystem::path& file)
{
    if (!CanRecord())
        return Fail(FullName(file), "there is no session to record");
    const auto members = m_peer->GetDPEnumPlayers();
    if (!members)
        return members.error();
    auto writer = RecordingWriter::Create(file, {.SessionName = m_session.Name,
                                                 .MaxPlayers = m_session.MaxPlayers,
                                                 .Flags = m_session.Flags & ~SessionPasswordRequired,
                                                 .InstanceGuid = m_session.InstanceGuid,
                                                 .OwnPlayerId = *m_ownId,
                                                 .OwnName = m_ownName});
    if (!writer)
        return writer.error();
    m_writer.emplace(*std::move(writer));
    m_failure.reset();
    m_members.clear();
    m_startMs = m_now();
    m_listedMs = m_startMs;
    MembersListed(*members);
    for (const SessionMember& member : *members)
        WriteRemembered(member.Id);
    if (auto failure = TakeFailure())
        return *std::move(failure);
    return {};
}

std::optional<Error> SessionRecorder::TakeFailure()
{
    return std::exchange(m_failure, std::nullopt);
}

void SessionRecorder::SessionOpened(SessionPeer& peer, const SessionEntry& session)
{
    SessionClosed();
    m_peer = &peer;
    m_session = session;
    m_session.Password.clear();
}

void SessionRecorder::OwnPlayerCreated(PlayerId id, std::string_view name)
{
    m_ownId = id;
    m_ownName = name;
}

void SessionRecorder::SessionClosed() noexcept
{
    Stop();
    m_peer = nullptr;
    m_ownId.reset();
    m_latest.clear();
}

void SessionRecorder::QueueRead()
{
    if (IsRecording() && m_now() - m_listedMs >= MemberIntervalMs)
        ListMembers();
}

/// A failure is the session's, which the program meets by itself.
void SessionRecorder::ListMembers()
{
    m_listedMs = m_now();
    if (const auto members = m_peer->GetDPEnumPlayers())
        MembersListed(*members);
}

void SessionRecorder::MembersListed(std::span<const SessionMember> members)
{
    ForgetAbsent(members);
    if (!IsRecording())
        return;
    for (const SessionMember& member : members)
        WriteMember(member.Id, member.ShortName);
    const auto present = IdsOf(members);
    for (auto& [id, member] : m_members) {
        if (!member.Present || present.contains(id))
            continue;
        member.Present = false;
        Write(RecordKind::MemberLeft, id, {});
    }
}

void SessionRecorder::ForgetAbsent(std::span<const SessionMember> members)
{
    if (m_latest.empty())
        return;
    const auto present = IdsOf(members);
    std::erase_if(m_latest, [&present](const auto& latest) { return !present.contains(latest.first); });
}

void SessionRecorder::MemberNamed(PlayerId id, std::string_view name)
{
    if (IsRecording() && m_members.contains(id) && m_members[id].Present)
        WriteMember(id, name);
}

/// Notes a member that is there under a name: as joining, as renamed, or not at all.
void SessionRecorder::WriteMember(PlayerId id, std::string_view name)
{
    const ByteSpan payload = PayloadOf(name.substr(0, MaxRecordPayload));
    const auto [known, isNew] = m_members.try_emplace(id);
    Member& member = known->second;
    if (isNew || !member.Present)
        Write(RecordKind::MemberJoined, id, payload);
    else if (member.Name != name)
        Write(RecordKind::MemberRenamed, id, payload);
    member = {std::string(name), true};
}

/// A message's sender must be known before the message is written. One that has left already still has a name.
void SessionRecorder::Meet(PlayerId id)
{
    if (m_members.contains(id))
        return;
    ListMembers();
    if (m_members.contains(id))
        return;
    if (const auto name = m_peer->GetPlayerFriendlyName(id))
        WriteMember(id, *name);
}

void SessionRecorder::MessageReceived(const ReceivedMessage& message)
{
    if (message.From == SystemSender)
        return; // the transport's own news come in forms of its own; members are looked up instead
    Remember(message);
    if (!IsRecording() || message.Content.size() > MaxRecordPayload)
        return;
    Meet(message.From);
    Write(RecordKind::MemberSpoke, message.From, message.Content);
}

void SessionRecorder::MessageSent(PlayerId from, ByteSpan message)
{
    const auto header = DecodeHeader(message);
    if (IsRecording() && header && header->Type == MessageType::ChatText && message.size() <= MaxRecordPayload)
        Write(RecordKind::MemberSpoke, from, message);
}

/// Which of Latest a message belongs to, if any.
static std::optional<std::size_t> PlaceOf(MessageType type) noexcept
{
    switch (type) {
    case MessageType::PilotAnnounce:
    case MessageType::ObserverAnnounce: return 0;
    case MessageType::AircraftInfo: return 1;
    case MessageType::PositionShort:
    case MessageType::PositionFull: return 2;
    default: return std::nullopt;
    }
}

void SessionRecorder::Remember(const ReceivedMessage& message)
{
    constexpr std::size_t LongestRemembered = 4096; // bytes: the simulator's own have a tenth of it
    const auto header = DecodeHeader(message.Content);
    if (!header || message.Content.size() > LongestRemembered)
        return;
    const auto place = PlaceOf(header->Type);
    if (!place || (m_latest.size() >= MessagePump::MaxPlayers && !m_latest.contains(message.From)))
        return;
    m_latest[message.From][*place].assign(message.Content.begin(), message.Content.end());
}

void SessionRecorder::WriteRemembered(PlayerId id)
{
    const auto latest = m_latest.find(id);
    if (latest == m_latest.end())
        return;
    for (const Bytes& message : latest->second)
        if (!message.empty())
            Write(RecordKind::MemberSpoke, id, message);
}

void SessionRecorder::Write(RecordKind kind, PlayerId member, ByteSpan payload)
{
    if (!m_writer)
        return; // stopped by a failure in the middle of what is being noted
    constexpr std::int64_t LastMs = std::numeric_limits<std::uint32_t>::max(); // 49 days
    const std::int64_t time = std::clamp<std::int64_t>(ElapsedMs(), 0, LastMs);
    if (auto written = m_writer->Write({static_cast<std::uint32_t>(time), kind, member, payload}); !written) {
        m_failure = Fail(written.error().What, "the recording has stopped: " + written.error().Why);
        Stop();
    }
}
} // namespace corvane
