#include "session/PlayerTable.h"

namespace corvane {
void PlayerTable::Append(std::string_view name, std::int32_t id, std::string_view role)
{
    PlayerRecord& entry = m_players.emplace_back();
    entry.Name = name;
    entry.PlayerId = id;
    entry.Role = role;
    AddToIndex(m_players.size() - 1);
}

void PlayerTable::Remove(std::span<const std::size_t> indices)
{
    std::size_t kept = 0;
    for (std::size_t i = 0; i < m_players.size(); ++i) {
        if (!indices.empty() && indices.front() == i)
            indices = indices.subspan(1);
        else if (kept++ != i)
            m_players[kept - 1] = std::move(m_players[i]);
    }
    m_players.resize(kept);
    m_firstWithId.clear(); // every later entry has moved
    m_nextWithId.clear();
    for (std::size_t i = 0; i < m_players.size(); ++i)
        AddToIndex(i);
}

void PlayerTable::Empty() noexcept
{
    m_players.clear();
    m_firstWithId.clear();
    m_nextWithId.clear();
}

std::optional<std::size_t> PlayerTable::FindPlayer(std::int32_t id, std::string_view friendlyName) const noexcept
{
    const auto first = m_firstWithId.find(id);
    return first == m_firstWithId.end() ? std::nullopt : FindFrom(first->second, friendlyName);
}

void PlayerTable::AddToIndex(std::size_t index)
{
    m_nextWithId.push_back(None);
    const auto [place, added] = m_firstWithId.try_emplace(m_players[index].PlayerId, index);
    if (added)
        return;
    std::size_t last = place->second; // one id under several names is rare, so these chains are short
    while (m_nextWithId[last] != None)
        last = m_nextWithId[last];
    m_nextWithId[last] = index;
}

std::optional<std::size_t> PlayerTable::FindFrom(std::size_t index, std::string_view friendlyName) const noexcept
{
    for (; index != None; index = m_nextWithId[index]) {
        if (m_players[index].Name == friendlyName)
            return index;
    }
    return std::nullopt;
}

bool IsPlayer(const PlayerRecord& entry, std::int32_t id, std::string_view friendlyName) noexcept
{
    return entry.PlayerId == id && entry.Name == friendlyName;
}

bool EligiblePilot(const PlayerRecord& entry, std::int32_t ownPlayerId, std::string_view ownName) noexcept
{
    return entry.Role == PilotRole && entry.PlayerId != ownPlayerId && entry.Name != ownName;
}
} // namespace corvane
