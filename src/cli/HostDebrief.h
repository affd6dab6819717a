#pragma once

#include "core/Result.h"
#include "debrief/DebriefWatch.h"
#include "follow/SessionEvents.h"

#include <filesystem>

namespace corvane {
/// Watches a hosted session for its debrief, as events go by on their way to another reader of them.
class HostDebrief final : public SessionEvents {
public:
    /// area, grid  must outlive it
    HostDebrief(SessionEvents& next, const AreaModel& area, const MagVarGrid& grid)
        : m_next(next), m_area(area), m_grid(grid), m_watch(area, grid)
    {
    }

    [[nodiscard]] DebriefWatch& Watch() noexcept { return m_watch; }
    /// Once in a while: looks at who is there, once a second.
    void Tick(std::span<const PlayerRecord> players, std::int64_t nowMs);
    /// Writes the debrief: as JSON where the file's name ends in .json, otherwise as an HTML page with its pictures.
    [[nodiscard]] Result<void> Write(const std::filesystem::path& file, const std::string& session) const;

    void Joined(PlayerId ownPlayerId, std::string_view session) override { m_next.Joined(ownPlayerId, session); }
    void PlayerAdded(const PlayerRecord& player) override
    {
        m_watch.Meet(player);
        m_next.PlayerAdded(player);
    }
    void PlayerUpdated(const PlayerRecord& player) override { m_next.PlayerUpdated(player); }
    void PlayerRemoved(const PlayerRecord& player) override { m_next.PlayerRemoved(player); }
    void Chat(std::string_view from, std::string_view text) override;
    void Notice(MessageIcon icon, std::string_view text) override { m_next.Notice(icon, text); }
    void Disconnected(std::string_view reason) override { m_next.Disconnected(reason); }

private:
    SessionEvents& m_next;
    const AreaModel& m_area;
    const MagVarGrid& m_grid;
    DebriefWatch m_watch;
    std::int64_t m_seconds = -1; ///< of the last look
};
} // namespace corvane
