#pragma once

#include "net/machine/DepartedPlayers.h"
#include "net/machine/NameTable.h"
#include "net/machine/PeerOutput.h"
#include "net/wire/WireMessages.h"

namespace corvane::directplay {
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

/// What has changed in a session, so that whoever keeps a picture of it need not look at everything again.
struct SessionChanges {
    bool Session = false;   ///< whether there is one, who hosts it, why it ended
    bool Everybody = false; ///< any player or group may have
    std::set<WireId> Ids;   ///< players and groups that came, left, or go by another name

    [[nodiscard]] bool Any() const noexcept { return Session || Everybody || !Ids.empty(); }
};

enum class SessionPhase : std::uint8_t { Idle, WaitingForId, WaitingForTable, Member };

/// What one machine knows of its session: who is in it, which of them it is itself, who hosts, who has left. It says
/// who may speak for whom; what is done about it is the duties' business.
class SessionTable {
public:
    explicit SessionTable(const TableLimits& limits = {})
        : Names(limits), m_limits(limits), m_departed(limits.DepartedOfMachine)
    {
    }

    SessionPhase Phase = SessionPhase::Idle;
    SessionDescription Description;
    std::u16string Name;
    std::u16string Password;
    NameTable Names;
    WireId OwnId = 0;
    WireId HostId = 0;                        ///< 0 while there is none
    bool Migrating = false;                   ///< the host has gone, and no other has shown yet
    std::vector<SocketAddress> HostAddresses; ///< that the host has used in this session
    std::string LossReason;                   ///< why the last session ended without our leaving it
    SessionChanges Changes;

    [[nodiscard]] bool InSession() const noexcept { return Phase == SessionPhase::Member; }
    [[nodiscard]] bool Hosting() const noexcept { return InSession() && HostId == OwnId; }
    [[nodiscard]] bool HasFlag(std::uint32_t flag) const noexcept { return (Description.Flags & flag) != 0; }
    void Changed(WireId id) { Changes.Ids.insert(id); }

    /// The member at an address; null for strangers and for this machine itself.
    [[nodiscard]] MachineEntry* MemberAt(const Origin& origin);
    /// The machine that an id belongs to: a system player's own, or an application player's owner.
    [[nodiscard]] MachineEntry* OwnerOf(WireId id);
    [[nodiscard]] bool FromHost(const Origin& origin) const;
    /// While joining: true for the machine that the join was asked of. It answers from the address from which it
    /// answered the enumeration; anybody else could end the join or hand over a table of its own.
    [[nodiscard]] bool FromAskedHost(const Origin& origin) const;
    /// True when the message comes from the owner's machine or from the host.
    [[nodiscard]] bool MayChange(const Origin& origin, WireId owner);
    /// True when a message may come from this machine: by its address, and by what the same stream has shown before.
    [[nodiscard]] bool SpeaksFor(const Origin& origin, const MachineEntry& machine) const;
    /// Remembers which member a stream has shown to be.
    void Bind(const Origin& origin);
    void ForgetStream(ConnectionId connection) { m_boundStreams.erase(connection); }

    /// players: in the session, and those about to come.
    [[nodiscard]] bool IsFull(std::size_t players) const noexcept;
    /// Whether an enumeration finds the session.
    [[nodiscard]] bool IsFoundBy(const EnumSessions& question, std::size_t players) const;

    /// This machine itself becomes an entry.
    void EnterOwnMachine(const PeerConfig& config);
    void SetHost(WireId id);
    /// Removes a player, whose name is remembered.
    void ForgetPlayer(WireId id);
    /// Removes a machine with its players; its groups pass to the host.
    void ForgetMachine(WireId id);
    /// Forgets everybody. What the session was called stays known.
    void Clear();

    [[nodiscard]] bool IsOwnPlayer(WireId player) const;
    /// Short name of a player that is or was in this session.
    [[nodiscard]] std::optional<std::u16string> NameOf(WireId player) const;
    [[nodiscard]] bool HasLeft(WireId player) const { return m_departed.Contains(player); }
    /// Whether a message can be meant for it: a player, a group, everybody, or somebody who has left.
    [[nodiscard]] bool Knows(WireId to) const;
    /// The players that a message to a player, a group or everybody reaches: never its sender.
    [[nodiscard]] std::vector<WireId> Recipients(WireId from, WireId to) const;

    [[nodiscard]] PackedPlayer RecordOf(const MachineEntry& machine) const;
    [[nodiscard]] PackedPlayer RecordOf(const PlayerEntry& player) const;
    /// The whole table as a joiner gets it.
    [[nodiscard]] SuperEnumPlayersReply Listing(std::uint32_t currentPlayers, bool withPassword) const;

private:
    [[nodiscard]] ServiceData ServiceOf(const MachineEntry& machine) const;

    TableLimits m_limits;
    DepartedPlayers m_departed;
    std::map<ConnectionId, SocketAddress> m_boundStreams;
};

/// Takes over a machine's addresses as somebody states them; what it leaves open is where the message came from.
void StoreAddresses(MachineEntry& machine, const std::optional<ServiceData>& service, std::uint32_t sourceIp);
} // namespace corvane::directplay
