#pragma once

#include "follow/SessionEvents.h"
#include "session/MessagePump.h"

#include <optional>
#include <string>
#include <utility>

namespace corvane {
/// Turns what a pump tells, and the boxes that it and a connection show, into session events. Boxes close at once.
class EventReporter final : public PumpEvents, public MessageBoxes {
public:
    /// password  the answer to a question for a text
    EventReporter(SessionEvents& events, std::string password) : m_events(events), m_password(std::move(password)) {}

    /// Whether the pump has said that the session is over; leaving it is left to the owner.
    [[nodiscard]] bool SessionIsOver() const noexcept { return m_sessionOver; }
    [[nodiscard]] const std::string& LastNotice() const noexcept { return m_lastNotice; }

    void RefreshPlayerList() override {}
    void AddChatLine(std::string_view from, std::string_view text) override { m_events.Chat(from, text); }
    void Disconnect() override { m_sessionOver = true; }
    void PlayerAdded(const PlayerRecord& player) override { m_events.PlayerAdded(player); }
    void PlayerUpdated(const PlayerRecord& player) override { m_events.PlayerUpdated(player); }
    void PlayerRemoved(const PlayerRecord& player) override { m_events.PlayerRemoved(player); }

    void Show(MessageIcon icon, std::string_view /*title*/, std::string_view text) override
    {
        m_lastNotice = text;
        m_events.Notice(icon, text);
    }
    bool Confirm(std::string_view /*title*/, std::string_view /*text*/) override { return false; }
    std::optional<std::string> AskText(std::string_view /*title*/, std::string_view /*prompt*/) override
    {
        return m_password;
    }

private:
    SessionEvents& m_events;
    std::string m_password;
    std::string m_lastNotice;
    bool m_sessionOver = false;
};
} // namespace corvane
