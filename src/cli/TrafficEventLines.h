#pragma once

#include "core/MagVarGrid.h"
#include "follow/SessionEvents.h"
#include "traffic/TrafficDetails.h"

#include <unordered_map>

namespace corvane {
/// Hands a session's events on, its players with what the source has told of them: the type's short and full name, and
/// the position as exact as it came, which session messages round.
class TrafficEventLines final : public SessionEvents {
public:
    TrafficEventLines(SessionEvents& lines, const TrafficDetailsTable& details, const MagVarGrid& magVar)
        : m_lines(lines), m_details(details), m_magVar(magVar)
    {
    }

    void Joined(PlayerId ownPlayerId, std::string_view session) override { m_lines.Joined(ownPlayerId, session); }
    void PlayerAdded(const PlayerRecord& player) override { m_lines.PlayerAdded(Detailed(player)); }
    void PlayerUpdated(const PlayerRecord& player) override { m_lines.PlayerUpdated(Detailed(player)); }
    void PlayerRemoved(const PlayerRecord& player) override
    {
        m_lines.PlayerRemoved(Detailed(player));
        m_told.erase(player.PlayerId);
    }
    void Chat(std::string_view from, std::string_view text) override { m_lines.Chat(from, text); }
    void Notice(MessageIcon icon, std::string_view text) override { m_lines.Notice(icon, text); }
    void Disconnected(std::string_view reason) override { m_lines.Disconnected(reason); }

private:
    [[nodiscard]] PlayerRecord Detailed(PlayerRecord player);

    SessionEvents& m_lines;
    const TrafficDetailsTable& m_details;
    const MagVarGrid& m_magVar;
    std::unordered_map<PlayerId, TrafficDetails> m_told; ///< of the players that have not been removed
};
} // namespace corvane
