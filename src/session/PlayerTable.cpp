#include "session/PlayerTable.h"

namespace corvane {
void PlayerTable::Append(std::string_view name, std::int32_t id, std::string_view role)
{
    PlayerRecord& entry = m_players.emplace_back();
    entry.Name = name;
    entry.PlayerId = id;
    entry.Role = role;
}

void PlayerTable::Remove(std::size_t index)
{
    m_players.erase(m_players.begin() + static_cast<std::ptrdiff_t>(index));
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
