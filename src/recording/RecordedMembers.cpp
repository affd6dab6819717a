#include "recording/RecordedMembers.h"

#include "session/MessagePump.h"

namespace corvane {
RecordedMembers::RecordedMembers(const RecordingHead& head)
{
    Join(head.OwnPlayerId, head.OwnName);
    m_members.front().Announces = MessageType::PilotAnnounce;
}

const RecordedMember* RecordedMembers::Find(PlayerId id) const noexcept
{
    const auto found = m_index.find(id);
    return found == m_index.end() ? nullptr : &m_members[found->second];
}

RecordedMember* RecordedMembers::Known(PlayerId id) noexcept
{
    const auto found = m_index.find(id);
    return found == m_index.end() ? nullptr : &m_members[found->second];
}

void RecordedMembers::Join(PlayerId id, std::string_view name)
{
    if (RecordedMember* const known = Known(id)) {
        known->Name = name;
        known->Present = true;
    } else if (m_members.size() < MessagePump::MaxPlayers) {
        m_index.emplace(id, m_members.size());
        m_members.push_back({.Id = id, .Name = std::string(name), .Announces = {}, .Aircraft = {}});
    }
}

void RecordedMembers::Apply(const RecordView& record)
{
    if (record.Kind == RecordKind::MemberJoined)
        return Join(record.Member, NameIn(record.Payload));
    RecordedMember* const member = Known(record.Member);
    if (member == nullptr)
        return;
    if (record.Kind == RecordKind::MemberRenamed)
        member->Name = NameIn(record.Payload);
    else if (record.Kind == RecordKind::MemberSpoke)
        Learn(*member, record.Payload);
    else if (member != &m_members.front()) // the recorder stays, so that somebody is there to admit whoever watches
        member->Present = false;
}

void RecordedMembers::Learn(RecordedMember& member, ByteSpan message)
{
    const auto header = DecodeHeader(message);
    if (!header)
        return;
    if (header->Type == MessageType::PilotAnnounce || header->Type == MessageType::ObserverAnnounce)
        member.Announces = header->Type;
    else if (header->Type == MessageType::AircraftInfo)
        member.Aircraft = message;
}

MemberManners MannersOf(const RecordedMember& member, PlayerId id)
{
    MemberManners manners(id, member.Announces);
    if (!member.Aircraft.empty() && IsPlayed(member.Aircraft))
        manners.SetAircraft(Bytes(member.Aircraft.begin(), member.Aircraft.end()));
    return manners;
}

bool IsPlayed(ByteSpan message)
{
    const auto header = DecodeHeader(message);
    if (!header)
        return false;
    switch (header->Type) {
    case MessageType::HostLeft:
    case MessageType::RemovedByHost:
    case MessageType::JoinRefused:
    case MessageType::ObserverJoinRefused: return false;
    default: return DecodeMessage(message).has_value();
    }
}
} // namespace corvane
