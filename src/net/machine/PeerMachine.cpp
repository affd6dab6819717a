#include "net/machine/PeerMachine.h"

#include "net/wire/WireEncode.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace corvane::directplay {
std::uint64_t PacketCounters::TotalDropped() const
{
    return std::accumulate(Dropped.begin(), Dropped.end(), std::uint64_t{0});
}

PeerMachine::PeerMachine(const PeerConfig& config, PeerOutput& output)
    : m_config(config), m_output(output), m_random(config.Seed)
{
}

bool PeerMachine::Drop(DropReason reason)
{
    CountDrop(reason);
    return false;
}

/// A relay on our own machine passes enumeration requests on with the asker's address inside; from anywhere else the
/// address is not to be believed.
static bool IsLocalRelay(const Prefix& prefix, const SocketAddress& remote, std::uint32_t localIp)
{
    return prefix.Token == TokenRelayed && prefix.Stated.Ip != 0 && remote.Ip == localIp;
}

static bool IsEnumRequest(ByteSpan bare)
{
    ByteReader in(bare);
    const bool management = in.ReadU32() == Signature;
    return management && in.ReadU16() == static_cast<std::uint16_t>(Command::EnumSessions);
}

bool PeerMachine::OnStream(const StreamSource& source, ByteSpan message, Millis now)
{
    ++m_counters.Received;
    const auto prefix = DecodePrefix(message);
    if (const auto* reason = std::get_if<DropReason>(&prefix))
        return Drop(*reason);
    const bool management = IsManagement(message);
    const ByteSpan bare = message.subspan(PrefixSize);
    if (source.Enumeration && !IsEnumRequest(bare))
        return Drop(management ? DropReason::Stranger : DropReason::BadMagic);
    const auto& head = std::get<Prefix>(prefix);
    Origin origin{{source.Remote.Ip, head.Stated.Port}, source.Remote, source.LocalIp, source.Connection};
    if (IsLocalRelay(head, source.Remote, source.LocalIp) && IsEnumRequest(bare))
        origin.Machine.Ip = head.Stated.Ip;
    origin.StatedPort = head.Stated.Port;
    if (source.Opened.Port != 0) {
        origin.Machine = source.Opened;
        origin.Opened = true;
    }
    return Dispatch(origin, bare, management, now);
}

bool PeerMachine::OnDatagram(const DatagramSource& source, ByteSpan packet, Millis now)
{
    ++m_counters.Received;
    const auto prefix = DecodePrefix(packet);
    if (const auto* reason = std::get_if<DropReason>(&prefix))
        return Drop(*reason);
    const bool management = IsManagement(packet);
    const ByteSpan bare = packet.subspan(PrefixSize);
    if (source.Enumeration && !IsEnumRequest(bare))
        return Drop(management ? DropReason::Stranger : DropReason::BadMagic);
    Origin origin{{source.Remote.Ip, std::get<Prefix>(prefix).Stated.Port}, source.Remote};
    origin.StatedPort = origin.Machine.Port;
    return Dispatch(origin, bare, management, now);
}

bool PeerMachine::Dispatch(const Origin& origin, ByteSpan bare, bool management, Millis now)
{
    return management ? DispatchManagement(origin, bare, now) : OnPlayerMessage(origin, bare, now);
}

/// True for what may come before the joiner has its table, and must be kept until then.
static bool WaitsForTable(const WireMessage& message)
{
    return std::holds_alternative<AddForward>(message) || std::holds_alternative<CreatePlayerMessage>(message) ||
           std::holds_alternative<CreateGroupMessage>(message) ||
           std::holds_alternative<AddPlayerToGroupMessage>(message);
}

bool PeerMachine::DispatchManagement(Origin origin, ByteSpan bare, Millis now)
{
    auto decoded = DecodeManagement(bare);
    if (const auto* reason = std::get_if<DropReason>(&decoded))
        return Drop(*reason);
    const auto& [version, body] = std::get<Management>(decoded);
    origin.Version = version;
    if (m_phase == Phase::WaitingForTable && WaitsForTable(body))
        return Hold(origin, bare, 0, now);
    if (MachineEntry* member = MemberAt(origin)) {
        Heard(*member, now);
        constexpr std::size_t MaxBoundStreams = 1024;
        if (origin.Connection && m_boundStreams.size() < MaxBoundStreams)
            m_boundStreams.try_emplace(*origin.Connection, origin.Machine);
    }
    return std::visit([&](const auto& message) { return Handle(origin, message, now); }, body);
}

MachineEntry* PeerMachine::MemberAt(const Origin& origin)
{
    if (m_phase != Phase::Member || origin.Machine.Port == 0)
        return nullptr;
    MachineEntry* machine = m_table.FindMachine(origin.Machine);
    return machine != nullptr && machine->Id != m_ownId ? machine : nullptr;
}

