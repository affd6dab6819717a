#include "net/machine/PeerMachine.h"

/// Players and groups: what this machine changes.
namespace corvane::directplay {
void PeerMachine::CreatePlayer(std::u16string_view shortName, std::u16string_view longName, Millis now)
{
    m_request = {RequestKind::Player, now + m_config.Timers.Request, std::u16string(shortName),
                 std::u16string(longName)};
    if (m_phase != Phase::Member)
        return Finish(Fail("player", "there is no session"));
    if (!Hosting())
        return RequestId(now);
    const bool refused = Full() || (m_description.Flags & FlagNewPlayersDisabled) != 0;
    const auto id = refused ? std::nullopt : NewId();
    if (!id)
        return Finish(Fail("player", "the session admits no new players"));
    AddOwnPlayer(*id, now);
}

void PeerMachine::CreateGroup(std::u16string_view shortName, Millis now)
{
    m_request = {RequestKind::Group, now + m_config.Timers.Request, std::u16string(shortName), {}};
    if (m_phase != Phase::Member)
        return Finish(Fail("group", "there is no session"));
    if (!Hosting())
        return RequestId(now);
    const auto id = NewId();
    if (!id)
        return Finish(Fail("group", "the session has no more ids"));
    AddOwnGroup(*id);
}

/// Enters the player that the running request asked for, and announces it.
void PeerMachine::AddOwnPlayer(WireId id, Millis now)
{
    PlayerEntry* player = m_table.AddPlayer(id, m_ownId);
    if (player == nullptr)
        return Finish(Fail("player", "the session has too many players"));
    player->ShortName = m_request.ShortName;
    player->LongName = m_request.LongName;
    player->Created = now;
    Changed(id);
    SendToOthers(CreatePlayerMessage{RecordOf(*player)});
    Finish(id);
}

void PeerMachine::AddOwnGroup(WireId id)
{
    GroupEntry* group = m_table.AddGroup(id);
    if (group == nullptr)
        return Finish(Fail("group", "the session has too many groups"));
    group->Machine = m_ownId;
    group->ShortName = m_request.ShortName;
    Changed(id);
    PackedPlayer record;
    record.Flags = PlayerIsLocal;
    record.Id = id;
    record.ShortName = group->ShortName;
    record.SystemId = m_ownId;
    SendToOthers(CreateGroupMessage{record});
    Finish(id);
}

static Error NoSuch(const char* what, WireId id)
{
    return Fail(std::string(what) + " " + std::to_string(id), "is unknown in this session");
}

Result<void> PeerMachine::SetPlayerName(WireId player, std::u16string_view shortName)
{
    if (!IsOwnPlayer(player))
        return NoSuch("own player", player);
    PlayerEntry* own = m_table.FindPlayer(player);
    own->ShortName = shortName;
    Changed(player);
    SendToOthers(PlayerNameChanged{player, own->ShortName, own->LongName});
    return {};
}

Result<void> PeerMachine::AddPlayerToGroup(WireId player, WireId group)
{
    if (m_table.FindGroup(group) == nullptr)
        return NoSuch("group", group);
    if (m_table.FindPlayer(player) == nullptr)
        return NoSuch("player", player);
    m_table.AddToGroup(player, group);
    SendToOthers(AddPlayerToGroupMessage{player, group});
    return {};
}

Result<void> PeerMachine::DestroyPlayer(WireId player)
{
    const PlayerEntry* entry = m_table.FindPlayer(player);
    if (entry == nullptr || (entry->Machine != m_ownId && !Hosting()))
        return NoSuch("own player", player);
    for (const WireId group : entry->Groups)
        SendToOthers(DeletePlayerFromGroup{player, group});
    SendToOthers(DeletePlayerMessage{player, 0});
    ForgetPlayer(player);
    return {};
}
} // namespace corvane::directplay
