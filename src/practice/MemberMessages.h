#pragma once

#include "practice/PracticeCrew.h"

namespace corvane {
/// Takes what was sent to the simulated members and does with it what members do: admits, answers, listens, leaves.
class MemberMessages {
public:
    /// What of the session the answers depend on.
    struct Setting {
        const SessionEntry& Entry;
        std::int32_t Group; ///< that the admitted join
        std::int32_t MaxPlayers;
        bool PeerForEach; ///< every member has a peer of its own
    };
    MemberMessages(const PracticeCrew& crew, Setting setting) noexcept : m_crew(crew), m_setting(setting) {}

    void ReceiveAll();

private:
    void ReceiveOn(SessionPeer& peer);
    void Handle(PracticeMember& member, const ReceivedMessage& message);
    void HandleAnnounce(PracticeMember& member, const MessageHeader& header, const ReceivedMessage& message) const;
    void HandleChat(PracticeMember& member, const MessageHeader& header, const ReceivedMessage& message) const;
    [[nodiscard]] bool HasRoom() const;
    [[nodiscard]] bool IsFromHost(const ReceivedMessage& message) const noexcept;

    const PracticeCrew& m_crew;
    Setting m_setting;
};
} // namespace corvane
