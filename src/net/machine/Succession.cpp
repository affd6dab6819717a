#include "net/machine/Succession.h"

#include <utility>

namespace corvane::directplay {
static constexpr const char* RemovedByHost = "the host removed this machine";

bool Succession::Handle(const Origin& origin, const DeletePlayerMessage& message, Millis now)
{
    SessionTable& table = m_common.Table;
    if (!table.InSession())
        return m_common.Drop(DropReason::Stranger);
    const PlayerEntry* player = table.Names.FindPlayer(message.Player);
    if (player == nullptr && table.Names.FindMachine(message.Player) == nullptr)
        return table.MemberAt(origin) != nullptr;
    if (!table.MayChange(origin, player != nullptr ? player->Machine : message.Player))
        return m_common.Drop(DropReason::Stranger);
    if (player != nullptr)
        table.ForgetPlayer(message.Player);
    else if (message.Player == table.OwnId)
        m_course.LoseSession(RemovedByHost);
    else if (message.Player == table.HostId)
        HostGone(now);
    else
        MachineGone(message.Player, now);
    return true;
}

bool Succession::Handle(const Origin& origin, const YouAreDead& /*message*/)
{
    if (m_common.Table.Phase == SessionPhase::Idle || !m_common.Table.FromHost(origin))
        return m_common.Drop(DropReason::Stranger);
    m_course.LoseSession(RemovedByHost);
    return true;
}

bool Succession::Handle(const Origin& origin, const IAmNameServer& message, Millis now)
{
    SessionTable& table = m_common.Table;
    MachineEntry* machine = table.MemberAt(origin);
    if (machine == nullptr || machine->Id != message.Host)
        return m_common.Drop(DropReason::Stranger);
    if (table.Hosting()) {
        m_common.SendTo(*machine, YouAreDead{});
        return true;
    }
    StoreAddresses(*machine, message.Service, origin.Remote.Ip);
    const WireId old = table.HostId;
    table.SetHost(message.Host);
    if (old != message.Host && old != 0)
        Remove(old);
    machine->NextCheck = now + m_common.Config.Timers.PingPeriod;
    m_duties.Own.OnNewHost(now);
    return true;
}

void Succession::OnDead(WireId machine, Millis now)
{
    SessionTable& table = m_common.Table;
    MachineEntry* entry = table.Names.FindMachine(machine);
    if (entry == nullptr || !table.InSession())
        return;
    if (table.Hosting())
        Expel(machine, now);
    else if (machine == table.HostId)
        HostGone(now);
    else if (table.Migrating)
        MachineGone(machine, now);
    else
        entry->Unreachable = true; // it is the host that tells everybody
}

void Succession::Expel(WireId id, Millis now)
{
    for (const WireId player : m_common.Table.Names.PlayersOf(id))
        m_common.SendToOthers(DeletePlayerMessage{player, 0}, id);
    m_common.SendToOthers(DeletePlayerMessage{id, 0}, id);
    MachineGone(id, now);
}

void Succession::MachineGone(WireId id, Millis now)
{
    Remove(id);
    m_duties.Hosts.ForgetMachine(id);
    if (m_common.Table.Migrating)
        Elect(now);
}

void Succession::Remove(WireId id)
{
    const MachineEntry* machine = m_common.Table.Names.FindMachine(id);
    if (machine == nullptr)
        return;
    const SocketAddress stream = machine->Stream;
    m_common.Table.ForgetMachine(id);
    m_duties.Delivers.ForgetMachine(id);
    m_duties.Hosts.ForgetReservations(stream);
    m_common.Output.CloseStream(stream);
}

void Succession::HostGone(Millis now)
{
    SessionTable& table = m_common.Table;
    if (!table.HasFlag(FlagMigrateHost))
        return m_course.LoseSession("the host has left the session");
    Remove(std::exchange(table.HostId, 0));
    table.Changes.Session = true;
    table.HostAddresses.clear();
    table.Migrating = true;
    m_duties.Watches.PingEverybody(now);
    Elect(now);
}

/// The machine with the lowest id takes over. When it is not this one, all that remains is to watch who lives.
void Succession::Elect(Millis now)
{
    std::vector<WireId> lost;
    for (const auto& [id, machine] : m_common.Table.Names.Machines()) {
        if (machine.Unreachable)
            lost.push_back(id);
    }
    for (const WireId id : lost)
        Remove(id);
    if (m_common.Table.Names.Heir() == m_common.Table.OwnId)
        BecomeHost(now);
}

void Succession::BecomeHost(Millis now)
{
    SessionTable& table = m_common.Table;
    table.SetHost(table.OwnId);
    table.HostAddresses.clear();
    m_duties.Hosts.TakeOver(now);
    const ServiceData service{{0, m_common.Config.StreamPort}, {0, m_common.Config.DatagramPort}};
    for (const auto& [id, machine] : table.Names.Machines()) {
        if (id != table.OwnId)
            m_common.SendTo(
                machine, IAmNameServer{id, table.OwnId, PlayerIsSystem | PlayerIsNameServer | PlayerInGroup, service});
    }
    m_duties.Own.OnNewHost(now);
}
} // namespace corvane::directplay
