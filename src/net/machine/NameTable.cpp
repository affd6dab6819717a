#include "net/machine/NameTable.h"

#include <algorithm>

namespace corvane::directplay {
template <class Map> static auto* FindIn(Map& map, WireId id)
{
    const auto at = map.find(id);
    return at == map.end() ? nullptr : &at->second;
}

MachineEntry* NameTable::FindMachine(WireId id)
{
    return FindIn(m_machines, id);
}

MachineEntry* NameTable::FindMachine(const SocketAddress& stream)
{
    for (auto& [id, machine] : m_machines) {
        if (machine.Stream == stream)
            return &machine;
    }
    return nullptr;
}

const PlayerEntry* NameTable::FindPlayer(WireId id) const
{
    return FindIn(m_players, id);
}

PlayerEntry* NameTable::FindPlayer(WireId id)
{
    return FindIn(m_players, id);
}

GroupEntry* NameTable::FindGroup(WireId id)
{
    return FindIn(m_groups, id);
}

bool NameTable::KnowsIp(std::uint32_t ip) const
{
    return std::ranges::any_of(m_machines, [&](const auto& entry) { return entry.second.Stream.Ip == ip; });
}

bool NameTable::Contains(WireId id) const
{
    return m_machines.contains(id) || m_players.contains(id) || m_groups.contains(id);
}

bool NameTable::MayAdd(WireId id) const
{
    return id != EveryPlayer && id != ServerPlayer && id != UnknownPlayer && !Contains(id);
}

MachineEntry* NameTable::AddMachine(WireId id)
{
    if (MachineEntry* known = FindMachine(id))
        return known;
    if (!MayAdd(id) || m_machines.size() >= MaxMachines)
        return nullptr;
    MachineEntry& entry = m_machines[id];
    entry.Id = id;
    return &entry;
}

PlayerEntry* NameTable::AddPlayer(WireId id)
{
    if (PlayerEntry* known = FindPlayer(id))
        return known;
    if (!MayAdd(id) || m_players.size() >= MaxPlayers)
        return nullptr;
    PlayerEntry& entry = m_players[id];
    entry.Id = id;
    entry.Order = m_order++;
    return &entry;
}

GroupEntry* NameTable::AddGroup(WireId id)
{
    if (GroupEntry* known = FindGroup(id))
        return known;
    if (!MayAdd(id) || m_groups.size() >= MaxGroups)
        return nullptr;
    GroupEntry& entry = m_groups[id];
    entry.Id = id;
    entry.Order = m_order++;
    return &entry;
}

void NameTable::RemovePlayer(WireId id)
{
    const PlayerEntry* player = FindPlayer(id);
    if (player == nullptr)
        return;
    for (auto& [groupId, group] : m_groups)
        std::erase(group.Members, id);
    m_dataBytes -= player->Data.size();
    m_players.erase(id);
}

void NameTable::RemoveGroup(WireId id)
{
    const GroupEntry* group = FindGroup(id);
    if (group == nullptr)
        return;
    m_dataBytes -= group->Data.size();
    m_groups.erase(id);
}

void NameTable::RemoveMachine(WireId id, WireId heir)
{
    for (const WireId player : PlayersOf(id))
        RemovePlayer(player);
    for (auto& [groupId, group] : m_groups) {
        if (group.Machine == id)
            group.Machine = heir;
    }
    m_machines.erase(id);
}

void NameTable::AddToGroup(WireId player, WireId group)
{
    PlayerEntry* member = FindPlayer(player);
    GroupEntry* to = FindGroup(group);
    if (member == nullptr || to == nullptr || std::ranges::find(to->Members, player) != to->Members.end())
        return;
    to->Members.push_back(player);
    member->InGroup = true;
}

void NameTable::RemoveFromGroup(WireId player, WireId group)
{
    if (GroupEntry* from = FindGroup(group))
        std::erase(from->Members, player);
}

void NameTable::StoreData(Bytes& place, const Bytes& data)
{
    constexpr std::size_t MaxTotal = 4194304;
    const std::size_t others = m_dataBytes - place.size();
    if (others + data.size() > MaxTotal)
        return;
    place = data;
    m_dataBytes = others + data.size();
}

std::vector<WireId> NameTable::PlayersOf(WireId machine) const
{
    std::vector<WireId> ids;
    for (const auto& [id, player] : m_players) {
        if (player.Machine == machine)
            ids.push_back(id);
    }
    return ids;
}

std::set<WireId> NameTable::Ids() const
{
    std::set<WireId> ids;
    for (const auto& [id, entry] : m_machines)
        ids.insert(id);
    for (const auto& [id, entry] : m_players)
        ids.insert(id);
    for (const auto& [id, entry] : m_groups)
        ids.insert(id);
    return ids;
}
} // namespace corvane::directplay
