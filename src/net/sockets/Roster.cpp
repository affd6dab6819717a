#include "net/sockets/Roster.h"

#include "net/wire/WireText.h"

#include <utility>

namespace corvane::directplay {
void Roster::Update(PeerMachine& machine)
{
    const SessionChanges changes = machine.TakeChanges();
    if (!changes.Any())
        return;
    const std::scoped_lock lock(m_mutex);
    if (changes.Session) {
        m_inSession = machine.InSession();
        m_hosting = machine.Hosting();
        m_lossReason = machine.LossReason();
    }
    if (changes.Everybody)
        return LookAtAll(machine);
    for (const WireId id : changes.Ids)
        Look(machine, id);
}

void Roster::LookAtAll(PeerMachine& machine)
{
    m_entries.clear();
    m_players.clear();
    m_groups.clear();
    for (const WireId id : machine.Table().Ids())
        Look(machine, id);
}

void Roster::Forget(WireId id)
{
    const auto at = m_entries.find(id);
    if (at == m_entries.end())
        return;
    if (at->second.Order)
        (at->second.IsGroup ? m_groups : m_players).erase(*at->second.Order);
    m_entries.erase(at);
}

void Roster::Look(PeerMachine& machine, WireId id)
{
    Forget(id);
    const NameTable& table = machine.Table();
    if (const PlayerEntry* player = table.FindPlayer(id)) {
        m_entries[id] = {Windows1252FromWide(player->ShortName), player->Order, false, machine.IsOwnPlayer(id)};
        m_players[player->Order] = id;
    } else if (const auto group = table.Groups().find(id); group != table.Groups().end()) {
        m_entries[id] = {Windows1252FromWide(group->second.ShortName), group->second.Order, true, false};
        m_groups[group->second.Order] = id;
    } else if (const auto departed = machine.NameOf(id)) {
        m_entries[id] = {Windows1252FromWide(*departed), std::nullopt, false, false};
    }
}

bool Roster::InSession() const
{
    const std::scoped_lock lock(m_mutex);
    return m_inSession;
}

bool Roster::Hosting() const
{
    const std::scoped_lock lock(m_mutex);
    return m_hosting;
}

std::string Roster::LossReason() const
{
    const std::scoped_lock lock(m_mutex);
    return m_lossReason;
}

std::vector<SessionMember> Roster::List(const std::map<std::uint64_t, WireId>& order) const
{
    std::vector<SessionMember> members;
    members.reserve(order.size());
    for (const auto& [at, id] : order)
        members.push_back({static_cast<PlayerId>(id), m_entries.at(id).Name});
    return members;
}

std::vector<SessionMember> Roster::Players() const
{
    const std::scoped_lock lock(m_mutex);
    return List(m_players);
}

std::vector<SessionMember> Roster::Groups() const
{
    const std::scoped_lock lock(m_mutex);
    return List(m_groups);
}

std::optional<std::string> Roster::NameOf(PlayerId player) const
{
    const std::scoped_lock lock(m_mutex);
    const auto at = m_entries.find(static_cast<WireId>(player));
    if (at == m_entries.end() || at->second.IsGroup)
        return std::nullopt;
    return at->second.Name;
}

bool Roster::IsOwn(PlayerId player) const
{
    const std::scoped_lock lock(m_mutex);
    const auto at = m_entries.find(static_cast<WireId>(player));
    return at != m_entries.end() && at->second.IsOwn;
}
} // namespace corvane::directplay
