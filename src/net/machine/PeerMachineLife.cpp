#include "net/machine/PeerMachine.h"
#include "net/wire/WireEncode.h"

#include <algorithm>
#include <utility>

/// Signs of life, machines that vanish, and the host's going.
namespace corvane::directplay {
/// The machine that an id belongs to: a system player's own, or an application player's owner.
MachineEntry* PeerMachine::OwnerOf(WireId id)
{
    if (const PlayerEntry* player = std::as_const(m_table).FindPlayer(id))
        return m_table.FindMachine(player->Machine);
    return m_table.FindMachine(id);
}

/// The machine that a ping or its answer says it is from. Null, and the packet counted as dropped, where the session
/// has no such machine, which a host tells it.
MachineEntry* PeerMachine::PingedBy(const Origin& origin, WireId from, Millis now)
{
    MachineEntry* machine = m_phase == Phase::Member ? OwnerOf(from) : nullptr;
    if (machine != nullptr)
        return machine;
    CountDrop(DropReason::Stranger);
    if (m_phase == Phase::Member && Hosting() && m_strangers.Allow(origin.Remote.Ip, now))
        AnswerInKind(origin, YouAreDead{});
    return nullptr;
}

bool PeerMachine::Handle(const Origin& origin, const Ping& message, Millis now)
{
    MachineEntry* machine = PingedBy(origin, message.From, now);
    if (machine == nullptr)
        return false;
    if (!SpeaksFor(origin, *machine))
        return Drop(DropReason::Stranger);
    Heard(*machine, now);
    const PingReply reply{m_ownId, message.TickCount};
    if (origin.Connection)
        SendTo(*machine, reply);
    else
        AnswerInKind(origin, reply);
    return true;
}

bool PeerMachine::Handle(const Origin& origin, const PingReply& message, Millis now)
{
    MachineEntry* machine = PingedBy(origin, message.From, now);
    if (machine == nullptr)
        return false;
    if (machine->Id == m_ownId)
        return MemberAt(origin) != nullptr; // names the asker: its address has been credited already
    if (!SpeaksFor(origin, *machine))
        return Drop(DropReason::Stranger);
    Heard(*machine, now);
    return true;
}

bool PeerMachine::Handle(const Origin& origin, const YouAreDead& /*message*/, Millis /*now*/)
{
    if (m_phase == Phase::Idle || !FromHost(origin))
        return Drop(DropReason::Stranger);
    LoseSession("the host removed this machine");
    return true;
}

bool PeerMachine::Handle(const Origin& /*origin*/, const IgnoredMessage& /*message*/, Millis /*now*/)
{
    return false;
}

bool PeerMachine::Handle(const Origin& origin, const IAmNameServer& message, Millis now)
{
    MachineEntry* machine = MemberAt(origin);
    if (machine == nullptr || machine->Id != message.Host)
        return Drop(DropReason::Stranger);
    if (Hosting()) {
        SendTo(*machine, YouAreDead{});
        return true;
    }
    StoreAddresses(*machine, message.Service, origin.Remote.Ip);
    const WireId old = m_hostId;
    SetHost(message.Host);
    if (old != message.Host && old != 0)
        RemoveMachine(old);
    machine->NextCheck = now + m_config.Timers.PingPeriod;
    if (m_request.Kind == RequestKind::Player || m_request.Kind == RequestKind::Group)
        RequestId(now);
    return true;
}

/// Members watch the host, the host watches everybody, and while there is no host all watch each other.
bool PeerMachine::IsWatched(const MachineEntry& machine) const
{
    if (machine.Id == m_ownId)
        return false;
    if (m_migrating)
        return true;
    return (m_description.Flags & FlagKeepAlive) != 0 && (Hosting() || machine.Id == m_hostId);
}

void PeerMachine::TickLife(Millis now)
{
    std::vector<WireId> dead;
    for (auto& [id, machine] : m_table.Machines()) {
        if (IsWatched(machine) && FoundDead(machine, now))
            dead.push_back(id);
    }
    for (const WireId id : dead)
        OnDead(id, now);
}

/// Pings a machine that has been silent for a period. True when it let too many pings go by.
bool PeerMachine::FoundDead(MachineEntry& machine, Millis now)
{
    if (now < machine.NextCheck)
        return false;
    machine.NextCheck = now + m_config.Timers.PingPeriod;
    if (now - machine.LastHeard < m_config.Timers.PingPeriod)
        return false;
    if (machine.UnansweredPings >= m_config.Timers.PingLimit)
        return true;
    ++machine.UnansweredPings;
    SendPing(machine, now);
    return false;
}

void PeerMachine::SendPing(const MachineEntry& machine, Millis now)
{
    const Ping ping{m_ownId, static_cast<std::uint32_t>(now.count())};
    if (machine.Datagram.Port != 0)
        m_output.SendDatagram(machine.Datagram, EncodeMessage(ping, m_config.StreamPort));
    // A blocked datagram path alone must not end anything.
    if (machine.Datagram.Port == 0 || machine.UnansweredPings >= m_config.Timers.PingByStreamFrom)
        SendTo(machine, ping);
}

/// Acts on the evidence that a machine is gone.
void PeerMachine::OnDead(WireId machine, Millis now)
{
    MachineEntry* entry = m_table.FindMachine(machine);
    if (entry == nullptr || m_phase != Phase::Member)
        return;
    if (Hosting())
        Expel(machine, now);
    else if (machine == m_hostId)
        HostGone(now);
    else if (m_migrating)
        MachineGone(machine, now);
    else
        entry->Unreachable = true; // it is the host that tells everybody
}

void PeerMachine::OnStreamFailed(const SocketAddress& machine, Millis now)
{
    const bool joining = m_phase == Phase::WaitingForId || m_phase == Phase::WaitingForTable;
    if (joining && machine == m_hostAddresses.front())
        return FailJoin("the host cannot be reached at " + AddressText(machine));
    if (m_phase != Phase::Member)
        return;
    std::erase_if(m_reservations, [&](const Reservation& one) { return one.Machine == machine; });
    if (const MachineEntry* entry = m_table.FindMachine(machine))
        OnDead(entry->Id, now);
}

/// As host: tells everybody that a machine has vanished, its system player last.
void PeerMachine::Expel(WireId id, Millis now)
{
    for (const WireId player : m_table.PlayersOf(id))
        SendToOthers(DeletePlayerMessage{player, 0}, id);
    SendToOthers(DeletePlayerMessage{id, 0}, id);
    MachineGone(id, now);
}

void PeerMachine::MachineGone(WireId id, Millis now)
{
    RemoveMachine(id);
    std::vector<WireId> complete;
    std::erase_if(m_admissions, [&](const Admission& one) { return one.Joiner == id; });
    for (Admission& admission : m_admissions) {
        if (admission.Waiting.erase(id) > 0 && admission.Waiting.empty())
            complete.push_back(admission.Joiner);
    }
    for (const WireId joiner : complete)
        CompleteAdmission(joiner);
    if (m_migrating)
        Elect(now);
}

void PeerMachine::RemoveMachine(WireId id)
{
    const MachineEntry* machine = m_table.FindMachine(id);
    if (machine == nullptr)
        return;
    const SocketAddress stream = machine->Stream;
    for (const WireId player : std::set<WireId>(m_table.PlayersOf(id)))
        ForgetPlayer(player);
    m_table.RemoveMachine(id, m_hostId == id ? 0 : m_hostId);
    m_pieces.Forget(id);
    std::erase_if(m_boundStreams, [&](const auto& bound) { return bound.second == stream; });
    std::erase_if(m_reservations, [&](const Reservation& one) { return one.Machine == stream; });
    m_output.CloseStream(stream);
}

void PeerMachine::HostGone(Millis now)
{
    if ((m_description.Flags & FlagMigrateHost) == 0)
        return LoseSession("the host has left the session");
    RemoveMachine(std::exchange(m_hostId, 0));
    m_changes.Session = true;
    m_hostAddresses.clear();
    m_migrating = true;
    for (auto& [id, machine] : m_table.Machines()) {
        machine.UnansweredPings = 0;
        machine.NextCheck = now + m_config.Timers.PingPeriod;
        if (id != m_ownId)
            SendPing(machine, now);
    }
    Elect(now);
}

/// The machine with the lowest id takes over. When it is not this one, all that remains is to watch who lives.
void PeerMachine::Elect(Millis now)
{
    std::vector<WireId> lost;
    for (const auto& [id, machine] : m_table.Machines()) {
        if (machine.Unreachable)
            lost.push_back(id);
    }
    for (const WireId id : lost)
        RemoveMachine(id);
    if (m_table.Machines().begin()->first == m_ownId)
        BecomeHost(now);
}

void PeerMachine::SetHost(WireId id)
{
    m_changes.Session = true;
    m_hostId = id;
    m_migrating = false;
    m_hostAddresses = {m_table.FindMachine(id)->Stream};
    for (auto& [groupId, group] : m_table.Groups()) {
        if (group.Machine == 0)
            group.Machine = id; // what the old host owned passes on
    }
}

void PeerMachine::BecomeHost(Millis now)
{
    SetHost(m_ownId);
    m_tookOver = now;
    m_hostAddresses.clear();
    m_ids = IdAllotment(m_description.IdKey, m_table.Ids());
    m_output.OpenEnumerationPorts();
    const ServiceData service{{0, m_config.StreamPort}, {0, m_config.DatagramPort}};
    for (const auto& [id, machine] : m_table.Machines()) {
        if (id != m_ownId)
            SendTo(machine, IAmNameServer{id, m_ownId, PlayerIsSystem | PlayerIsNameServer | PlayerInGroup, service});
    }
    const auto id =
        m_request.Kind == RequestKind::Player || m_request.Kind == RequestKind::Group ? NewId() : std::nullopt;
    if (!id)
        return;
    if (m_request.Kind == RequestKind::Player)
        AddOwnPlayer(*id, now);
    else
        AddOwnGroup(*id);
}
} // namespace corvane::directplay
