#pragma once

#include <algorithm>
#include <cstdint>

namespace corvane {
/// When to try a link again that failed: after 1, 2, 4, ... 30 seconds, for ever. It begins anew once the link has held
/// for a while, so that one that opens and breaks at once is not tried every second.
class BackOff {
public:
    static constexpr std::int64_t ShortestMs = 1000;
    static constexpr std::int64_t LongestMs = 30000;
    static constexpr std::int64_t HoldsMs = 10000;

    /// The link works; it may say so again and again.
    void Opened(std::int64_t nowMs) noexcept
    {
        if (m_openedMs < 0)
            m_openedMs = nowMs;
    }
    void Failed(std::int64_t nowMs) noexcept
    {
        if (m_openedMs >= 0 && nowMs - m_openedMs >= HoldsMs)
            m_delayMs = ShortestMs;
        m_openedMs = -1;
        m_nextMs = nowMs + m_delayMs;
        m_delayMs = std::min(m_delayMs * 2, LongestMs);
    }
    [[nodiscard]] bool MayTry(std::int64_t nowMs) const noexcept { return nowMs >= m_nextMs; }
    [[nodiscard]] std::int64_t NextTryMs() const noexcept { return m_nextMs; }

private:
    std::int64_t m_delayMs = ShortestMs;
    std::int64_t m_nextMs = 0;
    std::int64_t m_openedMs = -1; ///< below 0: it is not open
};
} // namespace corvane
