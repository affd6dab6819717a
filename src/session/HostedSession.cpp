#include "session/HostedSession.h"

#include "session/MemberManners.h"

#include <utility>

namespace corvane {
SessionEntry DescribeHosted(std::string name, std::int32_t maxPlayers, std::string password, bool migrates)
{
    const std::uint32_t flags =
        SessionKeepAlive | (migrates ? SessionMigrateHost : 0) | (password.empty() ? 0 : SessionPasswordRequired);
    return {.Name = std::move(name),
            .MaxPlayers = maxPlayers,
            .InstanceGuid = {},
            .Flags = flags,
            .Password = std::move(password)};
}

static Result<std::string> FirstAddress(SessionPeer& peer)
{
    const auto connections = peer.GetDPEnumConnections();
    if (!connections)
        return connections.error();
    if (connections->empty())
        return Fail("GetDPEnumConnections", "there is no connection type");
    return connections->front().Address;
}

Result<std::unique_ptr<SessionPeer>> ConnectedPeer(SessionPeerFactory& factory, const std::string& address)
{
    auto peer = factory.DirectPlayCreate();
    if (!peer)
        return peer;
    const auto place = address.empty() ? FirstAddress(**peer) : Result(address);
    if (!place)
        return place.error();
    if (const auto ready = (*peer)->InitializeConnection(*place); !ready)
        return ready.error();
    return peer;
}

Result<std::int32_t> CreateHosted(SessionPeer& peer, const SessionEntry& entry)
{
    if (const auto opened = peer.Open(entry, OpenCreate); !opened)
        return opened.error();
    return peer.CreateGroup(MemberManners::Group);
}
} // namespace corvane
