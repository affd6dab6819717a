#pragma once

#include "debrief/DebriefWatch.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
/// Watches a practice session from a member's place, for the debrief of this member: what other controllers and hosts
/// say counts for nothing. It also follows to which files the session is recorded meanwhile. The grid must outlive it.
class SessionDebrief {
public:
    /// area  as it was when the session began, whatever is loaded later
    SessionDebrief(std::shared_ptr<const AreaModel> area, const MagVarGrid& grid, std::string session);

    void SetPractice(const PracticeKnowledge& knowledge) { m_watch.SetPractice(knowledge); }

    // Times are seconds since the session began and never go back. players are the session's, the own entry among them.
    /// A member said something.
    void Hear(std::string_view from, std::string_view text, std::span<const PlayerRecord> players,
              std::int32_t ownPlayerId, double nowS);
    /// Once a second.
    void Refresh(std::span<const PlayerRecord> players, std::int32_t ownPlayerId, double nowS);
    /// Once a second: the session is being recorded to a file since so many seconds.
    void Recorded(const std::filesystem::path& file, double elapsedS, double nowS);
    /// Once a second: it is not.
    void NotRecorded() noexcept { m_isRecorded = false; }

    /// What it came to so far.
    [[nodiscard]] Debrief Judge() const;
    [[nodiscard]] const std::shared_ptr<const AreaModel>& Area() const noexcept { return m_area; }

private:
    std::shared_ptr<const AreaModel> m_area;
    std::string m_session;
    DebriefWatch m_watch;
    std::vector<DebriefRecording> m_recordings;
    bool m_isRecorded = false; ///< now, to the last of them
};
} // namespace corvane
