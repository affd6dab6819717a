#pragma once

#include "session/MessageCodec.h"
#include "session/SessionPeer.h"

#include <optional>
#include <vector>

namespace corvane {
/// How a member behaves towards the others of its session: what it says of itself, how it asks to be admitted, what it
/// answers, and as the host whom it admits. It makes messages; what carries them is its owner's business. For all
/// members that this program plays: simulated pilots, recorded members, aircraft of other traffic, and the program's
/// own player.
class MemberManners {
public:
    /// The formal name of every player; and the group that the simulator's members join once they are admitted.
    static constexpr const char* FormalName = "Player";
    static constexpr const char* Group = "FS61_REFUSE_PARAMS";

    /// announces  PilotAnnounce or ObserverAnnounce; nothing for a member that says nothing of itself
    explicit MemberManners(PlayerId id, std::optional<MessageType> announces = MessageType::PilotAnnounce) noexcept
        : m_id(id), m_announces(announces)
    {
    }

    /// The whole AircraftInfo message that tells its aircraft; without it, nobody is told.
    void SetAircraft(Bytes aircraftInfo) { m_aircraft = std::move(aircraftInfo); }

    [[nodiscard]] PlayerId Id() const noexcept { return m_id; }
    /// What it tells everybody when it is admitted; empty where it says nothing of itself.
    [[nodiscard]] Bytes Introduction() const;
    /// What it says to whoever asks it for its introduction or its aircraft; empty for other messages, and where it has
    /// nothing to say.
    [[nodiscard]] Bytes AnswerTo(MessageType request) const;

    /// What it tells everybody to be admitted, in order; again is for another attempt.
    [[nodiscard]] std::vector<Bytes> RequestsForAdmission(bool again) const;
    /// Whether a message asks the host for admission.
    [[nodiscard]] static bool AsksForAdmission(MessageType message) noexcept;
    /// The host's answer to such a request, for the one that asks.
    [[nodiscard]] static Bytes Admission(MessageType request, PlayerId requester, bool admits);
    /// What the host tells everybody before it goes.
    [[nodiscard]] static Bytes Farewell();

private:
    PlayerId m_id;
    std::optional<MessageType> m_announces;
    Bytes m_aircraft;
};
} // namespace corvane
