#pragma once

#include "net/machine/PeerCommon.h"

namespace corvane::directplay {
/// Signs of life: pings machines that are silent, answers pings, and finds out who is dead.
class Liveness {
public:
    explicit Liveness(PeerCommon& common) : m_common(common) {}

    /// Pings whoever has been silent for a period. Returns those that let too many pings go by.
    std::vector<WireId> Tick(Millis now);
    bool Handle(const Origin& origin, const Ping& message, Millis now);
    bool Handle(const Origin& origin, const PingReply& message, Millis now);
    /// The host has gone: everybody is to show that he lives.
    void PingEverybody(Millis now);

private:
    [[nodiscard]] bool IsWatched(const MachineEntry& machine) const;
    [[nodiscard]] bool FoundDead(MachineEntry& machine, Millis now);
    void SendPing(const MachineEntry& machine, Millis now);
    MachineEntry* PingedBy(const Origin& origin, WireId from, Millis now);

    PeerCommon& m_common;
};
} // namespace corvane::directplay
