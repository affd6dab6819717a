#pragma once

#include "core/Result.h"
#include "net/machine/DepartedPlayers.h"
#include "net/machine/IdAllotment.h"
#include "net/machine/NameTable.h"
#include "net/machine/Pieces.h"
#include "net/machine/RateLimiter.h"

#include <array>
#include <deque>
#include <random>
#include <utility>

namespace corvane::directplay {
/// Names a stream of the socket layer.
using ConnectionId = std::uint64_t;

/// Where a message on a stream came from.
struct StreamSource {
    ConnectionId Connection = 0;
    SocketAddress Remote;      ///< the other end of the connection
    std::uint32_t LocalIp = 0; ///< our own end
    SocketAddress Opened;      ///< the machine's announced address when we opened the connection; port 0 otherwise
    bool Enumeration = false;  ///< it came to the enumeration port
};

struct DatagramSource {
    SocketAddress Remote;
    bool Enumeration = false;
};

/// What the state machine asks of its surroundings. Nothing here may call back into the machine.
class PeerOutput {
public:
    virtual ~PeerOutput() = default;

    /// Guaranteed and in order, over the one connection that is kept to a machine's announced stream address.
    virtual void SendStream(const SocketAddress& machine, Bytes message) = 0;
    /// An answer to someone who is no member: no connection is kept for it, and none opened beyond a small number.
    virtual void SendStreamOnce(const SocketAddress& machine, Bytes message) = 0;
    /// Over a connection that is open already, if it still is.
    virtual void SendBack(ConnectionId connection, Bytes message) = 0;
    virtual void SendDatagram(const SocketAddress& to, Bytes message) = 0;
    /// Sends what waits for a machine and closes the connection to it.
    virtual void CloseStream(const SocketAddress& machine) = 0;
    /// Closes the connection to a machine that nothing more is to be said to, connected or not.
    virtual void DropStream(const SocketAddress& machine) = 0;
    /// This peer became a host, or ceased to be one.
    virtual void OpenEnumerationPorts() = 0;
    virtual void CloseEnumerationPorts() = 0;
    /// A message for the program. machine is the system player of the machine that sent it.
    virtual void Deliver(WireId machine, WireId from, WireId to, ByteSpan content) = 0;
    /// The request that the program waits for is done; the value is a new id, or 0.
    virtual void RequestDone(Result<WireId> result) = 0;
};

/// What a peer needs to know about its sockets, and its choices.
struct PeerConfig {
    PeerTimers Timers;
    std::uint16_t StreamPort = 0;   ///< of the own listener
    std::uint16_t DatagramPort = 0; ///< of the own datagram socket
    bool PiecesByDatagram = false;  ///< large messages that are not guaranteed: in pieces instead of over the stream
    std::uint64_t Seed = 0;         ///< of the random parts of new sessions
};

struct FoundSession {
    SessionDescription Description;
    std::u16string Name;
    SocketAddress Host; ///< its stream address
};

struct EnumerateRequest {
    Guid Application; ///< empty: any
    std::uint32_t Flags = 0;
    std::optional<std::u16string> Password;
    std::optional<SocketAddress> Host; ///< its enumeration address; none: broadcast
    SocketAddress Broadcast;
    Millis Time{0}; ///< 0: the protocol's, or until a host that is asked by its address has answered
};

struct HostRequest {
    std::u16string Name;
    std::u16string Password;
    Guid Application;
    std::uint32_t Flags = 0;
    std::uint32_t MaxPlayers = 0; ///< 0: no limit
};

/// Packets seen, and dropped for each reason.
struct PacketCounters {
    std::uint64_t Received = 0;
    std::array<std::uint64_t, DropReasons> Dropped{};

    [[nodiscard]] std::uint64_t Of(DropReason reason) const { return Dropped[static_cast<std::size_t>(reason)]; }
    [[nodiscard]] std::uint64_t TotalDropped() const;
};

/// What has changed in a session, so that whoever keeps a picture of it need not look at everything again.
struct SessionChanges {
    bool Session = false;   ///< whether there is one, who hosts it, why it ended
    bool Everybody = false; ///< any player or group may have
    std::set<WireId> Ids;   ///< players and groups that came, left, or go by another name

    [[nodiscard]] bool Any() const noexcept { return Session || Everybody || !Ids.empty(); }
};

/// One machine's part in the protocol, without sockets, threads or a clock of its own: it is fed packets with their
/// origins and the time, and puts out packets. Everything that strangers send may be fed to it.
///
/// The choices that the protocol leaves open follow what other machines tolerate; where one matters, the function
/// that makes it says so.
class PeerMachine {
public:
    PeerMachine(const PeerConfig& config, PeerOutput& output);

