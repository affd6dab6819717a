#pragma once

#include "cli/NetworkOptions.h"
#include "cli/RecordJson.h"
#include "follow/SessionEvents.h"

#include <ostream>

namespace corvane {
/// Prints a session's events, a line each, at once.
class EventLines final : public SessionEvents {
public:
    EventLines(std::ostream& out, const EndOfRun& end) : m_out(out), m_end(end) {}

    void Listening(const std::string& address, std::uint16_t port);
    void Joined(PlayerId ownPlayerId, std::string_view session) override;
    void PlayerAdded(const PlayerRecord& player) override { PrintPlayer("player-added", player); }
    void PlayerUpdated(const PlayerRecord& player) override { PrintPlayer("player-updated", player); }
    void PlayerRemoved(const PlayerRecord& player) override { PrintPlayer("player-removed", player); }
    void Chat(std::string_view from, std::string_view text) override;
    /// A box that says what the end of the run has brought about would have nobody to read it.
    void Notice(MessageIcon icon, std::string_view text) override;
    void Disconnected(std::string_view reason) override;

private:
    void Print(const char* event, const Json& members);
    void PrintPlayer(const char* event, const PlayerRecord& player);

    std::ostream& m_out;
    const EndOfRun& m_end;
};
} // namespace corvane
