#pragma once

#include "net/machine/RateLimiter.h"
#include "net/machine/SessionTable.h"
#include "net/wire/DropReason.h"
#include "net/wire/WireMessages.h"

#include <array>
#include <random>

namespace corvane::directplay {
/// Packets seen, and dropped for each reason.
struct PacketCounters {
    std::uint64_t Received = 0;
    std::array<std::uint64_t, DropReasons> Dropped{};

    [[nodiscard]] std::uint64_t Of(DropReason reason) const { return Dropped[static_cast<std::size_t>(reason)]; }
    [[nodiscard]] std::uint64_t TotalDropped() const;
};

enum class RequestKind : std::uint8_t { None, Enumerate, Join, Player, Group };

/// The request that the program waits for: one at a time.
struct PendingRequest {
    struct Repeat {
        Millis At{};
        SocketAddress To;
        Bytes Message;
    };

    RequestKind Kind = RequestKind::None;
    Millis Deadline{};
    std::u16string ShortName{};
    std::u16string LongName{};
    std::vector<Repeat> Repeats{};         ///< of its question
    std::optional<SocketAddress> Stream{}; ///< kept open for its answers

    /// Whether it waits for an id.
    [[nodiscard]] bool WantsId() const noexcept { return Kind == RequestKind::Player || Kind == RequestKind::Group; }
};

/// What the duties of a peer share: the session's table, the way out, the request that runs, and the counters.
class PeerCommon {
public:
    PeerCommon(const PeerConfig& config, PeerOutput& output);

    /// Counts a packet that is not heeded; false, for whoever hands on whether a member sent it.
    bool Drop(DropReason reason);
    void Send(const SocketAddress& machine, const WireMessage& message);
    /// Nothing is sent where streams fail.
    void SendTo(const MachineEntry& machine, const WireMessage& message);
    void SendToOthers(const WireMessage& message, WireId except = 0);
    /// Answers over the transport that the question came by, without opening a connection for a stranger.
    void AnswerInKind(const Origin& origin, const WireMessage& message);
    [[nodiscard]] Bytes Encoded(const WireMessage& message) const;
    /// Whether somebody who is no member may have one more answer now.
    bool MayAnswer(const Origin& origin, Millis now) { return m_strangers.Allow(origin.Remote.Ip, now); }
    /// Ends the running request, if there is one.
    void Finish(Result<WireId> result);

    const PeerConfig Config;
    PeerOutput& Output;
    SessionTable Table;
    PendingRequest Request;
    PacketCounters Counters;
    std::mt19937_64 Random;

private:
    RateLimiter m_strangers;
};

/// What a duty leads to beyond itself.
class PeerCourse {
public:
    virtual ~PeerCourse() = default;
    /// Looks at a message that has become whole, or whose sender has become known. bare: from the signature or the
    /// sender's id on. True when a member sent it.
    virtual bool Dispatch(const Origin& origin, ByteSpan bare, Millis now) = 0;
    /// The session is over without our leaving it.
    virtual void LoseSession(std::string reason) = 0;
};
} // namespace corvane::directplay
