#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>

namespace corvane::flightgear {
/// What a callsign says: chat is a text that stands in every packet for as long as it takes the others to look. Lines
/// follow one another no faster; the last one stays a while.
class Speech {
public:
    static constexpr std::int64_t ReadMs = 2500;    ///< until everyone has looked
    static constexpr std::int64_t StayMs = 10000;   ///< the last line
    static constexpr std::size_t LongestLine = 480; ///< bytes; longer ones are several
    static constexpr std::size_t MostWaiting = 100; ///< lines; what comes on top is not said

    /// Says a line of UTF-8 as soon as those before it have been read. False where too many wait.
    bool Say(std::string_view line);
    /// What stands in a packet of now. A line equal to the one before it gets a blank behind it, or nobody would see
    /// it.
    std::string_view TextAt(std::int64_t nowMs);
    [[nodiscard]] bool IsSpeaking() const noexcept { return !m_text.empty() || !m_waiting.empty(); }

private:
    std::deque<std::string> m_waiting;
    std::string m_text;
    std::string m_last; ///< the last text that was not empty
    std::int64_t m_sinceMs = 0;
};
} // namespace corvane::flightgear
