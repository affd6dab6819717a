#pragma once

#include "core/MessageBoxes.h"
#include "session/PlayerTable.h"
#include "session/SessionState.h"

#include <string>
#include <string_view>
#include <vector>

namespace corvane {
/// The conversation as the chat window shows it. Texts are Windows-1252.
class ChatModel {
public:
    static constexpr std::string_view Banner = "[Corvane v3.0]";
    static constexpr std::string_view TypedTextAtFirst = "[Write your message here]";
    /// Beyond this many characters the oldest lines are forgotten.
    static constexpr std::size_t HistoryLimit = 200000;

    /// Puts the line "from: text" on top of everything already shown. Line breaks and other control characters in them
    /// are shown as middle dots, so that a line is always what one member said.
    void AddChatLine(std::string_view from, std::string_view text);
    /// Rebuilds the list of members from the table, in its order.
    void RefreshPlayerList(const PlayerTable& players);
    /// Starts again from the banner without members.
    void Clear();

    /// Newest line first; every line but the banner at the bottom ends with a carriage return and a line feed.
    [[nodiscard]] const std::string& History() const noexcept { return m_history; }
    /// The lines of the history, the banner among them.
    [[nodiscard]] std::size_t LineCount() const noexcept { return m_lineCount; }
    [[nodiscard]] const std::vector<std::string>& Members() const noexcept { return m_members; }

private:
    std::string m_history{Banner};
    std::size_t m_lineCount = 1;
    std::vector<std::string> m_members;
};

/// Sends a typed line to every member and adds it to the log. Without an own player the line is lost in silence.
/// Returns  whether the typed text is done with; false when sending failed, which the user has been told.
bool SendChat(const SessionState& session, std::string_view text, ChatModel& log, MessageBoxes& boxes);
} // namespace corvane
