#pragma once

#include "net/machine/PeerMachine.h"
#include "session/SessionPeer.h"

#include <map>
#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

namespace corvane::directplay {
/// What the program's thread knows of the session. The network thread brings it up to date by what has changed, so that
/// a session of thousands costs no more than one of few while nobody comes or goes.
class Roster {
public:
    /// Network thread.
    void Update(PeerMachine& machine);

    // Any thread.
    [[nodiscard]] bool InSession() const;
    [[nodiscard]] bool Hosting() const;
    /// Why the session ended without our leaving it; empty while one runs.
    [[nodiscard]] std::string LossReason() const;
    /// In order of arrival.
    [[nodiscard]] std::vector<SessionMember> Players() const;
    [[nodiscard]] std::vector<SessionMember> Groups() const;
    /// Of a player that is or was in the session.
    [[nodiscard]] std::optional<std::string> NameOf(PlayerId player) const;
    [[nodiscard]] bool IsOwn(PlayerId player) const;

private:
    struct Entry {
        std::string Name;
        std::optional<std::uint64_t> Order; ///< none for players that have left
        bool IsGroup = false;
        bool IsOwn = false;
    };
    void Forget(WireId id);
    void Look(PeerMachine& machine, WireId id);
    void LookAtAll(PeerMachine& machine);
    [[nodiscard]] std::vector<SessionMember> List(const std::map<std::uint64_t, WireId>& order) const;

    mutable std::mutex m_mutex;
    bool m_inSession = false;
    bool m_hosting = false;
    std::string m_lossReason;
    std::unordered_map<WireId, Entry> m_entries;
    std::map<std::uint64_t, WireId> m_players; ///< by order of arrival
    std::map<std::uint64_t, WireId> m_groups;
};
} // namespace corvane::directplay
