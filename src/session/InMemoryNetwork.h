#pragma once

#include "session/ConnectionProvider.h"
#include "session/InMemorySession.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
/// A network inside the process: the sessions that peers have made on it. Any number of peers join, all on one thread.
/// It must outlive its peers.
class InMemoryNetwork {
public:
    static constexpr std::size_t MessageLimit = 65536; ///< bytes; a longer message cannot be sent

    /// Creates a session with the machine as its host; the description gets an instance GUID of its own.
    std::shared_ptr<InMemorySession> Create(SessionEntry description, InMemoryMachine& host);
    /// The session of an instance GUID, or null.
    [[nodiscard]] std::shared_ptr<InMemorySession> Find(std::string_view instanceGuid) const;
    /// The sessions that can be joined: not full, and those with a password only where the flags ask for them.
    [[nodiscard]] std::vector<SessionEntry> Listing(std::uint32_t flags) const;
    /// Takes sessions that are lost off the list.
    void ForgetLostSessions();

    /// Cuts the machine of a player off without a farewell. It stays in the session's lists until DropVanished, as on
    /// a real network until the transport's time-out. Returns whether there is such a player.
    bool Vanish(std::string_view instanceGuid, PlayerId player);
    void DropVanished();

private:
    std::vector<std::shared_ptr<InMemorySession>> m_sessions;
    std::uint32_t m_created = 0;
};

/// Decides whether an operation is to fail. call counts, from 1, the operation's calls through the same provider.
/// Beside the operations of SessionPeer it is asked "DirectPlayCreate", and once for every listed session
/// "GetSessionItem", whose failure hands out an entry without an instance GUID, as a damaged answer would.
using FailureHook = std::function<bool(std::string_view operation, int call)>;

/// Offers the in-memory network as a connection type, and makes its peers.
class InMemoryProvider final : public ConnectionProvider, public SessionPeerFactory {
public:
    static constexpr std::string_view ConnectionName = "Practice session (simulated pilots)";
    static constexpr std::string_view ConnectionAddress = "in-memory";

    /// The hook, where there is one, can make any call of any of this provider's peers fail.
    explicit InMemoryProvider(InMemoryNetwork& network, FailureHook hook = {});

    [[nodiscard]] std::string Name() const override { return std::string(ConnectionName); }
    [[nodiscard]] std::string Address() const override { return std::string(ConnectionAddress); }
    Result<std::unique_ptr<SessionPeer>> CreatePeer() override;
    Result<std::unique_ptr<SessionPeer>> DirectPlayCreate(std::string_view guid) override;

private:
    InMemoryNetwork* m_network;
    std::shared_ptr<class FailurePlan> m_failures; ///< shared with the peers, which may outlive the provider
};
} // namespace corvane
