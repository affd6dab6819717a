#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace corvane {
enum class HealthLevel : std::uint8_t {
    Well,
    Quiet, ///< nobody has said anything for a while
    Over,  ///< nobody is left, or nobody can be heard any more
};

struct HealthReport {
    HealthLevel Level = HealthLevel::Well;
    std::string Text; ///< one line
};

/// How a session fares, by its members and by when the last of them was heard. Times are milliseconds of one clock.
class SessionHealth {
public:
    static constexpr std::int64_t QuietMs = 10000;
    static constexpr std::int64_t OverMs = 60000;

    explicit SessionHealth(std::int64_t nowMs) noexcept : m_lastHeardMs(nowMs) {}

    /// A member has reported, spoken or come.
    void Heard(std::int64_t nowMs) noexcept { m_lastHeardMs = nowMs; }
    /// members  the session's, the own player among them
    HealthReport Report(std::size_t members, std::int64_t nowMs);

private:
    std::int64_t m_lastHeardMs;
    bool m_hadOthers = false;
};
} // namespace corvane
