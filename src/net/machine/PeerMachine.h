#pragma once

#include "net/machine/Joining.h"
#include "net/machine/OtherMembers.h"
#include "net/machine/Succession.h"

#include <utility>

namespace corvane::directplay {
/// One machine's part in the protocol, without sockets, threads or a clock of its own: it is fed packets with their
/// origins and the time, and puts out packets. Everything that strangers send may be fed to it. It finds out what a
/// packet is and gives it to the duty that it concerns.
///
/// The choices that the protocol leaves open follow what other machines tolerate; where one matters, the function
/// that makes it says so.
class PeerMachine final : private PeerCourse {
public:
    PeerMachine(const PeerConfig& config, PeerOutput& output);
    PeerMachine(const PeerMachine&) = delete;
    PeerMachine& operator=(const PeerMachine&) = delete;
    PeerMachine(PeerMachine&&) = delete;
    PeerMachine& operator=(PeerMachine&&) = delete;
    ~PeerMachine() override = default;

    // What arrives. The first two say whether a member of the session sent it.
    bool OnStream(const StreamSource& source, ByteSpan message, Millis now);
    bool OnDatagram(const DatagramSource& source, ByteSpan packet, Millis now);
    /// A machine could not be reached again although it was tried twice, or stopped reading.
    void OnStreamFailed(const SocketAddress& machine, Millis now);
    void OnStreamClosed(ConnectionId connection) { m_common.Table.ForgetStream(connection); }
    /// A packet that was dropped before it reached the machine.
    void CountDrop(DropReason reason) { m_common.Drop(reason); }
    void Tick(Millis now);

    // Requests: one at a time, answered through PeerOutput::RequestDone, perhaps at once.
    void Enumerate(const EnumerateRequest& request, Millis now) { m_search.Begin(request, now); }
    void Join(const Guid& instance, std::u16string_view password, Millis now);
    void Host(const HostRequest& request, Millis now) { m_host.Begin(request, now); }
    void CreatePlayer(std::u16string_view shortName, std::u16string_view longName, Millis now);
    void CreateGroup(std::u16string_view shortName, Millis now) { m_own.CreateGroup(shortName, now); }
    /// Drops the running request; a join that has begun is given up.
    void CancelRequest();

    // Operations that are done when they return. They fail outside a session and for ids that are not right.
    Result<void> SetPlayerName(WireId player, std::u16string_view shortName);
    Result<void> AddPlayerToGroup(WireId player, WireId group) { return m_own.AddPlayerToGroup(player, group); }
    Result<void> DestroyPlayer(WireId player) { return m_own.DestroyPlayer(player); }
    /// to: a player, a group, or EveryPlayer. A player that has left takes messages without an error: the program
    /// may still be answering messages that wait in its queue.
    Result<void> Send(WireId from, WireId to, bool guaranteed, ByteSpan content);
    /// Says goodbye and leaves. The streams are the surroundings' to close once all is sent.
    void Leave();

    [[nodiscard]] const std::vector<FoundSession>& Found() const noexcept { return m_search.Found(); }
    [[nodiscard]] bool InSession() const noexcept { return m_common.Table.InSession(); }
    [[nodiscard]] bool Hosting() const noexcept { return m_common.Table.Hosting(); }
    /// Why the last session ended without our leaving it; empty while one runs.
    [[nodiscard]] const std::string& LossReason() const noexcept { return m_common.Table.LossReason; }
    [[nodiscard]] WireId OwnSystemPlayer() const noexcept { return m_common.Table.OwnId; }
    [[nodiscard]] WireId HostSystemPlayer() const noexcept { return m_common.Table.HostId; }
    [[nodiscard]] const SessionDescription& Description() const noexcept { return m_common.Table.Description; }
    [[nodiscard]] const std::u16string& SessionName() const noexcept { return m_common.Table.Name; }
    [[nodiscard]] const NameTable& Table() const noexcept { return m_common.Table.Names; }
    [[nodiscard]] bool IsOwnPlayer(WireId player) const { return m_common.Table.IsOwnPlayer(player); }
    /// Short name of a player that is or was in this session.
    [[nodiscard]] std::optional<std::u16string> NameOf(WireId player) const { return m_common.Table.NameOf(player); }
    /// What has changed since this was called last.
    [[nodiscard]] SessionChanges TakeChanges() { return std::exchange(m_common.Table.Changes, {}); }
    [[nodiscard]] const PacketCounters& Counters() const noexcept { return m_common.Counters; }
    /// Bytes held for later: messages of unknown senders and unfinished pieces. Always capped.
    [[nodiscard]] std::size_t HeldBytes() const noexcept { return m_delivery.HeldBytes(); }

private:
    struct Receiver;

    bool Dispatch(const Origin& origin, ByteSpan bare, Millis now) override;
    void LoseSession(std::string reason) override;

    bool OnPacket(Origin origin, bool enumeration, ByteSpan packet, Millis now);
    bool DispatchManagement(Origin origin, ByteSpan bare, Millis now);
    bool OnEntered(std::optional<WireId> player, Millis now);
    bool AdmitMachine(const Origin& origin, const AddForwardRequest& message, Millis now);
    bool Follow(const JoinStep& step, Millis now);
    void FailJoin(std::string why);
    void EndRequestInTime(Millis now);
    void ResetSession();

    PeerCommon m_common;
    SessionSearch m_search{m_common};
    Joining m_joining{m_common};
    SessionHost m_host{m_common};
    Liveness m_liveness{m_common};
    Delivery m_delivery{m_common, *this};
    OwnMembers m_own{m_common, m_host};
    OtherMembers m_others{m_common, m_host};
    Succession m_succession{m_common, {m_host, m_delivery, m_liveness, m_own}, *this};
};
} // namespace corvane::directplay
