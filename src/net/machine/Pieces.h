#pragma once

#include "net/wire/WireDecode.h"

#include <map>

namespace corvane::directplay {
/// Puts large messages together from pieces that arrive in sequence. A piece that is not the next one is ignored.
///
/// Memory grows with what has arrived, never with what a piece announces, and is capped for each machine, whose
/// unfinished messages may take a quarter of what all may take.
class PieceAssembler {
public:
    /// The finished message when this was its last piece, otherwise empty, or why the piece was refused.
    std::variant<Bytes, DropReason> Add(WireId machine, const Packet& piece, Millis now);
    /// Drops messages that got no piece for longer than idle.
    void Expire(Millis now, Millis idle);
    void Forget(WireId machine);

    [[nodiscard]] std::size_t Unfinished() const noexcept { return m_unfinished.size(); }
    [[nodiscard]] std::size_t Held() const noexcept { return m_held; }

private:
    struct Collected {
        std::uint32_t TotalPieces = 0;
        std::uint32_t MessageSize = 0;
        std::uint32_t Next = 0;
        Bytes Data;
        Millis LastPiece{};
    };
    using Key = std::pair<WireId, Guid>;
    using Place = std::map<Key, Collected>::iterator;

    std::variant<Bytes, DropReason> Append(Place at, const Packet& piece, Millis now);
    [[nodiscard]] std::size_t CountOf(WireId machine) const;
    [[nodiscard]] std::size_t HeldBy(WireId machine) const;
    Place Drop(Place at);

    std::map<Key, Collected> m_unfinished;
    std::size_t m_held = 0;
};

/// Cuts a message into pieces of at most pieceSize data bytes each.
std::vector<Packet> CutMessage(ByteSpan message, const Guid& name, std::size_t pieceSize);
} // namespace corvane::directplay
