#include "app/windows/ScriptedStart.h"

#include "core/Text.h"

#include <iostream>

namespace corvane {
void ScriptedBoxes::Show(MessageIcon icon, std::string_view title, std::string_view text)
{
    if (icon != MessageIcon::Information)
        JoinEnds();
    if (m_unattended)
        std::cerr << "corvane: " << TerminalText(Windows1252ToUtf8(text)) << '\n';
    else if (!m_pressing)
        m_shown.Show(icon, title, text);
}

bool ScriptedBoxes::Confirm(std::string_view title, std::string_view text)
{
    return !m_unattended && m_shown.Confirm(title, text);
}

std::optional<std::string> ScriptedBoxes::AskText(std::string_view title, std::string_view prompt)
{
    return m_unattended ? std::nullopt : m_shown.AskText(title, prompt);
}
} // namespace corvane
