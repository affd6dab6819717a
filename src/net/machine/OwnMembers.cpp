#include "net/machine/OwnMembers.h"

#include "net/machine/Joining.h"

namespace corvane::directplay {
void OwnMembers::CreatePlayer(std::u16string_view shortName, std::u16string_view longName, Millis now)
{
    m_common.Request = {.Kind = RequestKind::Player,
                        .Deadline = now + m_common.Config.Timers.Request,
                        .ShortName = std::u16string(shortName),
                        .LongName = std::u16string(longName)};
    if (!m_common.Table.InSession())
        return m_common.Finish(Fail("player", "there is no session"));
    if (!m_common.Table.Hosting())
        return RequestId(now);
    const bool refused = m_host.Full() || m_common.Table.HasFlag(FlagNewPlayersDisabled);
    const auto id = refused ? std::nullopt : m_host.NewId();
    if (!id)
        return m_common.Finish(Fail("player", "the session admits no new players"));
    AddPlayer(*id, now);
}

void OwnMembers::CreateGroup(std::u16string_view shortName, Millis now)
{
    m_common.Request = {.Kind = RequestKind::Group,
                        .Deadline = now + m_common.Config.Timers.Request,
                        .ShortName = std::u16string(shortName)};
    if (!m_common.Table.InSession())
        return m_common.Finish(Fail("group", "there is no session"));
    if (!m_common.Table.Hosting())
        return RequestId(now);
    const auto id = m_host.NewId();
    if (!id)
        return m_common.Finish(Fail("group", "the session has no more ids"));
    AddGroup(*id);
}

/// Asks the host for the id of a player or group, for the running request.
void OwnMembers::RequestId(Millis now)
{
    m_common.Request.Deadline = now + m_common.Config.Timers.Request;
    const MachineEntry* host = m_common.Table.Names.FindMachine(m_common.Table.HostId);
    if (host == nullptr || m_common.Table.Migrating)
        return; // asked again once there is a host
    if (m_common.Request.Kind == RequestKind::Group)
        m_common.SendTo(*host, RequestGroupId{});
    else
        m_common.SendTo(*host, RequestPlayerId{PlayerIsLocal});
}

void OwnMembers::OnNewHost(Millis now)
{
    if (!m_common.Request.WantsId())
        return;
    if (!m_common.Table.Hosting())
        return RequestId(now);
    const auto id = m_host.NewId();
    if (id && m_common.Request.Kind == RequestKind::Player)
        AddPlayer(*id, now);
    else if (id)
        AddGroup(*id);
}

bool OwnMembers::OnId(const Origin& origin, const RequestPlayerReply& message, Millis now)
{
    if (!m_common.Table.InSession() || !m_common.Table.FromHost(origin) || !m_common.Request.WantsId())
        return m_common.Drop(DropReason::Stranger);
    if (message.Result != ResultOk || message.Id == 0)
        m_common.Finish(Fail("host", Joining::RefusalText(message.Result)));
    else if (m_common.Table.Names.Contains(message.Id))
        return m_common.Drop(DropReason::Malformed);
    else if (m_common.Request.Kind == RequestKind::Player)
        AddPlayer(message.Id, now);
    else
        AddGroup(message.Id);
    return true;
}

/// Enters the player that the running request asked for, and announces it.
void OwnMembers::AddPlayer(WireId id, Millis now)
{
    SessionTable& table = m_common.Table;
    PlayerEntry* player = table.Names.AddPlayer(id, table.OwnId);
    if (player == nullptr)
        return m_common.Finish(Fail("player", "the session has too many players"));
    player->ShortName = m_common.Request.ShortName;
    player->LongName = m_common.Request.LongName;
    player->Created = now;
    table.Changed(id);
    m_common.SendToOthers(CreatePlayerMessage{table.RecordOf(*player)});
    m_common.Finish(id);
}

void OwnMembers::AddGroup(WireId id)
{
    SessionTable& table = m_common.Table;
    GroupEntry* group = table.Names.AddGroup(id);
    if (group == nullptr)
        return m_common.Finish(Fail("group", "the session has too many groups"));
    group->Machine = table.OwnId;
    group->ShortName = m_common.Request.ShortName;
    table.Changed(id);
    PackedPlayer record;
    record.Flags = PlayerIsLocal;
    record.Id = id;
    record.ShortName = group->ShortName;
    record.SystemId = table.OwnId;
    m_common.SendToOthers(CreateGroupMessage{record});
    m_common.Finish(id);
}

static Error NoSuch(const char* what, WireId id)
{
    return Fail(std::string(what) + " " + std::to_string(id), "is unknown in this session");
}

Result<void> OwnMembers::SetPlayerName(WireId player, std::u16string_view shortName)
{
    if (!m_common.Table.IsOwnPlayer(player))
        return NoSuch("own player", player);
    PlayerEntry* own = m_common.Table.Names.FindPlayer(player);
    own->ShortName = shortName;
    m_common.Table.Changed(player);
    m_common.SendToOthers(PlayerNameChanged{player, own->ShortName, own->LongName});
    return {};
}

Result<void> OwnMembers::AddPlayerToGroup(WireId player, WireId group)
{
    NameTable& names = m_common.Table.Names;
    if (names.FindGroup(group) == nullptr)
        return NoSuch("group", group);
    if (names.FindPlayer(player) == nullptr)
        return NoSuch("player", player);
    names.AddToGroup(player, group);
    m_common.SendToOthers(AddPlayerToGroupMessage{player, group});
    return {};
}

Result<void> OwnMembers::DestroyPlayer(WireId player)
{
    const PlayerEntry* entry = m_common.Table.Names.FindPlayer(player);
    if (entry == nullptr || (entry->Machine != m_common.Table.OwnId && !m_common.Table.Hosting()))
        return NoSuch("own player", player);
    for (const WireId group : entry->Groups)
        m_common.SendToOthers(DeletePlayerFromGroup{player, group});
    m_common.SendToOthers(DeletePlayerMessage{player, 0});
    m_common.Table.ForgetPlayer(player);
    return {};
}
} // namespace corvane::directplay
