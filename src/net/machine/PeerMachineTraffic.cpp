#include "net/machine/PeerMachine.h"
#include "net/wire/WireEncode.h"

#include <algorithm>
#include <utility>

/// Player messages in both directions, whole and in pieces.
namespace corvane::directplay {
/// True when a message may come from this machine: by its address, and by what the same stream has shown before.
bool PeerMachine::SpeaksFor(const Origin& origin, const MachineEntry& machine) const
{
    if (machine.Id == m_ownId)
        return false;
    if (origin.Opened)
        return origin.Machine == machine.Stream;
    if (origin.Remote.Ip != machine.Stream.Ip)
        return false;
    if (origin.Connection) {
        const auto bound = m_boundStreams.find(*origin.Connection);
        return bound == m_boundStreams.end() || bound->second == machine.Stream;
    }
    // Machines that share an address are told apart by their datagram ports, where those are what they announced.
    return std::ranges::none_of(m_table.Machines(), [&](const auto& entry) {
        return entry.first != machine.Id && entry.second.Datagram == origin.Remote;
    });
}

bool PeerMachine::OnPlayerMessage(const Origin& origin, ByteSpan bare, Millis now)
{
    if (m_phase == Phase::WaitingForTable)
        return Hold(origin, bare, 0, now);
    if (m_phase != Phase::Member)
        return Drop(DropReason::Stranger);
    if ((m_description.Flags & FlagNoMessageId) != 0)
        return DeliverUnnamed(origin, bare, now);
    const auto decoded = DecodePlayerMessage(bare, true);
    if (const auto* reason = std::get_if<DropReason>(&decoded))
        return Drop(*reason);
    const auto& message = std::get<PlayerMessage>(decoded);
    const PlayerEntry* sender = std::as_const(m_table).FindPlayer(message.From);
    if (sender == nullptr) {
        if (m_departed.Contains(message.From) || !m_table.KnowsIp(origin.Remote.Ip))
            return Drop(DropReason::Stranger);
        return Hold(origin, bare, message.From, now);
    }
    MachineEntry* machine = m_table.FindMachine(sender->Machine);
    if (machine == nullptr || !SpeaksFor(origin, *machine) || message.From == message.To)
        return Drop(DropReason::Stranger);
    Heard(*machine, now);
    Route(machine->Id, message);
    return true;
}

/// In sessions without ids the sender is unknown and the message is everybody's.
bool PeerMachine::DeliverUnnamed(const Origin& origin, ByteSpan content, Millis now)
{
    for (auto& [id, machine] : m_table.Machines()) {
        if (!SpeaksFor(origin, machine))
            continue;
        Heard(machine, now);
        Route(id, {UnknownPlayer, EveryPlayer, content});
        return true;
    }
    return Drop(DropReason::Stranger);
}

/// Hands a message to the own players that it is meant for; whoever else is in the session costs nothing here.
void PeerMachine::Route(WireId machine, const PlayerMessage& message)
{
    for (const WireId own : m_table.PlayersOf(m_ownId)) {
        const bool meant = message.To == EveryPlayer || message.To == own ||
                           std::as_const(m_table).FindPlayer(own)->Groups.contains(message.To);
        if (meant && own != message.From)
            m_output.Deliver(machine, message.From, own, message.Payload);
    }
}

/// The players that a message to a player, a group or everybody reaches: never its sender.
std::vector<WireId> PeerMachine::Recipients(WireId from, WireId to) const
{
    std::vector<WireId> players;
    if (to == EveryPlayer) {
        for (const auto& [id, player] : m_table.Players())
            players.push_back(id);
    } else if (const auto group = m_table.Groups().find(to); group != m_table.Groups().end()) {
        players = group->second.Members;
    } else if (m_table.FindPlayer(to) != nullptr) {
        players.push_back(to);
    }
    std::erase(players, from);
    return players;
}

bool PeerMachine::Hold(const Origin& origin, ByteSpan bare, WireId sender, Millis now)
{
    std::size_t messages = 0; // of the same source, which must leave room for others
    std::size_t bytes = bare.size();
    for (const HeldMessage& held : m_held) {
        if (held.From.Remote.Ip != origin.Remote.Ip)
            continue;
        ++messages;
        bytes += held.Content.size();
    }
    if (messages >= MaxHeldMessages / 2 || bytes > MaxHeldBytes / 2 || m_held.size() >= MaxHeldMessages ||
        m_heldBytes + bare.size() > MaxHeldBytes)
        return Drop(DropReason::Flooding);
    m_held.push_back({origin, Bytes(bare.begin(), bare.end()), sender, now});
    m_heldBytes += bare.size();
    return false;
}

/// Looks again at the messages of a sender that has become known; 0: at those that waited for the table.
void PeerMachine::ReplayHeld(WireId sender, Millis now)
{
    std::vector<HeldMessage> ready;
    std::erase_if(m_held, [&](HeldMessage& held) {
        if (held.Sender != sender)
            return false;
        m_heldBytes -= held.Content.size();
        ready.push_back(std::move(held));
        return true;
    });
    for (const HeldMessage& held : ready) {
        const bool management = held.Content.size() >= SignaturePart && ByteReader(held.Content).ReadU32() == Signature;
        Dispatch(held.From, held.Content, management, now);
    }
}

bool PeerMachine::Handle(const Origin& origin, const PlayerWrapper& message, Millis now)
{
    return OnPlayerMessage(origin, UnwrapPlayerMessage(message.Content), now);
}

bool PeerMachine::Handle(const Origin& origin, const Packet& message, Millis now)
{
    return OnPiece(origin, message, now);
}

bool PeerMachine::Handle(const Origin& origin, const Packet2Data& message, Millis now)
{
    if (MemberAt(origin) == nullptr)
        return Drop(DropReason::Stranger);
    AnswerInKind(origin, Packet2Ack{message.Message, message.Index});
    return OnPiece(
        origin,
        {message.Message, message.Index, message.Offset, message.TotalPieces, message.MessageSize, message.Data}, now);
}

bool PeerMachine::Handle(const Origin& origin, const Packet2Ack& /*message*/, Millis /*now*/)
{
    return MemberAt(origin) != nullptr; // our streams are reliable by themselves: nothing waits for it
}

bool PeerMachine::OnPiece(const Origin& origin, const Packet& piece, Millis now)
{
    const MachineEntry* machine = MemberAt(origin);
    if (machine == nullptr)
        return Drop(DropReason::Stranger);
    if (origin.Nested)
        return Drop(DropReason::Malformed); // pieces of pieces have no end
    const auto added = m_pieces.Add(machine->Id, piece, now);
    if (const auto* reason = std::get_if<DropReason>(&added))
        return Drop(*reason);
    const auto& whole = std::get<Bytes>(added);
    if (whole.empty())
        return true;
    Origin inner = origin;
    inner.Nested = true;
    // A large message may or may not have kept the prefix that it would have had on a socket.
    const ByteSpan bare = UnwrapPlayerMessage(whole);
    const bool management = bare.size() >= SignaturePart && ByteReader(bare).ReadU32() == Signature;
    return Dispatch(inner, bare, management, now);
}

Result<void> PeerMachine::Send(WireId from, WireId to, bool guaranteed, ByteSpan content, Millis /*now*/)
{
    if (m_phase != Phase::Member)
        return Fail("session", m_lossReason.empty() ? "there is none" : m_lossReason);
    if (!IsOwnPlayer(from))
        return Fail("player " + std::to_string(from), "is not one of this machine's");
    if (content.size() > MaxMessageSize - HeaderSize - SignaturePart)
        return Fail("message", "has " + std::to_string(content.size()) + " bytes, too many for the protocol");
    const bool known = to == EveryPlayer || m_table.Contains(to) || m_departed.Contains(to);
    if (!known)
        return Fail("player " + std::to_string(to), "is unknown in this session");
    for (const WireId target : Recipients(from, to)) {
        const PlayerEntry* player = std::as_const(m_table).FindPlayer(target);
        if (player == nullptr)
            continue;
        if (player->Machine == m_ownId)
            m_output.Deliver(m_ownId, from, target, content);
        else if (const MachineEntry* machine = m_table.FindMachine(player->Machine))
            SendPlayerMessage(*machine, from, target, guaranteed, content);
    }
    return {};
}

/// Messages that need not be guaranteed go by datagram while they fit into one.
void PeerMachine::SendPlayerMessage(const MachineEntry& machine, WireId from, WireId to, bool guaranteed,
                                    ByteSpan content)
{
    if (machine.Unreachable)
        return;
    const bool withIds = (m_description.Flags & FlagNoMessageId) == 0;
    Bytes message = EncodePlayerMessage(from, to, content, m_config.StreamPort, withIds);
    if (guaranteed || machine.Datagram.Port == 0)
        return m_output.SendStream(machine.Stream, std::move(message));
    if (message.size() <= MaxDatagramMessage)
        return m_output.SendDatagram(machine.Datagram, std::move(message));
    if (m_config.PiecesByDatagram)
        return SendPieces(machine, ByteSpan(message).subspan(PrefixSize));
    m_output.SendStream(machine.Stream, std::move(message));
}

void PeerMachine::SendPieces(const MachineEntry& machine, ByteSpan bare)
{
    constexpr std::size_t PieceHeader = 68;
    Guid name;
    for (auto& byte : name.Value)
        byte = static_cast<std::uint8_t>(m_random());
    for (const Packet& piece : CutMessage(bare, name, MaxDatagramMessage - PieceHeader))
        m_output.SendDatagram(machine.Datagram, EncodeMessage(piece, m_config.StreamPort));
}
} // namespace corvane::directplay
