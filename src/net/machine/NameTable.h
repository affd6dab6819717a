#pragma once

#include "net/wire/WireRecords.h"

#include <map>
#include <set>

namespace corvane::directplay {
/// A machine of the session, known by its system player.
struct MachineEntry {
    WireId Id = 0;
    SocketAddress Stream;
    SocketAddress Datagram;
    std::uint32_t Version = OwnVersion;
    bool SharesHostAddress = false; ///< as host: others must take our address for it
    bool Unreachable = false;       ///< its streams fail; nothing is sent there until it speaks again
    Millis LastHeard{};
    Millis NextCheck{};
    unsigned UnansweredPings = 0;
};

/// An application player.
struct PlayerEntry {
    WireId Id = 0;
    WireId Machine = 0;
    std::u16string ShortName;
    std::u16string LongName;
    Bytes Data;
    bool InGroup = false;
    std::set<WireId> Groups; ///< that it is in
    Millis Created{};
    std::uint64_t Order = 0; ///< of arrival
};

struct GroupEntry {
    WireId Id = 0;
    WireId Machine = 0; ///< its owner
    std::u16string ShortName;
    std::u16string LongName;
    Bytes Data;
    std::vector<WireId> Members;
    std::uint64_t Order = 0;
};

/// Everybody in a session: machines, players and groups, which share one space of ids. All numbers are capped.
class NameTable {
public:
    [[nodiscard]] MachineEntry* FindMachine(WireId id);
    [[nodiscard]] MachineEntry* FindMachine(const SocketAddress& stream);
    [[nodiscard]] const MachineEntry* FindMachine(const SocketAddress& stream) const;
    [[nodiscard]] const PlayerEntry* FindPlayer(WireId id) const;
    [[nodiscard]] PlayerEntry* FindPlayer(WireId id);
    [[nodiscard]] GroupEntry* FindGroup(WireId id);
    /// True when some machine has this address, whatever its ports.
    [[nodiscard]] bool KnowsIp(std::uint32_t ip) const;
    [[nodiscard]] bool Contains(WireId id) const;

    /// These add an entry, or give the one that has the id already. Null when the id belongs to another kind of
    /// entry, means something else, or the table is full.
    MachineEntry* AddMachine(WireId id);
    PlayerEntry* AddPlayer(WireId id, WireId machine);
    GroupEntry* AddGroup(WireId id);

    void RemovePlayer(WireId id);
    void RemoveGroup(WireId id);
    /// Removes a machine and its players; its groups stay and pass to heir.
    void RemoveMachine(WireId id, WireId heir);
    /// Both must be known, else nothing happens.
    void AddToGroup(WireId player, WireId group);
    void RemoveFromGroup(WireId player, WireId group);
    /// Replaces an entry's data, unless that would take the table above its total.
    void StoreData(Bytes& place, const Bytes& data);

    [[nodiscard]] std::map<WireId, MachineEntry>& Machines() noexcept { return m_machines; }
    [[nodiscard]] const std::map<WireId, MachineEntry>& Machines() const noexcept { return m_machines; }
    [[nodiscard]] const std::map<WireId, PlayerEntry>& Players() const noexcept { return m_players; }
    [[nodiscard]] std::map<WireId, GroupEntry>& Groups() noexcept { return m_groups; }
    [[nodiscard]] const std::map<WireId, GroupEntry>& Groups() const noexcept { return m_groups; }
    /// The players of one machine, by ascending id.
    [[nodiscard]] const std::set<WireId>& PlayersOf(WireId machine) const;
    /// Every id of the table.
    [[nodiscard]] std::vector<WireId> Ids() const;

private:
    [[nodiscard]] bool MayAdd(WireId id) const;

    std::map<WireId, MachineEntry> m_machines;
    std::map<WireId, PlayerEntry> m_players;
    std::map<WireId, GroupEntry> m_groups;
    std::map<WireId, std::set<WireId>> m_playersOf; ///< of those machines that have any
    std::set<WireId> m_nobody;
    std::uint64_t m_order = 0;
    std::size_t m_dataBytes = 0; ///< of all players and groups
};
} // namespace corvane::directplay
