#include "debrief/SessionDebrief.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace corvane {
SessionDebrief::SessionDebrief(std::shared_ptr<const AreaModel> area, const MagVarGrid& grid, std::string session)
    : m_area(std::move(area)), m_session(std::move(session)), m_watch(*m_area, grid)
{
    assert(m_area);
}

void SessionDebrief::Hear(std::string_view from, std::string_view text, std::span<const PlayerRecord> players,
                          std::int32_t ownPlayerId, double nowS)
{
    const auto speaker = std::find_if(players.begin(), players.end(),
                                      [from](const PlayerRecord& player) { return player.Name == from; });
    if (speaker == players.end())
        return;
    if (speaker->PlayerId != ownPlayerId && speaker->Role != PilotRole)
        return;
    for (const PlayerRecord& player : players) // those who have come since the last refresh are spoken to, too
        if (player.PlayerId != ownPlayerId)
            m_watch.Meet(player);
    m_watch.Hear(from, text, nowS);
}

/// The own entry is a pilot's, as far as the table knows.
void SessionDebrief::Refresh(std::span<const PlayerRecord> players, std::int32_t ownPlayerId, double nowS)
{
    std::vector<PlayerRecord> others;
    others.reserve(players.size());
    for (const PlayerRecord& player : players)
        if (player.PlayerId != ownPlayerId)
            others.push_back(player);
    m_watch.Refresh(others, nowS);
}

void SessionDebrief::Recorded(const std::filesystem::path& file, double elapsedS, double nowS)
{
    const bool goesOn = m_isRecorded && m_recordings.back().File == file &&
                        m_recordings.back().EndS - m_recordings.back().BeginS <= elapsedS;
    if (!goesOn) {
        std::erase_if(m_recordings, [&file](const DebriefRecording& one) { return one.File == file; }); // replaced
        m_recordings.push_back({file, nowS - elapsedS, nowS});
    }
    m_isRecorded = true;
    m_recordings.back().EndS = m_recordings.back().BeginS + elapsedS;
}

Debrief SessionDebrief::Judge() const
{
    Debrief debrief = m_watch.Judge(m_session);
    debrief.Recordings = m_recordings;
    return debrief;
}
} // namespace corvane
