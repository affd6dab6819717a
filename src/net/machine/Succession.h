#pragma once

#include "net/machine/Delivery.h"
#include "net/machine/Liveness.h"
#include "net/machine/OwnMembers.h"

namespace corvane::directplay {
/// Machines that go, with or without a word, and who hosts after the host: the one with the lowest id.
class Succession {
public:
    /// The duties that those who go concern.
    struct Duties {
        SessionHost& Hosts;
        Delivery& Delivers;
        Liveness& Watches;
        OwnMembers& Own;
    };
    /// course  ends a session that nobody hosts on
    Succession(PeerCommon& common, const Duties& duties, PeerCourse& course)
        : m_common(common), m_duties(duties), m_course(course)
    {
    }

    bool Handle(const Origin& origin, const DeletePlayerMessage& message, Millis now);
    bool Handle(const Origin& origin, const IAmNameServer& message, Millis now);
    bool Handle(const Origin& origin, const YouAreDead& message);
    /// Acts on the evidence that a machine is gone.
    void OnDead(WireId machine, Millis now);
    /// As host: tells everybody that a machine has vanished, its system player last.
    void Expel(WireId id, Millis now);

private:
    void MachineGone(WireId id, Millis now);
    void Remove(WireId id);
    void HostGone(Millis now);
    void Elect(Millis now);
    void BecomeHost(Millis now);

    PeerCommon& m_common;
    Duties m_duties;
    PeerCourse& m_course;
};
} // namespace corvane::directplay