    // What arrives. The first two say whether a member of the session sent it.
    bool OnStream(const StreamSource& source, ByteSpan message, Millis now);
    bool OnDatagram(const DatagramSource& source, ByteSpan packet, Millis now);
    /// A machine could not be reached again although it was tried twice, or stopped reading.
    void OnStreamFailed(const SocketAddress& machine, Millis now);
    void OnStreamClosed(ConnectionId connection) { m_boundStreams.erase(connection); }
    /// A packet that was dropped before it reached the machine.
    void CountDrop(DropReason reason) { ++m_counters.Dropped[static_cast<std::size_t>(reason)]; }
    void Tick(Millis now);

    // Requests: one at a time, answered through PeerOutput::RequestDone, perhaps at once.
    void Enumerate(const EnumerateRequest& request, Millis now);
    void Join(const Guid& instance, std::u16string_view password, Millis now);
    void Host(const HostRequest& request, Millis now);
    void CreatePlayer(std::u16string_view shortName, std::u16string_view longName, Millis now);
    void CreateGroup(std::u16string_view shortName, Millis now);
    /// Drops the running request; a join that has begun is given up.
    void CancelRequest();

    // Operations that are done when they return. They fail outside a session and for ids that are not right.
    Result<void> SetPlayerName(WireId player, std::u16string_view shortName);
    Result<void> AddPlayerToGroup(WireId player, WireId group);
    Result<void> DestroyPlayer(WireId player);
    /// to: a player, a group, or EveryPlayer. A player that has left takes messages without an error: the program
    /// may still be answering messages that wait in its queue.
    Result<void> Send(WireId from, WireId to, bool guaranteed, ByteSpan content, Millis now);
    /// Says goodbye and leaves. The streams are the surroundings' to close once all is sent.
    void Leave();

    [[nodiscard]] const std::vector<FoundSession>& Found() const noexcept { return m_found; }
    [[nodiscard]] bool InSession() const noexcept { return m_phase == Phase::Member; }
    [[nodiscard]] bool Hosting() const noexcept { return InSession() && m_hostId == m_ownId; }
    /// Why the last session ended without our leaving it; empty while one runs.
    [[nodiscard]] const std::string& LossReason() const noexcept { return m_lossReason; }
    [[nodiscard]] WireId OwnSystemPlayer() const noexcept { return m_ownId; }
    [[nodiscard]] WireId HostSystemPlayer() const noexcept { return m_hostId; }
    [[nodiscard]] const SessionDescription& Description() const noexcept { return m_description; }
    [[nodiscard]] const std::u16string& SessionName() const noexcept { return m_sessionName; }
    [[nodiscard]] const NameTable& Table() const noexcept { return m_table; }
    [[nodiscard]] bool IsOwnPlayer(WireId player) const;
    /// Short name of a player that is or was in this session.
    [[nodiscard]] std::optional<std::u16string> NameOf(WireId player) const;
    /// What has changed since this was called last.
    [[nodiscard]] SessionChanges TakeChanges() { return std::exchange(m_changes, {}); }
    [[nodiscard]] const PacketCounters& Counters() const noexcept { return m_counters; }
    /// Bytes held for later: messages of unknown senders and unfinished pieces. Always capped.
    [[nodiscard]] std::size_t HeldBytes() const noexcept { return m_heldBytes + m_pieces.Held(); }

private:
    enum class Phase : std::uint8_t { Idle, WaitingForId, WaitingForTable, Member };
    enum class RequestKind : std::uint8_t { None, Enumerate, Join, Player, Group };

    /// Where a message came from, as far as that matters to its meaning.
    struct Origin {
        SocketAddress Machine; ///< source address and stated stream port: the key of a machine
        SocketAddress Remote;
        std::uint32_t LocalIp = 0;
        std::optional<ConnectionId> Connection{}; ///< none for a datagram
        bool Opened = false;                      ///< we opened the connection to that machine
        std::uint16_t StatedPort = 0;             ///< the sender's stream port, as it says
        std::uint16_t Version = OwnVersion;
        bool Nested = false; ///< it came out of pieces
    };
    struct PendingRequest {
        RequestKind Kind = RequestKind::None;
        Millis Deadline{};
        std::u16string ShortName{};
        std::u16string LongName{};
    };
    struct Repeat {
        Millis At{};
        SocketAddress To;
        Bytes Message;
    };
    /// An id that a host has given out and that has not come into use.
    struct Reservation {
        WireId Id = 0;
        SocketAddress Machine;
        RequestKind Kind = RequestKind::None;
        std::optional<ConnectionId> Connection;
        Millis Deadline{};
    };
    /// A joiner whose table waits for the acknowledgements of the others.
    struct Admission {
        WireId Joiner = 0;
        std::set<WireId> Waiting;
        Millis Deadline{};
    };
    struct HeldMessage {
        Origin From;
        Bytes Content;     ///< bare: from the signature or the sender's id on
        WireId Sender = 0; ///< of a player message; 0 for what waits for the table
        Millis Since{};
    };

