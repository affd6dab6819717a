#pragma once

#include "core/Result.h"
#include "session/SessionPeer.h"

#include <cstdint>
#include <deque>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace corvane {
/// What one peer has at its end of an in-memory session: its queue, in order of arrival, of the messages to all its
/// players. A queue that nobody reads loses its oldest messages: those are the positions that newer ones supersede.
class InMemoryMachine {
public:
    static constexpr std::size_t QueueLimit = 65536;

    void Queue(ReceivedMessage message);
    /// The oldest message; one must be waiting.
    ReceivedMessage Take();
    [[nodiscard]] bool IsEmpty() const noexcept { return m_queue.empty(); }
    [[nodiscard]] std::int32_t WaitingFor(PlayerId player) const noexcept;
    /// Forgets a player's waiting messages.
    void Forget(PlayerId player);

private:
    std::int32_t& CountOf(PlayerId player);

    std::deque<ReceivedMessage> m_queue;
    std::unordered_map<PlayerId, std::int32_t> m_waiting;
};

/// A session inside the process: its players and groups in order of creation, and the machines taking part.
///
/// The machine that made the session is its host. When it leaves, the machine that has been there longest hosts on if
/// the session's flags allow host migration; otherwise the session is lost: each remaining machine then sees its own
/// players alone and cannot send.
class InMemorySession {
public:
    /// Queued with sender 0 as the transport's own messages, of which these are the first 32-bit numbers.
    enum class SystemMessage : std::int32_t {
        PlayerOrGroupCreated = 0x0003,
        PlayerDestroyed = 0x0005,
        PlayerAddedToGroup = 0x0007,
        SessionLost = 0x0031,
        BecameHost = 0x0101,
        NameChanged = 0x0103,
    };

    InMemorySession(SessionEntry description, InMemoryMachine& host);

    /// The description with the current number of players, without the password.
    [[nodiscard]] SessionEntry Listing() const;
    [[nodiscard]] const std::string& InstanceGuid() const noexcept { return m_description.InstanceGuid; }
    [[nodiscard]] bool IsFull() const noexcept;
    [[nodiscard]] bool IsLost() const noexcept { return m_lost; }
    [[nodiscard]] bool IsHost(const InMemoryMachine& machine) const noexcept { return m_host == &machine; }

    Result<void> Join(InMemoryMachine& machine, std::string_view password);
    void Leave(InMemoryMachine& machine);

    Result<PlayerId> CreatePlayer(InMemoryMachine& machine, std::string_view friendlyName);
    Result<void> DestroyPlayer(const InMemoryMachine& machine, PlayerId player);
    Result<void> Rename(const InMemoryMachine& machine, PlayerId player, std::string_view friendlyName);
    /// Also answers for players that have left, whose last messages may still be waiting somewhere.
    [[nodiscard]] Result<std::string> FriendlyName(PlayerId player) const;
    [[nodiscard]] std::vector<SessionMember> Players(const InMemoryMachine& seenFrom) const;
    [[nodiscard]] bool Owns(const InMemoryMachine& machine, PlayerId player) const noexcept;

    std::int32_t CreateGroup(std::string_view shortName);
    [[nodiscard]] std::vector<SessionMember> Groups() const;
    Result<void> AddToGroup(std::int32_t group, PlayerId player);
    /// The players that were added to a group, in that order.
    [[nodiscard]] std::vector<PlayerId> GroupPlayers(std::int32_t group) const;

    /// A message to a player that has left is lost in silence, as on a network whose news travel no faster.
    Result<void> Send(const InMemoryMachine& machine, PlayerId from, PlayerId to, ByteSpan message);

private:
    static constexpr std::size_t RememberedNames = 1024;

    struct Player {
        InMemoryMachine* Machine = nullptr;
        SessionMember Member;
    };
    struct Group {
        SessionMember Member;
        std::vector<PlayerId> Players;
    };

    [[nodiscard]] const Player* Find(PlayerId player) const noexcept;
    [[nodiscard]] Player* Find(PlayerId player) noexcept;
    [[nodiscard]] bool HasLeft(PlayerId player) const noexcept;
    void RemovePlayer(PlayerId player);
    void ReplaceHost();
    void Deliver(const Player& to, PlayerId from, ByteSpan message);
    void Announce(SystemMessage message, const InMemoryMachine* except, std::span<const std::int32_t> values);

    SessionEntry m_description;
    InMemoryMachine* m_host;
    bool m_lost = false;
    std::int32_t m_nextId = 1;
    std::vector<InMemoryMachine*> m_machines; ///< in order of joining
    std::vector<Player> m_players;            ///< by ascending id
    std::vector<Group> m_groups;
    std::deque<SessionMember> m_left; ///< the players that left last
};
} // namespace corvane
