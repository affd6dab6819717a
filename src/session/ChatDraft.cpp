#include "session/ChatDraft.h"

#include "core/Text.h"

#include <algorithm>

namespace corvane {
void ChatDraft::Sent(std::string_view line)
{
    m_back = 0;
    if (line.empty() || (!m_sent.empty() && m_sent.back() == line))
        return;
    if (m_sent.size() == LinesKept)
        m_sent.erase(m_sent.begin());
    m_sent.emplace_back(line);
}

std::string ChatDraft::Older(std::string_view typed)
{
    if (m_sent.empty())
        return std::string(typed);
    if (m_back == 0)
        m_typed = typed;
    m_back = std::min(m_back + 1, m_sent.size());
    return m_sent[m_sent.size() - m_back];
}

std::string ChatDraft::Newer(std::string_view typed)
{
    if (m_back == 0)
        return std::string(typed);
    --m_back;
    return m_back == 0 ? m_typed : m_sent[m_sent.size() - m_back];
}

std::string_view CallsignIn(std::string_view name)
{
    constexpr std::string_view Stars = "**";
    return name.starts_with(Stars) ? name.substr(Stars.size()) : name;
}

/// How many characters two texts have in common at the beginning, in any letter case.
static std::size_t CommonLength(std::string_view a, std::string_view b)
{
    const std::string lowerA = ToLower(a);
    const std::string lowerB = ToLower(b);
    const auto differ = std::mismatch(lowerA.begin(), lowerA.end(), lowerB.begin(), lowerB.end());
    return static_cast<std::size_t>(differ.first - lowerA.begin());
}

std::string CompleteCallsign(std::string_view text, std::span<const std::string> names)
{
    const std::size_t wordBegins = text.find_last_of(' ') + 1; // 0 where there is no space
    const std::string_view word = text.substr(wordBegins);
    if (word.empty())
        return std::string(text);
    std::string_view found;
    std::size_t agreed = 0;
    bool several = false;
    for (const std::string& name : names) {
        const std::string_view callsign = CallsignIn(name);
        if (CommonLength(word, callsign) < word.size())
            continue;
        several = several || (!found.empty() && found != callsign);
        agreed = found.empty() ? callsign.size() : std::min(agreed, CommonLength(found, callsign));
        found = found.empty() ? callsign : found;
    }
    if (found.empty())
        return std::string(text);
    return std::string(text.substr(0, wordBegins)) + std::string(found.substr(0, agreed)) + (several ? "" : " ");
}

std::string ReadyText(std::string_view text, std::string_view callsign)
{
    std::string ready;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char next = text[i] == '%' && i + 1 < text.size() ? text[i + 1] : '\0';
        if (next == 'c')
            ready += CallsignIn(callsign);
        else if (next == '%')
            ready += '%';
        else
            ready += text[i];
        i += next == 'c' || next == '%' ? 1 : 0;
    }
    return ready;
}
} // namespace corvane