    // Dispatch (PeerMachine.cpp)
    bool Dispatch(const Origin& origin, ByteSpan bare, bool management, Millis now);
    bool DispatchManagement(Origin origin, ByteSpan bare, Millis now);
    bool Drop(DropReason reason);
    [[nodiscard]] MachineEntry* MemberAt(const Origin& origin);
    [[nodiscard]] bool FromHost(const Origin& origin);
    [[nodiscard]] bool FromAskedHost(const Origin& origin) const;
    static void Heard(MachineEntry& machine, Millis now);
    void SendTo(const MachineEntry& machine, const WireMessage& message);
    void SendToOthers(const WireMessage& message, WireId except = 0);
    /// Answers over the transport that the question came by, without opening a connection for a stranger.
    void AnswerInKind(const Origin& origin, const WireMessage& message);
    void Finish(Result<WireId> result);
    void LoseSession(std::string reason);
    void ResetSession();
    void Changed(WireId id) { m_changes.Ids.insert(id); }

    // Enumeration and joining (PeerMachineJoin.cpp)
    bool Handle(const Origin& origin, const EnumSessionsReply& message, Millis now);
    bool Handle(const Origin& origin, const RequestPlayerReply& message, Millis now);
    bool Handle(const Origin& origin, const AddForwardReply& message, Millis now);
    bool Handle(const Origin& origin, const SuperEnumPlayersReply& message, Millis now);
    bool Handle(const Origin& origin, const EnumPlayersReply& message, Millis now);
    bool Handle(const Origin& origin, const AddForward& message, Millis now);
    bool Handle(const Origin& origin, const LoginFailed& message, Millis now);
    void TickRequest(Millis now);
    void FailJoin(std::string why);
    void RequestId(Millis now);
    void OnJoinId(const RequestPlayerReply& message, Millis now);
    void OnTable(const Origin& origin, const SuperEnumPlayersReply& message, Millis now);
    void MergeEntry(const Origin& origin, const SuperPackedPlayer& entry, Millis now);
    void MergeGroup(const SuperPackedPlayer& entry);

    // Hosting (PeerMachineHost.cpp)
    bool Handle(const Origin& origin, const EnumSessions& message, Millis now);
    bool Handle(const Origin& origin, const EnumPlayer& message, Millis now);
    bool Handle(const Origin& origin, const RequestPlayerId& message, Millis now);
    bool Handle(const Origin& origin, const RequestGroupId& message, Millis now);
    bool Handle(const Origin& origin, const AddForwardRequest& message, Millis now);
    bool Handle(const Origin& origin, const AddForwardAck& message, Millis now);
    [[nodiscard]] bool AnswersEnumeration(const EnumSessions& message) const;
    [[nodiscard]] bool Full() const;
    [[nodiscard]] std::uint32_t CurrentPlayers() const;
    std::optional<WireId> Reserve(const Origin& origin, RequestKind kind, Millis now);
    std::optional<WireId> NewId();
    [[nodiscard]] std::size_t MachinesAt(std::uint32_t ip) const;
    void Admit(const Origin& origin, const AddForwardRequest& message, Millis now);
    void CompleteAdmission(WireId joiner);
    void TickHost(Millis now);
    [[nodiscard]] bool WasGiven(WireId id, RequestKind kind, const SocketAddress& machine, Millis now) const;
    void ReleaseReservation(WireId id);
    [[nodiscard]] SuperEnumPlayersReply MakeTable(bool withPassword) const;

    // Players, groups and the session's description (PeerMachineTable.cpp; what this machine changes:
    // PeerMachineOwn.cpp)
    bool Handle(const Origin& origin, const CreatePlayerMessage& message, Millis now);
    bool Handle(const Origin& origin, const CreatePlayerVerify& message, Millis now);
    bool Handle(const Origin& origin, const CreateGroupMessage& message, Millis now);
    bool Handle(const Origin& origin, const DeletePlayerMessage& message, Millis now);
    bool Handle(const Origin& origin, const DeleteGroupMessage& message, Millis now);
    bool Handle(const Origin& origin, const AddPlayerToGroupMessage& message, Millis now);
    bool Handle(const Origin& origin, const DeletePlayerFromGroup& message, Millis now);
    bool Handle(const Origin& origin, const PlayerDataChanged& message, Millis now);
    bool Handle(const Origin& origin, const GroupDataChanged& message, Millis now);
    bool Handle(const Origin& origin, const PlayerNameChanged& message, Millis now);
    bool Handle(const Origin& origin, const GroupNameChanged& message, Millis now);
    bool Handle(const Origin& origin, const SessionDescChanged& message, Millis now);
    PlayerEntry* StorePlayer(const Origin& origin, const PackedPlayer& record, bool& isNew, Millis now);
    void AnswerVerify(const Origin& origin, Millis now);
    void AddOwnPlayer(WireId id, Millis now);
    void AddOwnGroup(WireId id);
    void ForgetPlayer(WireId id);
    [[nodiscard]] bool MayChange(const Origin& origin, WireId owner);
    [[nodiscard]] ServiceData ServiceOf(const MachineEntry& machine) const;
    [[nodiscard]] PackedPlayer RecordOf(const MachineEntry& machine) const;
    [[nodiscard]] PackedPlayer RecordOf(const PlayerEntry& player) const;
    static void StoreAddresses(MachineEntry& machine, const std::optional<ServiceData>& service,
                               std::uint32_t sourceIp);

