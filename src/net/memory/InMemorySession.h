#pragma once

#include "net/machine/SessionTable.h"
#include "session/SessionPeer.h"

#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
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

    directplay::WireId Id = 0; ///< in the session that it is in

private:
    std::deque<ReceivedMessage> m_queue;
    std::unordered_map<PlayerId, std::int32_t> m_waiting;
};

/// A session inside the process. Who is in it, whom a message reaches and who hosts after the host is the business of
/// the table that sessions on a network have; here all machines look into one, and nothing is under way.
///
/// The machine that made the session is its host. When it leaves, the machine that has been there longest hosts on if
/// the session's flags allow host migration; otherwise the session is lost: each remaining machine then sees its own
/// players alone and cannot send.
class InMemorySession {
public:
    InMemorySession(SessionEntry description, InMemoryMachine& host);

    /// The description with the current number of players, without the password.
    [[nodiscard]] SessionEntry Listing() const;
    /// Whether an enumeration with these flags finds it.
    [[nodiscard]] bool IsFoundBy(std::uint32_t flags) const;
    [[nodiscard]] const std::string& InstanceGuid() const noexcept { return m_description.InstanceGuid; }
    [[nodiscard]] bool IsLost() const noexcept { return m_lost; }
    [[nodiscard]] bool IsHost(const InMemoryMachine& machine) const noexcept { return m_table.HostId == machine.Id; }

    Result<void> Join(InMemoryMachine& machine, std::string_view password);
    void Leave(InMemoryMachine& machine);

    Result<PlayerId> CreatePlayer(const InMemoryMachine& machine, std::string_view friendlyName);
    Result<void> DestroyPlayer(InMemoryMachine& machine, PlayerId player);
    Result<void> Rename(const InMemoryMachine& machine, PlayerId player, std::string_view friendlyName);
    /// Also answers for players that have left, whose last messages may still be waiting somewhere.
    [[nodiscard]] Result<std::string> FriendlyName(PlayerId player) const;
    [[nodiscard]] std::vector<SessionMember> Players(const InMemoryMachine& seenFrom) const;
    [[nodiscard]] bool Owns(const InMemoryMachine& machine, PlayerId player) const;

    Result<std::int32_t> CreateGroup(const InMemoryMachine& machine, std::string_view shortName);
    [[nodiscard]] std::vector<SessionMember> Groups() const;
    Result<void> AddToGroup(std::int32_t group, PlayerId player);

    /// A message to a player that has left is lost in silence, as on a network whose news travel no faster.
    Result<void> Send(const InMemoryMachine& machine, PlayerId from, PlayerId to, ByteSpan message);

private:
    bool Enter(InMemoryMachine& machine);

    SessionEntry m_description;
    directplay::SessionTable m_table; ///< its names have a unit for each Windows-1252 character
    std::map<directplay::WireId, InMemoryMachine*> m_machines;
    directplay::WireId m_nextMachine;
    directplay::WireId m_nextId = 1; ///< of players and groups; none is given twice
    bool m_lost = false;
};
} // namespace corvane
