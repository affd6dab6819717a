#pragma once

#include "practice/Pilot.h"
#include "session/MemberManners.h"
#include "session/SessionPeer.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>

namespace corvane {
/// A simulated member of a session: its player, and what it says there. Pilots carry a Pilot; observers and a host
/// that does not fly carry none.
///
/// A failed send makes the member Lost; whoever owns it lets it go.
class PracticeMember {
public:
    PracticeMember(std::shared_ptr<SessionPeer> peer, PlayerId id, std::string name, std::optional<Pilot> pilot);

    [[nodiscard]] SessionPeer& Peer() const noexcept { return *m_peer; }
    [[nodiscard]] std::shared_ptr<SessionPeer> SharePeer() const noexcept { return m_peer; }
    [[nodiscard]] PlayerId Id() const noexcept { return m_manners.Id(); }
    [[nodiscard]] const std::string& Name() const noexcept { return m_name; }
    [[nodiscard]] bool IsPilot() const noexcept { return Flying.has_value(); }
    [[nodiscard]] bool IsLost() const noexcept { return m_lost; }
    void SetLost() noexcept { m_lost = true; }

    /// Asks the host for admission, as a pilot or as an observer; again is for another attempt.
    void RequestAdmission(bool again);
    /// Joins the group that the simulator's members join, where it is still there, and announces itself to all.
    void EnterAdmitted(std::int32_t group);
    /// Answers a request of another member, where it has an answer.
    void Answer(PlayerId asker, MessageType request);
    void SendPosition();
    void Say(std::string_view text);
    /// As the host: admits or refuses a player that asks.
    void Admit(PlayerId requester, MessageType request, bool admits);
    void SendHostLeft();
    void Rename(std::string_view name);
    /// Leaves the session; a failure is not news to someone who leaves.
    void Leave();

    /// Remembers a chat line that speaks to this member; what comes faster than it can be worked off is not heard.
    void Hear(std::string line);
    std::optional<std::string> TakeLine();

    std::optional<Pilot> Flying;
    bool Admitted = false;
    bool Silent = false;         ///< hears nothing and answers nothing
    double ReadBackErrors = 0;   ///< share of the instructions that are taken wrongly
    bool ShortPositions = false; ///< PositionShort instead of PositionFull
    double WaitingS = 0;         ///< for admission, since the last attempt
    int Attempts = 0;

private:
    void Send(PlayerId to, ByteSpan message);

    std::shared_ptr<SessionPeer> m_peer;
    MemberManners m_manners;
    std::string m_name;
    std::deque<std::string> m_lines;
    bool m_lost = false;
};
} // namespace corvane
