#include "net/machine/Liveness.h"

namespace corvane::directplay {
/// The machine that a ping or its answer says it is from. Null, and the packet counted as dropped, where the session
/// has no such machine, which a host tells it.
MachineEntry* Liveness::PingedBy(const Origin& origin, WireId from, Millis now)
{
    SessionTable& table = m_common.Table;
    MachineEntry* machine = table.InSession() ? table.OwnerOf(from) : nullptr;
    if (machine != nullptr)
        return machine;
    m_common.Drop(DropReason::Stranger);
    if (table.Hosting() && m_common.MayAnswer(origin, now))
        m_common.AnswerInKind(origin, YouAreDead{});
    return nullptr;
}

bool Liveness::Handle(const Origin& origin, const Ping& message, Millis now)
{
    MachineEntry* machine = PingedBy(origin, message.From, now);
    if (machine == nullptr)
        return false;
    if (!m_common.Table.SpeaksFor(origin, *machine))
        return m_common.Drop(DropReason::Stranger);
    machine->Heard(now);
    const PingReply reply{m_common.Table.OwnId, message.TickCount};
    if (origin.Connection)
        m_common.SendTo(*machine, reply);
    else
        m_common.AnswerInKind(origin, reply);
    return true;
}

bool Liveness::Handle(const Origin& origin, const PingReply& message, Millis now)
{
    MachineEntry* machine = PingedBy(origin, message.From, now);
    if (machine == nullptr)
        return false;
    if (machine->Id == m_common.Table.OwnId)
        return m_common.Table.MemberAt(origin) != nullptr; // names the asker: its address has been credited already
    if (!m_common.Table.SpeaksFor(origin, *machine))
        return m_common.Drop(DropReason::Stranger);
    machine->Heard(now);
    return true;
}

/// Members watch the host, the host watches everybody, and while there is no host all watch each other.
bool Liveness::IsWatched(const MachineEntry& machine) const
{
    const SessionTable& table = m_common.Table;
    if (machine.Id == table.OwnId)
        return false;
    if (table.Migrating)
        return true;
    return table.HasFlag(FlagKeepAlive) && (table.Hosting() || machine.Id == table.HostId);
}

std::vector<WireId> Liveness::Tick(Millis now)
{
    std::vector<WireId> dead;
    for (auto& [id, machine] : m_common.Table.Names.Machines()) {
        if (IsWatched(machine) && FoundDead(machine, now))
            dead.push_back(id);
    }
    return dead;
}

bool Liveness::FoundDead(MachineEntry& machine, Millis now)
{
    const PeerTimers& timers = m_common.Config.Timers;
    if (now < machine.NextCheck)
        return false;
    machine.NextCheck = now + timers.PingPeriod;
    if (now - machine.LastHeard < timers.PingPeriod)
        return false;
    if (machine.UnansweredPings >= timers.PingLimit)
        return true;
    ++machine.UnansweredPings;
    SendPing(machine, now);
    return false;
}

void Liveness::PingEverybody(Millis now)
{
    for (auto& [id, machine] : m_common.Table.Names.Machines()) {
        machine.UnansweredPings = 0;
        machine.NextCheck = now + m_common.Config.Timers.PingPeriod;
        if (id != m_common.Table.OwnId)
            SendPing(machine, now);
    }
}

void Liveness::SendPing(const MachineEntry& machine, Millis now)
{
    const Ping ping{m_common.Table.OwnId, static_cast<std::uint32_t>(now.count())};
    if (machine.Datagram.Port != 0)
        m_common.Output.SendDatagram(machine.Datagram, m_common.Encoded(ping));
    // A blocked datagram path alone must not end anything.
    if (machine.Datagram.Port == 0 || machine.UnansweredPings >= m_common.Config.Timers.PingByStreamFrom)
        m_common.SendTo(machine, ping);
}
} // namespace corvane::directplay
