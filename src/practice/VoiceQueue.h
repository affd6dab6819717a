#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

namespace corvane {
/// What is said on the radio, one line after the other: never two at once. Lines that nobody could hear soon drop out,
/// the oldest first. Times are milliseconds of one clock.
class VoiceQueue {
public:
    static constexpr std::size_t MostWaiting = 6;
    static constexpr std::int64_t LongestWaitMs = 15000;
    static constexpr std::int64_t LongestLineMs = 30000; ///< after which a voice that reports no end has ended
    static constexpr std::size_t LongestText = 300;      ///< characters of a line; the rest is not said

    struct Line {
        std::string Text;
        std::uint32_t Voice = 0; ///< the same for all lines of one speaker, in every session
    };

    void Add(std::string_view speaker, std::string_view text, std::int64_t nowMs);
    /// What is to be said now; nothing while something is being said.
    std::optional<Line> Next(std::int64_t nowMs);
    /// What was being said has ended.
    void Ended() noexcept { m_sinceMs.reset(); }
    void Clear() noexcept;

private:
    struct Waiting {
        Line What;
        std::int64_t AddedMs = 0;
    };
    std::deque<Waiting> m_waiting;
    std::optional<std::int64_t> m_sinceMs; ///< something is being said since then
};
} // namespace corvane
