#pragma once

#include "net/machine/IdAllotment.h"
#include "net/machine/PeerCommon.h"

namespace corvane::directplay {
struct HostRequest {
    std::u16string Name;
    std::u16string Password;
    Guid Application;
    std::uint32_t Flags = 0;
    std::uint32_t MaxPlayers = 0; ///< 0: no limit
};

/// The host's side: answers enumerations, gives out ids, and admits machines. An id that was given out is good for the
/// machine that asked for it, for a while; a machine is admitted once the others have acknowledged it.
class SessionHost {
public:
    explicit SessionHost(PeerCommon& common) : m_common(common) {}

    /// Makes a session; ends the request.
    void Begin(const HostRequest& request, Millis now);
    /// This machine hosts a session that another hosted before. That one may have given out ids that nobody here
    /// knows of; whoever got them uses them at once.
    void TakeOver(Millis now);
    void Tick(Millis now);
    /// The session is over.
    void Clear();

    bool Handle(const Origin& origin, const EnumSessions& message, Millis now);
    bool Handle(const Origin& origin, const EnumPlayer& message, Millis now);
    bool Handle(const Origin& origin, const RequestPlayerId& message, Millis now);
    bool Handle(const Origin& origin, const RequestGroupId& message, Millis now);
    bool Handle(const Origin& origin, const AddForwardAck& message, Millis now);
    /// A machine that was given its id wants to come in: false, and answered, where it may not.
    bool Redeem(const Origin& origin, const AddForwardRequest& message);
    /// Lets it in, once the others know it.
    void Admit(const Origin& origin, const AddForwardRequest& message, Millis now);

    /// An id for a player or group of this machine.
    std::optional<WireId> NewId();
    [[nodiscard]] bool Full() const;
    /// True for an id that waits for the machine to use it.
    [[nodiscard]] bool WasGiven(WireId id, RequestKind kind, const SocketAddress& machine, Millis now) const;
    void Release(WireId id);
    /// What was given to a machine that cannot be reached is free again.
    void ForgetReservations(const SocketAddress& machine);
    /// A machine has gone: nobody's admission waits for it any more.
    void ForgetMachine(WireId id);

private:
    /// An id that has been given out and that has not come into use.
    struct Reservation {
        WireId Id = 0;
        SocketAddress Machine;
        RequestKind Kind = RequestKind::None;
        std::optional<ConnectionId> Connection;
        Millis Deadline{};
    };
    /// A joiner whose table waits for the acknowledgements of the others.
    struct Admission {
        WireId Joiner = 0;
        std::set<WireId> Waiting;
        Millis Deadline{};
    };

    [[nodiscard]] std::uint32_t CurrentPlayers() const;
    [[nodiscard]] std::size_t MachinesAt(std::uint32_t ip) const;
    std::optional<WireId> Reserve(const Origin& origin, RequestKind kind, Millis now);
    void Refuse(const Origin& origin, std::uint32_t result);
    MachineEntry* Enter(const Origin& origin, const AddForwardRequest& message, Millis now);
    void CompleteAdmission(WireId joiner);

    PeerCommon& m_common;
    IdAllotment m_ids;
    std::vector<Reservation> m_reservations;
    std::vector<Admission> m_admissions;
    Millis m_tookOver{}; ///< when hosting began, for ids that the host before gave out
};
} // namespace corvane::directplay
