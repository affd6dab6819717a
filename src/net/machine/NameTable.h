#pragma once

#include "net/machine/DepartedPlayers.h"
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

    /// It has shown a sign of life.
    void Heard(Millis now)
    {
        LastHeard = now;
        UnansweredPings = 0;
        Unreachable = false;
    }
    /// It has just come; whether it lives is looked at after a period.
    void Watch(Millis now, Millis period)
    {
        LastHeard = now;
        NextCheck = now + period;
    }
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

/// What a table takes. The defaults are for sessions with strangers.
struct TableLimits {
    WireId LowestId = 2; ///< the one before means a server
    std::size_t Machines = MaxMachines;
    std::size_t Players = MaxPlayers;
    std::size_t Groups = MaxGroups;
    std::size_t DepartedOfMachine = DepartedPlayers::MostOfMachine; ///< whose names are remembered
};

/// Everybody in a session: machines, players and groups, which share one space of ids. All numbers are capped.
class NameTable {
public:
    explicit NameTable(const TableLimits& limits = {}) : m_limits(limits) {}

    [[nodiscard]] MachineEntry* FindMachine(WireId id);
    [[nodiscard]] MachineEntry* FindMachine(const SocketAddress& stream);
    [[nodiscard]] const MachineEntry* FindMachine(const SocketAddress& stream) const;
    [[nodiscard]] const PlayerEntry* FindPlayer(WireId id) const;
    [[nodiscard]] PlayerEntry* FindPlayer(WireId id);
    [[nodiscard]] GroupEntry* FindGroup(WireId id);
    /// The lowest id of a machine: it hosts after the host. One must be there.
    [[nodiscard]] WireId Heir() const noexcept { return m_machines.begin()->first; }
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

    TableLimits m_limits;
    std::map<WireId, MachineEntry> m_machines;
    std::map<WireId, PlayerEntry> m_players;
    std::map<WireId, GroupEntry> m_groups;
    std::map<WireId, std::set<WireId>> m_playersOf; ///< of those machines that have any
    std::set<WireId> m_nobody;
    std::uint64_t m_order = 0;
    std::size_t m_dataBytes = 0; ///< of all players and groups
};
} // namespace corvane::directplay