    // Player messages (PeerMachineTraffic.cpp)
    bool Handle(const Origin& origin, const Packet& message, Millis now);
    bool Handle(const Origin& origin, const Packet2Data& message, Millis now);
    bool Handle(const Origin& origin, const Packet2Ack& message, Millis now);
    bool Handle(const Origin& origin, const PlayerWrapper& message, Millis now);
    bool OnPlayerMessage(const Origin& origin, ByteSpan bare, Millis now);
    bool OnPiece(const Origin& origin, const Packet& piece, Millis now);
    bool DeliverUnnamed(const Origin& origin, ByteSpan content, Millis now);
    void Route(WireId machine, const PlayerMessage& message);
    bool Hold(const Origin& origin, ByteSpan bare, WireId sender, Millis now);
    void ReplayHeld(WireId sender, Millis now);
    [[nodiscard]] bool SpeaksFor(const Origin& origin, const MachineEntry& machine) const;
    void SendPlayerMessage(const MachineEntry& machine, WireId from, WireId to, bool guaranteed, ByteSpan content);
    void SendPieces(const MachineEntry& machine, ByteSpan bare);
    [[nodiscard]] std::vector<WireId> Recipients(WireId from, WireId to) const;

    // Signs of life, and the host's going (PeerMachineLife.cpp)
    bool Handle(const Origin& origin, const Ping& message, Millis now);
    bool Handle(const Origin& origin, const PingReply& message, Millis now);
    bool Handle(const Origin& origin, const YouAreDead& message, Millis now);
    bool Handle(const Origin& origin, const IAmNameServer& message, Millis now);
    static bool Handle(const Origin& origin, const IgnoredMessage& message, Millis now);
    void TickLife(Millis now);
    [[nodiscard]] bool IsWatched(const MachineEntry& machine) const;
    [[nodiscard]] bool FoundDead(MachineEntry& machine, Millis now);
    void OnDead(WireId machine, Millis now);
    void SendPing(const MachineEntry& machine, Millis now);
    [[nodiscard]] MachineEntry* OwnerOf(WireId id);
    MachineEntry* PingedBy(const Origin& origin, WireId from, Millis now);
    void MachineGone(WireId id, Millis now);
    void Expel(WireId id, Millis now);
    void RemoveMachine(WireId id);
    void HostGone(Millis now);
    void Elect(Millis now);
    void SetHost(WireId id);
    void BecomeHost(Millis now);

    PeerConfig m_config;
    PeerOutput& m_output;
    std::mt19937_64 m_random;
    PacketCounters m_counters;
    SessionChanges m_changes;
    RateLimiter m_strangers;

    PendingRequest m_request;
    std::vector<Repeat> m_repeats;
    std::vector<FoundSession> m_found;
    std::optional<SocketAddress> m_enumerationStream;
    bool m_endsWithAnswers = false; ///< the enumeration need not last its whole time
    std::uint32_t m_askedIp = 0;    ///< the only machine whose answers count; 0: everybody was asked

    Phase m_phase = Phase::Idle;
    std::string m_lossReason;
    SessionDescription m_description;
    std::u16string m_sessionName;
    std::u16string m_password;
    NameTable m_table;
    WireId m_ownId = 0;
    WireId m_hostId = 0;
    bool m_migrating = false;
    std::vector<SocketAddress> m_hostAddresses; ///< that the host has used in this session
    DepartedPlayers m_departed;
    std::map<ConnectionId, SocketAddress> m_boundStreams; ///< which machine a stream has shown to be

    IdAllotment m_ids;
    std::vector<Reservation> m_reservations;
    std::vector<Admission> m_admissions;
    Millis m_tookOver{}; ///< when hosting began, for ids that the host before gave out

    PieceAssembler m_pieces;
    std::deque<HeldMessage> m_held;
    std::size_t m_heldBytes = 0;
};
} // namespace corvane::directplay
