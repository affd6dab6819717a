#include "traffic/flightgear/Speech.h"

#include <utility>

namespace corvane::flightgear {
/// The length of the longest part that ends on a character's edge.
static std::size_t WholeCharacters(std::string_view line, std::size_t limit) noexcept
{
    constexpr unsigned char ContinuationMask = 0xC0;
    constexpr unsigned char Continuation = 0x80;
    if (line.size() <= limit)
        return line.size();
    std::size_t end = limit;
    while (end > 0 && (static_cast<unsigned char>(line[end]) & ContinuationMask) == Continuation)
        --end;
    return end > 0 ? end : limit;
}

bool Speech::Say(std::string_view line)
{
    while (!line.empty()) {
        if (m_waiting.size() >= MostWaiting)
            return false;
        const std::size_t length = WholeCharacters(line, LongestLine);
        m_waiting.emplace_back(line.substr(0, length));
        line.remove_prefix(length);
    }
    return true;
}

std::string_view Speech::TextAt(std::int64_t nowMs)
{
    const std::int64_t stood = nowMs - m_sinceMs;
    if (!m_waiting.empty() && (m_text.empty() || stood >= ReadMs)) {
        m_text = std::move(m_waiting.front());
        m_waiting.pop_front();
        if (m_text == m_last)
            m_text += ' ';
        m_last = m_text;
        m_sinceMs = nowMs;
    } else if (!m_text.empty() && stood >= StayMs) {
        m_text.clear();
    }
    return m_text;
}
} // namespace corvane::flightgear
