#pragma once

#include "core/MessageBoxes.h"
#include "session/PlayerTable.h"
#include "session/SessionPeer.h"

#include <string_view>

namespace corvane {
/// What happens in a session, told to whoever follows it without windows. Texts are Windows-1252; records are valid
/// during the call only.
class SessionEvents {
public:
    virtual ~SessionEvents() = default;

    /// The own player is in the session, and admitted.
    virtual void Joined(PlayerId ownPlayerId, std::string_view session) = 0;
    virtual void PlayerAdded(const PlayerRecord& player) = 0;
    virtual void PlayerUpdated(const PlayerRecord& player) = 0;
    virtual void PlayerRemoved(const PlayerRecord& player) = 0;
    virtual void Chat(std::string_view from, std::string_view text) = 0;
    /// What the program would show in a message box.
    virtual void Notice(MessageIcon icon, std::string_view text) = 0;
    /// The end: nothing follows.
    virtual void Disconnected(std::string_view reason) = 0;
};
} // namespace corvane
