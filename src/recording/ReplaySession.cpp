#include "recording/ReplaySession.h"

#include "recording/RecordedPast.h"
#include "session/HostedSession.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace corvane {
ReplaySession::ReplaySession(std::shared_ptr<const Recording> recording, PlaybackClock& clock)
    : m_recording(std::move(recording)), m_clock(clock), m_members(m_recording->Head)
{
}

Result<std::unique_ptr<ReplaySession>> ReplaySession::Create(SessionPeerFactory& factory,
                                                             std::shared_ptr<const Recording> recording,
                                                             PlaybackClock& clock, const ReplayOptions& options)
{
    std::unique_ptr<ReplaySession> session(new ReplaySession(std::move(recording), clock));
    if (auto opened = session->Open(factory, options); !opened)
        return opened.error();
    return session;
}

/// The most members that are there at the same time, the one that recorded included.
static std::int32_t MostPresent(const Recording& recording)
{
    std::unordered_set<PlayerId> present{recording.Head.OwnPlayerId};
    std::size_t most = 1;
    for (const RecordView& record : recording.Records) {
        if (record.Kind == RecordKind::MemberJoined)
            present.insert(record.Member);
        else if (record.Kind == RecordKind::MemberLeft && record.Member != recording.Head.OwnPlayerId)
            present.erase(record.Member);
        most = std::max(most, present.size());
    }
    return static_cast<std::int32_t>(most);
}

Result<void> ReplaySession::Open(SessionPeerFactory& factory, const ReplayOptions& options)
{
    constexpr std::int32_t RoomForOthers = 8;
    auto peer = ConnectedPeer(factory, {});
    if (!peer)
        return peer.error();
    m_peer = *std::move(peer);
    m_entry = DescribeHosted(options.SessionName.empty() ? m_recording->Head.SessionName : options.SessionName,
                             options.MaxPlayers > 0 ? options.MaxPlayers : MostPresent(*m_recording) + RoomForOthers,
                             options.Password, options.MigrateHost);
    if (const auto created = CreateHosted(*m_peer, m_entry); !created)
        return created.error();
    const auto host = m_peer->CreatePlayer(HostName(), MemberManners::FormalName);
    if (!host)
        return host.error();
    m_hostId = *host;
    m_liveIds.emplace(m_members.Recorder().Id, m_hostId);
    m_recordedIds.emplace(m_hostId, m_members.Recorder().Id);
    m_clock.Open(m_recording->LengthMs(), options.BeginMs);
    m_clock.Begin();
    PassOverPast();
    PlayUpToNow();
    return {};
}

/// Nobody has joined yet who could hear what was said.
void ReplaySession::PassOverPast()
{
    const std::int64_t begin = m_clock.PositionMs();
    static_cast<void>(PassOver(m_recording->Records, begin, m_members));
    m_next = FirstAt(m_recording->Records, begin);
    for (const RecordedMember& member : m_members.All())
        if (member.Present && member.Id != m_members.Recorder().Id)
            Join(member.Id, member.Name);
}

Result<void> ReplaySession::Advance()
{
    if (!m_peer)
        return {};
    if (auto received = ReceiveAll(); !received)
        return received;
    PlayUpToNow();
    return {};
}

/// Exactly the messages that wait now, so that a flood cannot keep the call going.
Result<void> ReplaySession::ReceiveAll()
{
    constexpr std::int64_t MostAtOnce = 65536;
    std::int64_t waiting = 0;
    for (const auto& [recorded, live] : m_liveIds) {
        const auto count = m_peer->GetMessageCount(live);
        if (!count)
            return count.error();
        waiting += *count;
    }
    waiting = std::min(waiting, MostAtOnce);
    for (std::int64_t i = 0; i < waiting; ++i) {
        const auto message = m_peer->Receive();
        if (!message)
            break; // fewer than counted, or the next count says that the session is gone
        if (message->From != SystemSender)
            Answer(*message);
    }
    return {};
}

