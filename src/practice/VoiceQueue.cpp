#include "practice/VoiceQueue.h"

#include "practice/AloudText.h"

#include <utility>

namespace corvane {
/// FNV-1a, which is the same everywhere.
static std::uint32_t VoiceOf(std::string_view speaker) noexcept
{
    constexpr std::uint32_t Prime = 16777619;
    std::uint32_t hash = 2166136261;
    for (const char c : speaker)
        hash = (hash ^ static_cast<unsigned char>(c)) * Prime;
    return hash;
}

void VoiceQueue::Add(std::string_view speaker, std::string_view text, std::int64_t nowMs)
{
    if (m_waiting.size() == MostWaiting)
        m_waiting.pop_front();
    m_waiting.push_back({{AloudText(text.substr(0, LongestText), speaker), VoiceOf(speaker)}, nowMs});
}

std::optional<VoiceQueue::Line> VoiceQueue::Next(std::int64_t nowMs)
{
    if (m_sinceMs && nowMs - *m_sinceMs < LongestLineMs)
        return std::nullopt;
    m_sinceMs.reset();
    while (!m_waiting.empty() && nowMs - m_waiting.front().AddedMs > LongestWaitMs)
        m_waiting.pop_front();
    if (m_waiting.empty())
        return std::nullopt;
    Line line = std::move(m_waiting.front().What);
    m_waiting.pop_front();
    m_sinceMs = nowMs;
    return line;
}

void VoiceQueue::Clear() noexcept
{
    m_waiting.clear();
    m_sinceMs.reset();
}
} // namespace corvane
