#include "net/machine/OtherMembers.h"

#include <utility>

namespace corvane::directplay {
bool OtherMembers::MayStore(const Origin& origin, const PackedPlayer& record, WireId owner, Millis now)
{
    SessionTable& table = m_common.Table;
    const PlayerEntry* known = table.Names.FindPlayer(record.Id);
    if (owner == table.OwnId || !table.MayChange(origin, known != nullptr ? known->Machine : owner))
        return false;
    return known != nullptr || !table.Hosting() ||
           m_host.WasGiven(record.Id, RequestKind::Player, table.MemberAt(origin)->Stream, now);
}

/// Enters a player that its creator describes; null when it may not.
PlayerEntry* OtherMembers::Store(const Origin& origin, const PackedPlayer& record, bool& isNew, Millis now)
{
    NameTable& names = m_common.Table.Names;
    const MachineEntry* sender = m_common.Table.MemberAt(origin);
    const bool isPlayer = (record.Flags & PlayerIsSystem) == 0;
    const bool named = names.FindMachine(record.SystemId) != nullptr;
    if (sender == nullptr || !isPlayer || !MayStore(origin, record, named ? record.SystemId : sender->Id, now)) {
        m_common.Drop(DropReason::Stranger);
        return nullptr;
    }
    isNew = names.FindPlayer(record.Id) == nullptr;
    PlayerEntry* player = names.AddPlayer(record.Id, named ? record.SystemId : sender->Id);
    if (player == nullptr) {
        m_common.Drop(DropReason::Flooding);
        return nullptr;
    }
    if (isNew || player->ShortName != record.ShortName)
        m_common.Table.Changed(record.Id);
    player->ShortName = record.ShortName;
    player->LongName = record.LongName;
    if (isNew) {
        player->InGroup = (record.Flags & PlayerInGroup) != 0;
        names.StoreData(player->Data, record.Data);
    }
    m_host.Release(record.Id);
    return player;
}

std::optional<WireId> OtherMembers::Enter(const Origin& origin, const CreatePlayerMessage& message, Millis now)
{
    bool isNew = false;
    const PlayerEntry* player = Store(origin, message.Player, isNew, now);
    if (player == nullptr)
        return std::nullopt;
    if (isNew && !m_common.Table.Hosting() && origin.Version >= VerifyVersion)
        AnswerVerify(origin, now);
    return player->Id;
}

std::optional<WireId> OtherMembers::Enter(const Origin& origin, const CreatePlayerVerify& message, Millis now)
{
    bool isNew = false;
    const PlayerEntry* player = Store(origin, message.Player, isNew, now);
    return player == nullptr ? std::nullopt : std::optional(player->Id);
}

/// Two machines that created players at the same moment, one of them still joining, learn of each other this way.
void OtherMembers::AnswerVerify(const Origin& origin, Millis now)
{
    SessionTable& table = m_common.Table;
    const MachineEntry* creator = table.MemberAt(origin);
    if (creator == nullptr)
        return;
    for (const WireId own : table.Names.PlayersOf(table.OwnId)) {
        const PlayerEntry* player = table.Names.FindPlayer(own);
        if (now - player->Created <= m_common.Config.Timers.RecentlyCreated)
            m_common.SendTo(*creator, CreatePlayerVerify{table.RecordOf(*player)});
    }
}

bool OtherMembers::Handle(const Origin& origin, const CreateGroupMessage& message, Millis now)
{
    SessionTable& table = m_common.Table;
    const MachineEntry* sender = table.MemberAt(origin);
    if (sender == nullptr)
        return m_common.Drop(DropReason::Stranger);
    const PackedPlayer& record = message.Player;
    const GroupEntry* known = table.Names.FindGroup(record.Id);
    if (known != nullptr && !table.MayChange(origin, known->Machine))
        return m_common.Drop(DropReason::Stranger);
    if (known == nullptr && table.Hosting() && !m_host.WasGiven(record.Id, RequestKind::Group, sender->Stream, now))
        return m_common.Drop(DropReason::Stranger);
    GroupEntry* group = table.Names.AddGroup(record.Id);
    if (group == nullptr)
        return m_common.Drop(DropReason::Flooding);
    group->Machine = table.Names.FindMachine(record.SystemId) != nullptr ? record.SystemId : sender->Id;
    group->ShortName = record.ShortName;
    group->LongName = record.LongName;
    table.Changed(record.Id);
    table.Names.StoreData(group->Data, record.Data);
    for (const WireId member : record.Members)
        table.Names.AddToGroup(member, record.Id);
    m_host.Release(record.Id);
    return true;
}

/// The host announces a machine that is about to come in.
bool OtherMembers::Handle(const Origin& origin, const AddForward& message, Millis now)
{
    SessionTable& table = m_common.Table;
    if (!table.FromHost(origin) || !table.InSession())
        return m_common.Drop(DropReason::Stranger);
    const MachineEntry* host = table.Names.FindMachine(table.HostId);
    MachineEntry* machine = message.Id == table.OwnId ? nullptr : table.Names.AddMachine(message.Id);
    if (host == nullptr || machine == nullptr || message.Id == table.HostId)
        return m_common.Drop(DropReason::Malformed);
    StoreAddresses(*machine, message.Player.Service, origin.Machine.Ip);
    machine->Version = message.Player.Version;
    machine->Watch(now, m_common.Config.Timers.PingPeriod);
    m_common.SendTo(*host, AddForwardAck{message.Id});
    return true;
}

bool OtherMembers::Handle(const Origin& origin, const DeleteGroupMessage& message)
{
    SessionTable& table = m_common.Table;
    const GroupEntry* group = table.Names.FindGroup(message.Group);
    if (group == nullptr)
        return table.MemberAt(origin) != nullptr;
    if (!table.MayChange(origin, group->Machine))
        return m_common.Drop(DropReason::Stranger);
    table.Names.RemoveGroup(message.Group);
    table.Changed(message.Group);
    return true;
}

bool OtherMembers::Handle(const Origin& origin, const AddPlayerToGroupMessage& message)
{
    if (m_common.Table.MemberAt(origin) == nullptr)
        return m_common.Drop(DropReason::Stranger);
    m_common.Table.Names.AddToGroup(message.Player, message.Group);
    return true;
}

bool OtherMembers::Handle(const Origin& origin, const DeletePlayerFromGroup& message)
{
    if (m_common.Table.MemberAt(origin) == nullptr)
        return m_common.Drop(DropReason::Stranger);
    m_common.Table.Names.RemoveFromGroup(message.Player, message.Group);
    return true;
}

template <class Entry, class Message>
bool OtherMembers::StoreData(const Origin& origin, Entry* entry, const Message& message)
{
    if (entry == nullptr || !m_common.Table.MayChange(origin, entry->Machine))
        return m_common.Drop(DropReason::Stranger);
    m_common.Table.Names.StoreData(entry->Data, message.Data);
    return true;
}

bool OtherMembers::Handle(const Origin& origin, const PlayerDataChanged& message)
{
    return StoreData(origin, m_common.Table.Names.FindPlayer(message.Id), message);
}

bool OtherMembers::Handle(const Origin& origin, const GroupDataChanged& message)
{
    return StoreData(origin, m_common.Table.Names.FindGroup(message.Id), message);
}

template <class Entry, class Message>
bool OtherMembers::Rename(const Origin& origin, Entry* entry, const Message& message)
{
    if (entry == nullptr || !m_common.Table.MayChange(origin, entry->Machine))
        return m_common.Drop(DropReason::Stranger);
    entry->ShortName = message.ShortName;
    entry->LongName = message.LongName;
    m_common.Table.Changed(message.Id);
    return true;
}

bool OtherMembers::Handle(const Origin& origin, const PlayerNameChanged& message)
{
    return Rename(origin, m_common.Table.Names.FindPlayer(message.Id), message);
}

bool OtherMembers::Handle(const Origin& origin, const GroupNameChanged& message)
{
    return Rename(origin, m_common.Table.Names.FindGroup(message.Id), message);
}

bool OtherMembers::Handle(const Origin& origin, const SessionDescChanged& message)
{
    SessionTable& table = m_common.Table;
    if (!table.InSession() || !table.FromHost(origin))
        return m_common.Drop(DropReason::Stranger);
    SessionDescription changed = message.Description;
    changed.Instance = table.Description.Instance;
    changed.IdKey = table.Description.IdKey;
    changed.Flags = (table.Description.Flags & ~ChangeableSessionFlags) | (changed.Flags & ChangeableSessionFlags);
    table.Description = changed;
    table.Name = message.Name;
    table.Password = message.Password;
    return true;
}
} // namespace corvane::directplay
