#pragma once

#include "net/memory/InMemorySession.h"
#include "session/ConnectionProvider.h"

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
    /// The sessions that an enumeration with these flags finds, in order of their making.
    [[nodiscard]] std::vector<SessionEntry> Listing(std::uint32_t flags) const;
    /// Takes sessions that are lost off the list.
    void ForgetLostSessions();

private:
    std::vector<std::shared_ptr<InMemorySession>> m_sessions;
    std::uint32_t m_created = 0;
};

/// Offers the in-memory network as a connection type, and makes its peers.
class InMemoryProvider final : public ConnectionProvider {
public:
    static constexpr std::string_view ConnectionName = "Practice session (simulated pilots)";
    static constexpr std::string_view ConnectionAddress = "in-memory";

    explicit InMemoryProvider(InMemoryNetwork& network) noexcept : m_network(&network) {}

    [[nodiscard]] std::string Name() const override { return std::string(ConnectionName); }
    [[nodiscard]] std::string Address() const override { return std::string(ConnectionAddress); }
    Result<std::unique_ptr<SessionPeer>> DirectPlayCreate() override;

private:
    InMemoryNetwork* m_network;
};
} // namespace corvane
