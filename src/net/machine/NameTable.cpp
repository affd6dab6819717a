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
    const auto at = std::ranges::find_if(m_machines, [&](const auto& entry) { return entry.second.Stream == stream; });
    return at == m_machines.end() ? nullptr : &at->second;
}

const MachineEntry* NameTable::FindMachine(const SocketAddress& stream) const
{
    const auto at = std::ranges::find_if(m_machines, [&](const auto& entry) { return entry.second.Stream == stream; });
    return at == m_machines.end() ? nullptr : &at->second;
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
    return id >= m_limits.LowestId && id != UnknownPlayer && !Contains(id);
}

MachineEntry* NameTable::AddMachine(WireId id)
{
    if (MachineEntry* known = FindMachine(id))
        return known;
    if (!MayAdd(id) || m_machines.size() >= m_limits.Machines)
        return nullptr;
    MachineEntry& entry = m_machines[id];
    entry.Id = id;
    return &entry;
}

PlayerEntry* NameTable::AddPlayer(WireId id, WireId machine)
{
    if (PlayerEntry* known = FindPlayer(id))
        return known;
    if (!MayAdd(id) || m_players.size() >= m_limits.Players)
        return nullptr;
    PlayerEntry& entry = m_players[id];
    entry.Id = id;
    entry.Machine = machine;
    m_playersOf[machine].insert(id);
    entry.Order = m_order++;
    return &entry;
}

GroupEntry* NameTable::AddGroup(WireId id)
{
    if (GroupEntry* known = FindGroup(id))
        return known;
    if (!MayAdd(id) || m_groups.size() >= m_limits.Groups)
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
    for (const WireId group : player->Groups)
        std::erase(m_groups.at(group).Members, id);
    const auto owned = m_playersOf.find(player->Machine);
    owned->second.erase(id);
    if (owned->second.empty())
        m_playersOf.erase(owned);
    m_dataBytes -= player->Data.size();
    m_players.erase(id);
}

void NameTable::RemoveGroup(WireId id)
{
    const GroupEntry* group = FindGroup(id);
    if (group == nullptr)
        return;
    for (const WireId member : group->Members)
        m_players.at(member).Groups.erase(id);
    m_dataBytes -= group->Data.size();
    m_groups.erase(id);
}

void NameTable::RemoveMachine(WireId id, WireId heir)
{
    for (const WireId player : std::set<WireId>(PlayersOf(id)))
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
    if (member == nullptr || to == nullptr || !member->Groups.insert(group).second)
        return;
    to->Members.push_back(player);
    member->InGroup = true;
}

void NameTable::RemoveFromGroup(WireId player, WireId group)
{
    GroupEntry* from = FindGroup(group);
    PlayerEntry* member = FindPlayer(player);
    if (from != nullptr && member != nullptr && member->Groups.erase(group) > 0)
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

const std::set<WireId>& NameTable::PlayersOf(WireId machine) const
{
    const auto owned = m_playersOf.find(machine);
    return owned == m_playersOf.end() ? m_nobody : owned->second;
}

std::vector<WireId> NameTable::Ids() const
{
    std::vector<WireId> ids;
    ids.reserve(m_machines.size() + m_players.size() + m_groups.size());
    for (const auto& [id, entry] : m_machines)
        ids.push_back(id);
    for (const auto& [id, entry] : m_players)
        ids.push_back(id);
    for (const auto& [id, entry] : m_groups)
        ids.push_back(id);
    return ids;
}
} // namespace corvane::directplay
