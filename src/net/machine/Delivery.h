#pragma once

#include "net/machine/HeldMessages.h"
#include "net/machine/PeerCommon.h"
#include "net/machine/Pieces.h"

namespace corvane::directplay {
/// Player messages in both directions, whole and in pieces. What comes before its sender is known waits for it.
class Delivery {
public:
    /// course  looks at messages that have become whole, or whose sender has become known
    Delivery(PeerCommon& common, PeerCourse& course) : m_common(common), m_course(course) {}

    /// bare: from the sender's id on.
    bool OnPlayerMessage(const Origin& origin, ByteSpan bare, Millis now);
    bool Handle(const Origin& origin, const PlayerWrapper& message, Millis now);
    bool Handle(const Origin& origin, const Packet& message, Millis now) { return OnPiece(origin, message, now); }
    bool Handle(const Origin& origin, const Packet2Data& message, Millis now);
    bool Handle(const Origin& origin, const Packet2Ack& message);
    bool Hold(const Origin& origin, ByteSpan bare, WireId sender, Millis now);
    /// Looks again at the messages of a sender that has become known; 0: at those that waited for the table.
    void ReplayHeld(WireId sender, Millis now);

    Result<void> Send(WireId from, WireId to, bool guaranteed, ByteSpan content);

    void Tick(Millis now);
    void ForgetMachine(WireId machine) { m_pieces.Forget(machine); }
    void Clear();
    /// Bytes held for later.
    [[nodiscard]] std::size_t HeldBytes() const noexcept { return m_held.Size() + m_pieces.Held(); }

private:
    bool OnPiece(const Origin& origin, const Packet& piece, Millis now);
    bool DeliverUnnamed(const Origin& origin, ByteSpan content, Millis now);
    void Route(WireId machine, const PlayerMessage& message);
    void SendTo(const MachineEntry& machine, WireId from, WireId to, bool guaranteed, ByteSpan content);
    void SendPieces(const MachineEntry& machine, ByteSpan bare);

    PeerCommon& m_common;
    PeerCourse& m_course;
    PieceAssembler m_pieces;
    HeldMessages m_held;
};
} // namespace corvane::directplay
