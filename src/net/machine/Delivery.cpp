#include "net/machine/Delivery.h"

#include "net/wire/WireDecode.h"
#include "net/wire/WireEncode.h"

#include <utility>

namespace corvane::directplay {
bool Delivery::OnPlayerMessage(const Origin& origin, ByteSpan bare, Millis now)
{
    SessionTable& table = m_common.Table;
    if (table.Phase == SessionPhase::WaitingForTable)
        return Hold(origin, bare, 0, now);
    if (!table.InSession())
        return m_common.Drop(DropReason::Stranger);
    if (table.HasFlag(FlagNoMessageId))
        return DeliverUnnamed(origin, bare, now);
    const auto decoded = DecodePlayerMessage(bare, true);
    if (const auto* reason = std::get_if<DropReason>(&decoded))
        return m_common.Drop(*reason);
    const auto& message = std::get<PlayerMessage>(decoded);
    const PlayerEntry* sender = table.Names.FindPlayer(message.From);
    if (sender == nullptr) {
        if (table.HasLeft(message.From) || !table.Names.KnowsIp(origin.Remote.Ip))
            return m_common.Drop(DropReason::Stranger);
        return Hold(origin, bare, message.From, now);
    }
    MachineEntry* machine = table.Names.FindMachine(sender->Machine);
    if (machine == nullptr || !table.SpeaksFor(origin, *machine) || message.From == message.To)
        return m_common.Drop(DropReason::Stranger);
    machine->Heard(now);
    Route(machine->Id, message);
    return true;
}

/// In sessions without ids the sender is unknown and the message is everybody's.
bool Delivery::DeliverUnnamed(const Origin& origin, ByteSpan content, Millis now)
{
    for (auto& [id, machine] : m_common.Table.Names.Machines()) {
        if (!m_common.Table.SpeaksFor(origin, machine))
            continue;
        machine.Heard(now);
        Route(id, {UnknownPlayer, EveryPlayer, content});
        return true;
    }
    return m_common.Drop(DropReason::Stranger);
}

/// Hands a message to the own players that it is meant for; whoever else is in the session costs nothing here.
void Delivery::Route(WireId machine, const PlayerMessage& message)
{
    const NameTable& names = m_common.Table.Names;
    for (const WireId own : names.PlayersOf(m_common.Table.OwnId)) {
        const bool meant =
            message.To == EveryPlayer || message.To == own || names.FindPlayer(own)->Groups.contains(message.To);
        if (meant && own != message.From)
            m_common.Output.Deliver(machine, message.From, own, message.Payload);
    }
}

bool Delivery::Hold(const Origin& origin, ByteSpan bare, WireId sender, Millis now)
{
    return m_held.Hold(origin, bare, sender, now) ? false : m_common.Drop(DropReason::Flooding);
}

void Delivery::ReplayHeld(WireId sender, Millis now)
{
    for (const HeldMessages::Held& held : m_held.TakeOf(sender))
        m_course.Dispatch(held.From, held.Content, now);
}

bool Delivery::Handle(const Origin& origin, const PlayerWrapper& message, Millis now)
{
    return OnPlayerMessage(origin, UnwrapPlayerMessage(message.Content), now);
}

bool Delivery::Handle(const Origin& origin, const Packet2Data& message, Millis now)
{
    if (m_common.Table.MemberAt(origin) == nullptr)
        return m_common.Drop(DropReason::Stranger);
    m_common.AnswerInKind(origin, Packet2Ack{message.Message, message.Index});
    return OnPiece(
        origin,
        {message.Message, message.Index, message.Offset, message.TotalPieces, message.MessageSize, message.Data}, now);
}

bool Delivery::Handle(const Origin& origin, const Packet2Ack& /*message*/)
{
    return m_common.Table.MemberAt(origin) != nullptr; // our streams are reliable by themselves: nothing waits for it
}

bool Delivery::OnPiece(const Origin& origin, const Packet& piece, Millis now)
{
    const MachineEntry* machine = m_common.Table.MemberAt(origin);
    if (machine == nullptr)
        return m_common.Drop(DropReason::Stranger);
    if (origin.Nested)
        return m_common.Drop(DropReason::Malformed); // pieces of pieces have no end
    const auto added = m_pieces.Add(machine->Id, piece, now);
    if (const auto* reason = std::get_if<DropReason>(&added))
        return m_common.Drop(*reason);
    const auto& whole = std::get<Bytes>(added);
    if (whole.empty())
        return true;
    Origin inner = origin;
    inner.Nested = true;
    // A large message may or may not have kept the prefix that it would have had on a socket.
    return m_course.Dispatch(inner, UnwrapPlayerMessage(whole), now);
}

Result<void> Delivery::Send(WireId from, WireId to, bool guaranteed, ByteSpan content)
{
    SessionTable& table = m_common.Table;
    if (!table.InSession())
        return Fail("session", table.LossReason.empty() ? "there is none" : table.LossReason);
    if (!table.IsOwnPlayer(from))
        return Fail("player " + std::to_string(from), "is not one of this machine's");
    if (content.size() > MaxMessageSize - HeaderSize - SignaturePart)
        return Fail("message", "has " + std::to_string(content.size()) + " bytes, too many for the protocol");
    if (!table.Knows(to))
        return Fail("player " + std::to_string(to), "is unknown in this session");
    for (const WireId target : table.Recipients(from, to)) {
        const PlayerEntry* player = table.Names.FindPlayer(target);
        if (player == nullptr)
            continue;
        if (player->Machine == table.OwnId)
            m_common.Output.Deliver(table.OwnId, from, target, content);
        else if (const MachineEntry* machine = table.Names.FindMachine(player->Machine))
            SendTo(*machine, from, target, guaranteed, content);
    }
    return {};
}

/// Messages that need not be guaranteed go by datagram while they fit into one.
void Delivery::SendTo(const MachineEntry& machine, WireId from, WireId to, bool guaranteed, ByteSpan content)
{
    if (machine.Unreachable)
        return;
    const bool withIds = !m_common.Table.HasFlag(FlagNoMessageId);
    Bytes message = EncodePlayerMessage(from, to, content, m_common.Config.StreamPort, withIds);
    if (guaranteed || machine.Datagram.Port == 0)
        return m_common.Output.SendStream(machine.Stream, std::move(message));
    if (message.size() <= MaxDatagramMessage)
        return m_common.Output.SendDatagram(machine.Datagram, std::move(message));
    if (m_common.Config.PiecesByDatagram)
        return SendPieces(machine, ByteSpan(message).subspan(PrefixSize));
    m_common.Output.SendStream(machine.Stream, std::move(message));
}

void Delivery::SendPieces(const MachineEntry& machine, ByteSpan bare)
{
    constexpr std::size_t PieceHeader = 68;
    Guid name;
    for (auto& byte : name.Value)
        byte = static_cast<std::uint8_t>(m_common.Random());
    for (const Packet& piece : CutMessage(bare, name, MaxDatagramMessage - PieceHeader))
        m_common.Output.SendDatagram(machine.Datagram, m_common.Encoded(piece));
}

void Delivery::Tick(Millis now)
{
    m_pieces.Expire(now, m_common.Config.Timers.PiecesIdle);
    if (!m_common.Table.InSession())
        return;
    for (std::size_t expired = m_held.Expire(now, m_common.Config.Timers.UnknownSender); expired > 0; --expired)
        m_common.Drop(DropReason::Stranger);
}

void Delivery::Clear()
{
    m_pieces = {};
    m_held = {};
}
} // namespace corvane::directplay
