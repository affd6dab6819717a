#pragma once

#include "net/machine/SessionHost.h"

namespace corvane::directplay {
/// What the other machines tell of players, groups and the session's description. Only its owner and the host may
/// change an entry; a host takes only players and groups whose ids it gave out.
class OtherMembers {
public:
    OtherMembers(PeerCommon& common, SessionHost& host) : m_common(common), m_host(host) {}

    /// A player that its creator describes. Its id is known from now on; nothing where it may not be.
    std::optional<WireId> Enter(const Origin& origin, const CreatePlayerMessage& message, Millis now);
    std::optional<WireId> Enter(const Origin& origin, const CreatePlayerVerify& message, Millis now);
    bool Handle(const Origin& origin, const CreateGroupMessage& message, Millis now);
    bool Handle(const Origin& origin, const AddForward& message, Millis now);
    bool Handle(const Origin& origin, const DeleteGroupMessage& message);
    bool Handle(const Origin& origin, const AddPlayerToGroupMessage& message);
    bool Handle(const Origin& origin, const DeletePlayerFromGroup& message);
    bool Handle(const Origin& origin, const PlayerDataChanged& message);
    bool Handle(const Origin& origin, const GroupDataChanged& message);
    bool Handle(const Origin& origin, const PlayerNameChanged& message);
    bool Handle(const Origin& origin, const GroupNameChanged& message);
    bool Handle(const Origin& origin, const SessionDescChanged& message);

private:
    PlayerEntry* Store(const Origin& origin, const PackedPlayer& record, bool& isNew, Millis now);
    [[nodiscard]] bool MayStore(const Origin& origin, const PackedPlayer& record, WireId owner, Millis now);
    void AnswerVerify(const Origin& origin, Millis now);
    template <class Entry, class Message> bool Rename(const Origin& origin, Entry* entry, const Message& message);
    template <class Entry, class Message> bool StoreData(const Origin& origin, Entry* entry, const Message& message);

    PeerCommon& m_common;
    SessionHost& m_host;
};
} // namespace corvane::directplay
