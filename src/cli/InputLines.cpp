#include "cli/InputLines.h"

#include "os/StandardStreams.h"

#include <array>

namespace corvane {
/// Reads no more than the longest line, so that input which comes faster than it is taken waits where it is.
void InputLines::ReadWhatWaits()
{
    std::array<char, 4096> buffer{};
    while (!m_ended && m_waiting.size() < LongestLine) {
        const std::optional<std::size_t> count = ReadWaiting(m_descriptor, buffer);
        if (!count)
            return;
        m_ended = *count == 0;
        m_waiting.append(buffer.data(), *count);
    }
}

std::string InputLines::Take(std::size_t length, std::size_t lengthOfEnd)
{
    std::string line = m_waiting.substr(0, length);
    m_waiting.erase(0, length + lengthOfEnd);
    if (line.ends_with('\r'))
        line.pop_back();
    return line;
}

std::optional<std::string> InputLines::Next()
{
    if (m_descriptor < 0)
        return std::nullopt;
    std::size_t end = m_waiting.find('\n');
    if (end == std::string::npos) {
        ReadWhatWaits();
        end = m_waiting.find('\n');
    }
    if (end <= LongestLine) // and found
        return Take(end, 1);
    if (m_waiting.size() >= LongestLine)
        return Take(LongestLine, 0);
    if (m_ended && !m_waiting.empty())
        return Take(m_waiting.size(), 0);
    return std::nullopt;
}
} // namespace corvane
