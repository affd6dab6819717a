#include "session/SessionState.h"

#include "session/PlayerTable.h"

namespace corvane {
Result<void> CreateSessionObjects(SessionPeerFactory& factory, SessionState& session)
{
    auto peer = factory.DirectPlayCreate();
    if (!peer)
        return peer.error();
    session.SessionPeer = std::move(*peer);
    auto connections = session.SessionPeer->GetDPEnumConnections();
    if (!connections)
        return connections.error();
    session.ConnectionList = std::move(*connections);
    return {};
}

void ReleaseSessionObjects(SessionState& session) noexcept
{
    session.ConnectionList.clear();
    session.SessionList.clear();
    session.OwnPlayerId = 0;
    session.SessionPeer.reset();
}

Result<void> LeaveSession(SessionPeerFactory& factory, SessionState& session, PlayerTable& players)
{
    if (session.SessionPeer) {
        if (session.SessionPeer->DestroyPlayer(session.OwnPlayerId))
            static_cast<void>(session.SessionPeer->Close());
    }
    ReleaseSessionObjects(session);
    session.SessionJoined = false;
    session.RadarOpen = false;
    players.Empty();
    return CreateSessionObjects(factory, session);
}

Result<void> SendFromOwnPlayer(const SessionState& session, PlayerId to, ByteSpan message)
{
    if (!session.HasOwnPlayer())
        return Fail("Send", "there is no own player");
    return session.SessionPeer->Send(session.OwnPlayerId, to, SendGuaranteed, message);
}

Result<std::string> OwnFriendlyName(const SessionState& session)
{
    if (!session.HasOwnPlayer())
        return Fail("GetPlayerFriendlyName", "there is no own player");
    return session.SessionPeer->GetPlayerFriendlyName(session.OwnPlayerId);
}
} // namespace corvane
