#include "cli/HostDebrief.h"

#include "debrief/DebriefFile.h"

#include <algorithm>

namespace corvane {
static constexpr std::int64_t MsPerS = 1000;

void HostDebrief::Tick(std::span<const PlayerRecord> players, std::int64_t nowMs)
{
    if (nowMs / MsPerS <= m_seconds)
        return;
    m_seconds = nowMs / MsPerS;
    m_watch.Refresh(players, static_cast<double>(m_seconds));
}

void HostDebrief::Chat(std::string_view from, std::string_view text)
{
    m_watch.Hear(from, text, static_cast<double>(std::max<std::int64_t>(m_seconds, 0)));
    m_next.Chat(from, text);
}

Result<void> HostDebrief::Write(const std::filesystem::path& file, const std::string& session) const
{
    return WriteDebrief(file, m_watch.Judge(session), m_area, m_grid);
}
} // namespace corvane
