#include "session/AttentionSigns.h"

namespace corvane {
std::string_view AttentionSignName(AttentionSign sign) noexcept
{
    constexpr std::array<std::string_view, AttentionSignCount> Names = {"alert", "silence", "chat", "join", "leave"};
    return Names[static_cast<std::size_t>(sign)];
}

void AttentionSigns::Note(AttentionSign sign, std::int64_t nowMs) noexcept
{
    const bool comesOrGoes = sign == AttentionSign::Join || sign == AttentionSign::Leave;
    if (comesOrGoes && nowMs - m_startMs < SettlingMs)
        return;
    for (Channel* const channel : {&m_sound, &m_flash})
        channel->Noted[static_cast<std::size_t>(sign)] = true;
}

void AttentionSigns::NoteSilence(bool silent, std::int64_t nowMs) noexcept
{
    if (silent && !m_silent)
        Note(AttentionSign::Silence, nowMs);
    m_silent = silent;
}

std::optional<AttentionSign> AttentionSigns::Channel::Take(const std::array<bool, AttentionSignCount>& wanted,
                                                           std::int64_t nowMs) noexcept
{
    std::optional<AttentionSign> due;
    for (std::size_t i = AttentionSignCount; i-- > 0;) {
        Noted[i] = Noted[i] && wanted[i];
        if (Noted[i])
            due = static_cast<AttentionSign>(i);
    }
    if (!due || (LastMs && nowMs - *LastMs < ApartMs))
        return std::nullopt;
    Noted = {};
    LastMs = nowMs;
    return due;
}

AttentionSigns::Due AttentionSigns::Take(const AttentionOptions& options, std::int64_t nowMs) noexcept
{
    return {m_sound.Take(options.Sound, nowMs), m_flash.Take(options.Flash, nowMs)};
}
} // namespace corvane
