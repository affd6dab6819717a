#pragma once

#include "follow/SessionEvents.h"

namespace corvane::test {
class NobodyListens : public SessionEvents {
public:
    void Joined(PlayerId /*ownPlayerId*/, std::string_view /*session*/) override {}
    void PlayerAdded(const PlayerRecord& /*player*/) override {}
    void PlayerUpdated(const PlayerRecord& /*player*/) override {}
    void PlayerRemoved(const PlayerRecord& /*player*/) override {}
    void Chat(std::string_view /*from*/, std::string_view /*text*/) override {}
    void Notice(MessageIcon /*icon*/, std::string_view /*text*/) override {}
    void Disconnected(std::string_view /*reason*/) override {}
};
} // namespace corvane::test
