#pragma once

#include "core/MillisecondClock.h"
#include "session/ConnectionProvider.h"
#include "traffic/TrafficDetails.h"
#include "traffic/TrafficFeed.h"

#include <functional>
#include <memory>
#include <string>

namespace corvane {
/// One kind of traffic from outside as a type of connection.
struct TrafficConnection {
    std::string Name;    ///< in the list of connection types
    std::string Address; ///< what InitializeConnection takes
    /// Makes the feed when sessions are looked for, asking the user where to listen if that has to be asked.
    std::function<Result<std::unique_ptr<TrafficFeed>>()> Open;
    MillisecondClock Clock = SteadyMilliseconds();
    /// How long a look for sessions listens before it lists the one that there is; it ends with the first aircraft.
    std::int64_t ListenMs = 0;
    /// Asked about 20 times a second meanwhile; false leaves the look, which then fails. None: never left.
    std::function<bool()> WhileWaiting = {};
    /// Of the link; none: they are lines of chat.
    std::function<void(std::string_view)> OnNotice = {};
    /// Makes the peers of a session that other programs can join, too; null: it is this program's alone. Asked with
    /// every look for sessions. None: always this program's alone.
    std::function<SessionPeerFactory*()> Network = {};
    /// How the link is, in a few words, about once a second; empty when it has ended.
    std::function<void(std::string)> OnHealth = {};
};

/// Offers traffic from outside as a session, of this program's own memory or on a network, in which its aircraft are
/// members. A peer keeps its session going with every look for messages or members.
///
/// Its peers, of which each has a feed of its own, may outlive it, but neither the details nor the network.
class TrafficProvider final : public ConnectionProvider {
public:
    /// details  of the members, for whoever shows them
    TrafficProvider(TrafficConnection connection, TrafficDetailsTable& details)
        : m_connection(std::make_shared<const TrafficConnection>(std::move(connection))), m_details(details)
    {
    }

    [[nodiscard]] std::string Name() const override { return m_connection->Name; }
    [[nodiscard]] std::string Address() const override { return m_connection->Address; }
    Result<std::unique_ptr<SessionPeer>> DirectPlayCreate() override;

private:
    std::shared_ptr<const TrafficConnection> m_connection;
    TrafficDetailsTable& m_details;
};
} // namespace corvane
