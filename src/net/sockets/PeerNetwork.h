#pragma once

#include "net/machine/PeerMachine.h"
#include "net/sockets/DirectPlayOptions.h"
#include "net/sockets/MessageQueue.h"
#include "net/sockets/Roster.h"

#include <functional>
#include <memory>

namespace corvane::directplay {
/// A peer's network thread. All members are called from the program's thread.
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
    /// Starts a request and waits for its end, which the protocol's time limits bring, or whileWaiting's false.
    Result<WireId> Request(const Work& start, const std::function<bool()>& whileWaiting);
    /// Hands over a message to be sent, without waiting. False, and nothing sent, when far too much waits already.
    bool Send(WireId from, WireId to, bool guaranteed, Bytes content);
    /// Leaves the session, and waits until the goodbyes are sent or the time for them is over.
    void Leave();

    /// True while so much waits to be sent that whoever can say less for a while should.
    [[nodiscard]] bool Congested() const;

    [[nodiscard]] const Roster& Members() const;
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
