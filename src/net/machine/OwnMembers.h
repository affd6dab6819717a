#pragma once

#include "net/machine/SessionHost.h"

namespace corvane::directplay {
/// The players and groups of this machine: their making, for which the host gives the id, and what it changes.
class OwnMembers {
public:
    OwnMembers(PeerCommon& common, SessionHost& host) : m_common(common), m_host(host) {}

    void CreatePlayer(std::u16string_view shortName, std::u16string_view longName, Millis now);
    void CreateGroup(std::u16string_view shortName, Millis now);
    /// The host's answer to the request for an id.
    bool OnId(const Origin& origin, const RequestPlayerReply& message, Millis now);
    /// Another machine hosts now: a request that waits for an id goes to it, or is granted if it is this one.
    void OnNewHost(Millis now);

    Result<void> SetPlayerName(WireId player, std::u16string_view shortName);
    Result<void> AddPlayerToGroup(WireId player, WireId group);
    Result<void> DestroyPlayer(WireId player);

private:
    void RequestId(Millis now);
    void AddPlayer(WireId id, Millis now);
    void AddGroup(WireId id);

    PeerCommon& m_common;
    SessionHost& m_host;
};
} // namespace corvane::directplay
