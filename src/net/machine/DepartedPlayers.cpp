#include "net/machine/DepartedPlayers.h"

#include <utility>

namespace corvane::directplay {
std::vector<WireId> DepartedPlayers::Add(WireId player, WireId machine, std::u16string name)
{
    std::vector<WireId> forgotten;
    if (!m_names.insert_or_assign(player, std::move(name)).second)
        return forgotten; // ids are not given twice, unless somebody cheats
    const auto [place, isNew] = m_ofMachine.try_emplace(machine);
    place->second.push_back(player);
    if (isNew)
        m_machines.push_back(machine);
    if (place->second.size() > m_mostOfMachine) {
        forgotten.push_back(place->second.front());
        place->second.pop_front();
    }
    if (m_machines.size() > MostMachines) {
        const auto oldest = m_ofMachine.find(m_machines.front());
        forgotten.insert(forgotten.end(), oldest->second.begin(), oldest->second.end());
        m_ofMachine.erase(oldest);
        m_machines.pop_front();
    }
    for (const WireId id : forgotten)
        m_names.erase(id);
    return forgotten;
}

std::optional<std::u16string> DepartedPlayers::NameOf(WireId player) const
{
    const auto name = m_names.find(player);
    if (name == m_names.end())
        return std::nullopt;
    return name->second;
}
} // namespace corvane::directplay
