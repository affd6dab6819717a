#pragma once

#include "net/machine/PeerMachine.h"
#include "net/sockets/DirectPlayOptions.h"
#include "net/sockets/MessageQueue.h"

#include <functional>
#include <memory>
#include <unordered_map>

namespace corvane::directplay {
/// What the program's thread knows of the session: a finished picture, replaced as a whole.
struct Roster {
    bool InSession = false;
    bool Hosting = false;
    std::string LossReason; ///< why the session ended without our leaving it
    std::string SessionName;
    std::string InstanceGuid;
    std::uint32_t SessionFlags = 0;
    std::int32_t MaxPlayers = 0;
    std::vector<SessionMember> Players; ///< in order of arrival
    std::vector<SessionMember> Groups;
    std::unordered_map<PlayerId, std::string> Names; ///< of players that are or were in the session
    std::vector<PlayerId> OwnPlayers;
};

/// A peer's network thread. All members are called from the program's thread, except Cancel, which any thread may
/// call.
class PeerNetwork {
public:
    using Work = std::function<void(PeerMachine& machine, Millis now)>;

    /// Takes the peer's ports and starts its thread.
    static Result<std::unique_ptr<PeerNetwork>> Start(const DirectPlayOptions& options);
    ~PeerNetwork();
    PeerNetwork(const PeerNetwork&) = delete;
    PeerNetwork& operator=(const PeerNetwork&) = delete;
    PeerNetwork(PeerNetwork&&) = delete;
    PeerNetwork& operator=(PeerNetwork&&) = delete;

    /// Runs work on the network thread and waits for its end, which is never far: nothing there blocks.
    void Run(const Work& work);
    /// Starts a request and waits for its end, which the protocol's time limits bring.
    Result<WireId> Request(const Work& start, const std::function<bool()>& whileWaiting);
    /// Makes the request that is waiting fail, or the next one.
    void Cancel();
    /// Hands over a message to be sent. Waits, but never long, while a machine that does read has much to read.
    void Send(WireId from, WireId to, bool guaranteed, Bytes content);
    /// Leaves the session, and waits until the goodbyes are sent or the time for them is over.
    void Leave();

    [[nodiscard]] std::shared_ptr<const Roster> CurrentRoster() const;
    [[nodiscard]] MessageQueue& Queue();
    /// After messages have been taken from the queue.
    void OnTaken();
    [[nodiscard]] Result<SocketAddress> EnumerationAddress();
    [[nodiscard]] PacketCounters Counters();

private:
    class Impl;
    explicit PeerNetwork(std::unique_ptr<Impl> impl);
    std::unique_ptr<Impl> m_impl;
};
} // namespace corvane::directplay