void ReplaySession::Answer(const ReceivedMessage& message)
{
    const auto header = DecodeHeader(message.Content);
    const auto recorded = m_recordedIds.find(message.To);
    if (!header || recorded == m_recordedIds.end())
        return;
    if (MemberManners::AsksForAdmission(header->Type)) {
        if (message.To == m_hostId && !m_recordedIds.contains(message.From))
            Send(m_hostId, message.From, MemberManners::Admission(header->Type, message.From, true));
        return;
    }
    const RecordedMember* const member = std::as_const(m_members).Find(recorded->second);
    const Bytes answer = member != nullptr ? MannersOf(*member, message.To).AnswerTo(header->Type) : Bytes();
    if (!answer.empty())
        Send(message.To, message.From, answer);
}

void ReplaySession::PlayUpToNow()
{
    const std::int64_t now = m_clock.PositionMs();
    const auto& records = m_recording->Records;
    for (; m_next < records.size() && records[m_next].TimeMs <= now; ++m_next)
        Play(records[m_next]);
}

void ReplaySession::Play(const RecordView& record)
{
    m_members.Apply(record);
    if (record.Kind == RecordKind::MemberJoined)
        return Join(record.Member, NameIn(record.Payload));
    const auto found = m_liveIds.find(record.Member);
    if (found == m_liveIds.end())
        return;
    const PlayerId live = found->second;
    if (record.Kind == RecordKind::MemberRenamed) {
        static_cast<void>(m_peer->SetPlayerName(live, NameIn(record.Payload))); // keeps its old name then
    } else if (record.Kind == RecordKind::MemberSpoke) {
        Speak(live, record);
    } else if (live != m_hostId) {
        static_cast<void>(m_peer->DestroyPlayer(live));
        m_recordedIds.erase(live);
        m_liveIds.erase(found);
    }
}

/// A member for which the session has no room stays away, and what it says is not heard.
void ReplaySession::Join(PlayerId recorded, std::string_view name)
{
    if (const auto known = m_liveIds.find(recorded); known != m_liveIds.end()) {
        static_cast<void>(m_peer->SetPlayerName(known->second, name));
        return;
    }
    const auto live = m_peer->CreatePlayer(name, MemberManners::FormalName);
    if (!live)
        return;
    m_liveIds.emplace(recorded, *live);
    m_recordedIds.emplace(*live, recorded);
}

/// Says what a member said; an announcement speaks of players by the ids that they have here.
void ReplaySession::Speak(PlayerId live, const RecordView& record)
{
    if (!IsPlayed(record.Payload))
        return;
    const auto message = DecodeMessage(record.Payload);
    const AnnounceMessage* const announce = message ? std::get_if<AnnounceMessage>(&*message) : nullptr;
    if (announce == nullptr)
        return Send(live, AllPlayers, record.Payload);
    const auto about = m_liveIds.find(announce->PlayerId);
    Send(live, AllPlayers,
         EncodeMessage(AnnounceMessage{announce->Type, about == m_liveIds.end() ? live : about->second}));
}

/// A failure is the session's, which the next look for messages meets.
void ReplaySession::Send(PlayerId from, PlayerId to, ByteSpan message)
{
    static_cast<void>(m_peer->Send(from, to, SendGuaranteed, message));
}

void ReplaySession::End()
{
    if (!m_peer)
        return;
    for (const auto& [recorded, live] : m_liveIds)
        if (live != m_hostId)
            static_cast<void>(m_peer->DestroyPlayer(live)); // failures are not news to someone who leaves
    Send(m_hostId, AllPlayers, MemberManners::Farewell());
    static_cast<void>(m_peer->DestroyPlayer(m_hostId));
    static_cast<void>(m_peer->Close());
    m_peer.reset();
    m_liveIds.clear();
    m_recordedIds.clear();
    m_clock.Close();
}
} // namespace corvane
