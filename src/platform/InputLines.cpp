#include "platform/InputLines.h"

#include <array>
#include <cerrno>
#include <poll.h>
#include <unistd.h>

namespace corvane {
/// Reads no more than the longest line, so that input which comes faster than it is taken waits where it is.
void InputLines::ReadWhatWaits()
{
    std::array<char, 4096> buffer{};
    while (!m_ended && m_waiting.size() < LongestLine) {
        pollfd waiting{.fd = m_descriptor, .events = POLLIN, .revents = 0};
        if (poll(&waiting, 1, 0) <= 0)
            return;
        const ssize_t count = read(m_descriptor, buffer.data(), buffer.size());
        if (count < 0 && (errno == EAGAIN || errno == EINTR))
            return;
        m_ended = count <= 0;
        m_waiting.append(buffer.data(), m_ended ? 0 : static_cast<std::size_t>(count));
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
    if (end != std::string::npos && end <= LongestLine)
        return Take(end, 1);
    if (m_waiting.size() >= LongestLine)
        return Take(LongestLine, 0);
    if (m_ended && !m_waiting.empty())
        return Take(m_waiting.size(), 0);
    return std::nullopt;
}
} // namespace corvane
