#include "net/machine/Pieces.h"

#include <algorithm>
#include <utility>

namespace corvane::directplay {
std::variant<Bytes, DropReason> PieceAssembler::Add(WireId machine, const Packet& piece, Millis now)
{
    const Key key{machine, piece.Message};
    auto at = m_unfinished.find(key);
    if (at == m_unfinished.end()) {
        if (piece.Index != 0)
            return Bytes();
        if (CountOf(machine) >= MaxUnfinishedPerMachine)
            return DropReason::Flooding;
        at = m_unfinished.try_emplace(key, Collected{piece.TotalPieces, piece.MessageSize, 0, {}, now}).first;
    }
    return Append(at, piece, now);
}

std::variant<Bytes, DropReason> PieceAssembler::Append(Place at, const Packet& piece, Millis now)
{
    Collected& collected = at->second;
    if (piece.TotalPieces != collected.TotalPieces || piece.MessageSize != collected.MessageSize)
        return DropReason::Malformed;
    if (piece.Index != collected.Next)
        return Bytes();
    if (piece.Offset != collected.Data.size()) {
        Drop(at);
        return DropReason::Malformed;
    }
    const std::size_t size = piece.Data.size();
    if (m_held + size > MaxUnfinishedBytes || HeldBy(at->first.first) + size > MaxUnfinishedBytes / 4) {
        Drop(at);
        return DropReason::Flooding;
    }
    collected.Data.insert(collected.Data.end(), piece.Data.begin(), piece.Data.end());
    m_held += piece.Data.size();
    collected.LastPiece = now;
    if (++collected.Next < collected.TotalPieces)
        return Bytes();
    const bool whole = collected.Data.size() == collected.MessageSize;
    m_held -= collected.Data.size();
    Bytes message = std::exchange(collected.Data, Bytes());
    m_unfinished.erase(at);
    if (!whole)
        return DropReason::Malformed;
    return message;
}

void PieceAssembler::Expire(Millis now, Millis idle)
{
    for (auto at = m_unfinished.begin(); at != m_unfinished.end();)
        at = now - at->second.LastPiece > idle ? Drop(at) : std::next(at);
}

void PieceAssembler::Forget(WireId machine)
{
    for (auto at = m_unfinished.begin(); at != m_unfinished.end();)
        at = at->first.first == machine ? Drop(at) : std::next(at);
}

std::size_t PieceAssembler::CountOf(WireId machine) const
{
    return static_cast<std::size_t>(
        std::ranges::count_if(m_unfinished, [&](const auto& entry) { return entry.first.first == machine; }));
}

std::size_t PieceAssembler::HeldBy(WireId machine) const
{
    std::size_t bytes = 0;
    for (auto at = m_unfinished.lower_bound({machine, Guid{}}); at != m_unfinished.end(); ++at) {
        if (at->first.first != machine)
            break;
        bytes += at->second.Data.size();
    }
    return bytes;
}

PieceAssembler::Place PieceAssembler::Drop(Place at)
{
    m_held -= at->second.Data.size();
    return m_unfinished.erase(at);
}

std::vector<Packet> CutMessage(ByteSpan message, const Guid& name, std::size_t pieceSize)
{
    std::vector<Packet> pieces;
    const std::size_t total = (message.size() + pieceSize - 1) / pieceSize;
    for (std::size_t at = 0; at < message.size(); at += pieceSize) {
        const ByteSpan data = message.subspan(at, std::min(pieceSize, message.size() - at));
        pieces.push_back({name, static_cast<std::uint32_t>(pieces.size()), static_cast<std::uint32_t>(at),
                          static_cast<std::uint32_t>(total), static_cast<std::uint32_t>(message.size()),
                          Bytes(data.begin(), data.end())});
    }
    return pieces;
}
} // namespace corvane::directplay
