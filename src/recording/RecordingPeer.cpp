#include "recording/RecordingPeer.h"

namespace corvane {
void RecordingPeer::Left() noexcept
{
    if (m_joined)
        m_recorder.SessionClosed();
    m_joined = false;
}

Result<void> RecordingPeer::Open(const SessionEntry& session, std::uint32_t flags)
{
    auto opened = ForwardingPeer::Open(session, flags);
    if (opened && flags == OpenJoin) { // a session that is created has no instance GUID yet to list its members by
        m_recorder.SessionOpened(*Target(), session);
        m_joined = true;
    }
    return opened;
}

Result<PlayerId> RecordingPeer::CreatePlayer(std::string_view friendlyName, std::string_view formalName)
{
    auto created = ForwardingPeer::CreatePlayer(friendlyName, formalName);
    if (created && m_joined)
        m_recorder.OwnPlayerCreated(*created, friendlyName);
    return created;
}

Result<std::vector<SessionMember>> RecordingPeer::GetDPEnumPlayers()
{
    auto members = ForwardingPeer::GetDPEnumPlayers();
    if (members && m_joined)
        m_recorder.MembersListed(*members);
    return members;
}

Result<std::int32_t> RecordingPeer::GetMessageCount(PlayerId player)
{
    if (m_joined)
        m_recorder.QueueRead();
    return ForwardingPeer::GetMessageCount(player);
}

Result<ReceivedMessage> RecordingPeer::Receive()
{
    auto message = ForwardingPeer::Receive();
    if (message && m_joined)
        m_recorder.MessageReceived(*message);
    return message;
}

Result<void> RecordingPeer::Send(PlayerId from, PlayerId to, std::uint32_t flags, ByteSpan message)
{
    auto sent = ForwardingPeer::Send(from, to, flags, message);
    if (sent && m_joined)
        m_recorder.MessageSent(from, message);
    return sent;
}

Result<std::string> RecordingPeer::GetPlayerFriendlyName(PlayerId player)
{
    auto name = ForwardingPeer::GetPlayerFriendlyName(player);
    if (name && m_joined)
        m_recorder.MemberNamed(player, *name);
    return name;
}

Result<void> RecordingPeer::Close()
{
    Left();
    return ForwardingPeer::Close();
}

Result<std::unique_ptr<SessionPeer>> RecordingPeerFactory::DirectPlayCreate()
{
    auto inner = m_inner.DirectPlayCreate();
    if (!inner)
        return inner.error();
    return std::unique_ptr<SessionPeer>(std::make_unique<RecordingPeer>(*std::move(inner), m_recorder));
}
} // namespace corvane