bool PeerMachine::FromHost(const Origin& origin)
{
    if (Hosting())
        return false;
    return std::ranges::find(m_hostAddresses, origin.Machine) != m_hostAddresses.end();
}

/// While joining: true for the machine that the join was asked of. It answers from the address from which it answered
/// the enumeration; anybody else could end the join or hand over a table of its own.
bool PeerMachine::FromAskedHost(const Origin& origin) const
{
    return !m_hostAddresses.empty() && origin.Machine == m_hostAddresses.front();
}

void PeerMachine::Heard(MachineEntry& machine, Millis now)
{
    machine.LastHeard = now;
    machine.UnansweredPings = 0;
    machine.Unreachable = false;
}

void PeerMachine::SendTo(const MachineEntry& machine, const WireMessage& message)
{
    if (!machine.Unreachable)
        m_output.SendStream(machine.Stream, EncodeMessage(message, m_config.StreamPort));
}

void PeerMachine::SendToOthers(const WireMessage& message, WireId except)
{
    for (const auto& [id, machine] : m_table.Machines()) {
        if (id != m_ownId && id != except)
            SendTo(machine, message);
    }
}

void PeerMachine::AnswerInKind(const Origin& origin, const WireMessage& message)
{
    Bytes bytes = EncodeMessage(message, m_config.StreamPort);
    if (origin.Connection)
        m_output.SendBack(*origin.Connection, std::move(bytes));
    else
        m_output.SendDatagram(origin.Remote, std::move(bytes));
}

void PeerMachine::Finish(Result<WireId> result)
{
    if (m_request.Kind == RequestKind::None)
        return;
    if (m_request.Kind == RequestKind::Enumerate && m_enumerationStream) {
        m_output.DropStream(*m_enumerationStream);
        m_enumerationStream.reset();
    }
    m_request = {};
    m_repeats.clear();
    m_output.RequestDone(std::move(result));
}

void PeerMachine::ResetSession()
{
    m_changes.Session = true;
    m_changes.Everybody = true;
    for (const auto& [id, machine] : m_table.Machines()) {
        if (id != m_ownId)
            m_output.CloseStream(machine.Stream);
    }
    if (Hosting())
        m_output.CloseEnumerationPorts();
    for (const SocketAddress& host : m_hostAddresses) {
        if (m_phase == Phase::Member)
            m_output.CloseStream(host);
        else
            m_output.DropStream(host); // a join that is given up has nothing to say any more
    }
    for (const Reservation& reservation : m_reservations)
        m_output.CloseStream(reservation.Machine);
    m_phase = Phase::Idle;
    m_table = {};
    m_ownId = 0;
    m_hostId = 0;
    m_tookOver = {};
    m_migrating = false;
    m_hostAddresses.clear();
    m_departed = {};
    m_boundStreams.clear();
    m_reservations.clear();
    m_admissions.clear();
    m_pieces = {};
    m_held.clear();
    m_heldBytes = 0;
}

void PeerMachine::LoseSession(std::string reason)
{
    ResetSession();
    m_lossReason = std::move(reason);
    Finish(Fail("session", m_lossReason));
}

void PeerMachine::CancelRequest()
{
    if (m_phase == Phase::WaitingForId || m_phase == Phase::WaitingForTable)
        ResetSession();
    Finish(Fail("request", "cancelled"));
}

void PeerMachine::Leave()
{
    if (m_phase == Phase::Member) {
        for (const WireId player : std::set<WireId>(m_table.PlayersOf(m_ownId)))
            (void)DestroyPlayer(player); // an own player of a running session: cannot fail
        SendToOthers(DeletePlayerMessage{m_ownId, 0});
    }
    if (m_phase != Phase::Idle)
        ResetSession();
    Finish(Fail("request", "cancelled"));
}

void PeerMachine::Tick(Millis now)
{
    TickRequest(now);
    m_pieces.Expire(now, m_config.Timers.PiecesIdle);
    while (m_phase == Phase::Member && !m_held.empty() && now - m_held.front().Since > m_config.Timers.UnknownSender) {
        m_heldBytes -= m_held.front().Content.size();
        m_held.pop_front();
        CountDrop(DropReason::Stranger);
    }
    if (m_phase != Phase::Member)
        return;
    TickHost(now);
    TickLife(now);
}

std::optional<std::u16string> PeerMachine::NameOf(WireId player) const
{
    if (const PlayerEntry* entry = m_table.FindPlayer(player))
        return entry->ShortName;
    return m_departed.NameOf(player);
}

bool PeerMachine::IsOwnPlayer(WireId player) const
{
    const PlayerEntry* entry = m_table.FindPlayer(player);
    return entry != nullptr && entry->Machine == m_ownId;
}
} // namespace corvane::directplay
