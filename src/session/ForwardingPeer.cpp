#include "session/ForwardingPeer.h"

namespace corvane {
/// Calls an operation of the target, whose name the Error bears where there is no target.
template <class Operation>
static auto Forward(const std::shared_ptr<SessionPeer>& target, const char* name, Operation operation)
    -> decltype(operation(*target))
{
    if (!target)
        return Fail(name, "no connection is initialized");
    return operation(*target);
}

Result<std::vector<ConnectionEntry>> ForwardingPeer::GetDPEnumConnections()
{
    return Forward(m_target, "GetDPEnumConnections", [&](SessionPeer& peer) { return peer.GetDPEnumConnections(); });
}

Result<void> ForwardingPeer::InitializeConnection(std::string_view address)
{
    return Forward(m_target, "InitializeConnection",
                   [&](SessionPeer& peer) { return peer.InitializeConnection(address); });
}

Result<std::vector<SessionEntry>> ForwardingPeer::GetDPEnumSessions(std::int32_t timeoutMs, std::uint32_t flags)
{
    return Forward(m_target, "GetDPEnumSessions",
                   [&](SessionPeer& peer) { return peer.GetDPEnumSessions(timeoutMs, flags); });
}

Result<void> ForwardingPeer::Open(const SessionEntry& session, std::uint32_t flags)
{
    return Forward(m_target, "Open", [&](SessionPeer& peer) { return peer.Open(session, flags); });
}

Result<PlayerId> ForwardingPeer::CreatePlayer(std::string_view friendlyName, std::string_view formalName)
{
    return Forward(m_target, "CreatePlayer",
                   [&](SessionPeer& peer) { return peer.CreatePlayer(friendlyName, formalName); });
}

Result<void> ForwardingPeer::SetPlayerName(PlayerId player, std::string_view friendlyName)
{
    return Forward(m_target, "SetPlayerName",
                   [&](SessionPeer& peer) { return peer.SetPlayerName(player, friendlyName); });
}

Result<std::int32_t> ForwardingPeer::CreateGroup(std::string_view shortName)
{
    return Forward(m_target, "CreateGroup", [&](SessionPeer& peer) { return peer.CreateGroup(shortName); });
}

Result<std::vector<SessionMember>> ForwardingPeer::GetDPEnumGroups()
{
    return Forward(m_target, "GetDPEnumGroups", [&](SessionPeer& peer) { return peer.GetDPEnumGroups(); });
}

Result<void> ForwardingPeer::AddPlayerToGroup(std::int32_t group, PlayerId player)
{
    return Forward(m_target, "AddPlayerToGroup",
                   [&](SessionPeer& peer) { return peer.AddPlayerToGroup(group, player); });
}

Result<std::vector<SessionMember>> ForwardingPeer::GetDPEnumPlayers()
{
    return Forward(m_target, "GetDPEnumPlayers", [&](SessionPeer& peer) { return peer.GetDPEnumPlayers(); });
}

Result<std::int32_t> ForwardingPeer::GetMessageCount(PlayerId player)
{
    return Forward(m_target, "GetMessageCount", [&](SessionPeer& peer) { return peer.GetMessageCount(player); });
}

Result<ReceivedMessage> ForwardingPeer::Receive()
{
    return Forward(m_target, "Receive", [&](SessionPeer& peer) { return peer.Receive(); });
}

Result<void> ForwardingPeer::Send(PlayerId from, PlayerId to, std::uint32_t flags, ByteSpan message)
{
    return Forward(m_target, "Send", [&](SessionPeer& peer) { return peer.Send(from, to, flags, message); });
}

Result<std::string> ForwardingPeer::GetPlayerFriendlyName(PlayerId player)
{
    return Forward(m_target, "GetPlayerFriendlyName",
                   [&](SessionPeer& peer) { return peer.GetPlayerFriendlyName(player); });
}

Result<void> ForwardingPeer::DestroyPlayer(PlayerId player)
{
    return Forward(m_target, "DestroyPlayer", [&](SessionPeer& peer) { return peer.DestroyPlayer(player); });
}

Result<void> ForwardingPeer::Close()
{
    return Forward(m_target, "Close", [&](SessionPeer& peer) { return peer.Close(); });
}
} // namespace corvane
