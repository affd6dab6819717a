#include "session/InMemorySession.h"

#include "core/NumberText.h"

#include <algorithm>
#include <array>

namespace corvane {
void InMemoryMachine::Queue(ReceivedMessage message)
{
    if (m_queue.size() >= QueueLimit)
        static_cast<void>(Take());
    ++CountOf(message.To);
    m_queue.push_back(std::move(message));
}

ReceivedMessage InMemoryMachine::Take()
{
    ReceivedMessage message = std::move(m_queue.front());
    m_queue.pop_front();
    --CountOf(message.To);
    return message;
}

std::int32_t InMemoryMachine::WaitingFor(PlayerId player) const noexcept
{
    const auto found = m_waiting.find(player);
    return found == m_waiting.end() ? 0 : found->second;
}

void InMemoryMachine::Forget(PlayerId player)
{
    std::erase_if(m_queue, [&](const ReceivedMessage& message) { return message.To == player; });
    m_waiting.erase(player);
}

std::int32_t& InMemoryMachine::CountOf(PlayerId player)
{
    return m_waiting[player];
}

static Bytes SystemBytes(InMemorySession::SystemMessage message, std::span<const std::int32_t> values)
{
    Bytes bytes;
    ByteWriter writer(bytes);
    writer.WriteI32(static_cast<std::int32_t>(message));
    for (const std::int32_t value : values)
        writer.WriteI32(value);
    return bytes;
}

static Error NoSuchPlayer(std::string what, PlayerId player)
{
    return Fail(std::move(what), "there is no player " + NumberText(player));
}

InMemorySession::InMemorySession(SessionEntry description, InMemoryMachine& host)
    : m_description(std::move(description)), m_host(&host), m_machines{&host}
{
}

SessionEntry InMemorySession::Listing() const
{
    SessionEntry listing = m_description;
    listing.CurrentPlayers = static_cast<std::int32_t>(m_players.size());
    listing.Password.clear();
    return listing;
}

bool InMemorySession::IsFull() const noexcept
{
    return m_description.MaxPlayers > 0 && std::cmp_greater_equal(m_players.size(), m_description.MaxPlayers);
}

Result<void> InMemorySession::Join(InMemoryMachine& machine, std::string_view password)
{
    if ((m_description.Flags & SessionPasswordRequired) != 0 && password != m_description.Password)
        return Fail("Open", "the password is wrong");
    if (IsFull())
        return Fail("Open", "the session is full");
    m_machines.push_back(&machine);
    return {};
}

void InMemorySession::Leave(InMemoryMachine& machine)
{
    std::vector<PlayerId> leaving;
    for (const Player& player : m_players) {
        if (player.Machine == &machine)
            leaving.push_back(player.Member.Id);
    }
    for (const PlayerId player : leaving)
        RemovePlayer(player);
    std::erase(m_machines, &machine);
    if (m_host == &machine)
        ReplaceHost();
}

void InMemorySession::ReplaceHost()
{
    m_host = m_machines.empty() ? nullptr : m_machines.front();
    if (m_host != nullptr && (m_description.Flags & SessionMigrateHost) != 0) {
        for (const Player& player : m_players) {
            if (player.Machine == m_host) {
                Deliver(player, SystemSender, SystemBytes(SystemMessage::BecameHost, {}));
                break;
            }
        }
        return;
    }
    m_host = nullptr;
    m_lost = true;
    Announce(SystemMessage::SessionLost, nullptr, {});
}

Result<PlayerId> InMemorySession::CreatePlayer(InMemoryMachine& machine, std::string_view friendlyName)
{
    if (m_lost)
        return Fail("CreatePlayer", "the session is lost");
    if (IsFull())
        return Fail("CreatePlayer", "the session is full");
    const PlayerId id = m_nextId++;
    Announce(SystemMessage::PlayerOrGroupCreated, &machine, std::array<std::int32_t, 2>{1, id});
    m_players.push_back({&machine, {id, std::string(friendlyName)}});
    return id;
}

Result<void> InMemorySession::DestroyPlayer(const InMemoryMachine& machine, PlayerId player)
{
    if (!Owns(machine, player))
        return NoSuchPlayer("DestroyPlayer", player);
    RemovePlayer(player);
    return {};
}

void InMemorySession::RemovePlayer(PlayerId player)
{
    const Player* found = Find(player);
    const InMemoryMachine* const machine = found->Machine; // which knows: thousands of its players need not be told
    found->Machine->Forget(player);
    m_left.push_back(found->Member);
    if (m_left.size() > RememberedNames)
        m_left.pop_front();
    for (Group& group : m_groups)
        std::erase(group.Players, player);
    m_players.erase(m_players.begin() + (found - m_players.data()));
    Announce(SystemMessage::PlayerDestroyed, machine, std::array<std::int32_t, 2>{1, player});
}

Result<void> InMemorySession::Rename(const InMemoryMachine& machine, PlayerId player, std::string_view friendlyName)
{
    if (!Owns(machine, player))
        return NoSuchPlayer("SetPlayerName", player);
    Find(player)->Member.ShortName = friendlyName;
    Announce(SystemMessage::NameChanged, &machine, std::array<std::int32_t, 2>{1, player});
    return {};
}

Result<std::string> InMemorySession::FriendlyName(PlayerId player) const
{
    if (const Player* found = Find(player))
        return found->Member.ShortName;
    for (const SessionMember& left : m_left) {
        if (left.Id == player)
            return left.ShortName;
    }
    return NoSuchPlayer("GetPlayerFriendlyName", player);
}

std::vector<SessionMember> InMemorySession::Players(const InMemoryMachine& seenFrom) const
{
    std::vector<SessionMember> members;
    for (const Player& player : m_players) {
        if (!m_lost || player.Machine == &seenFrom)
            members.push_back(player.Member);
    }
    return members;
}

bool InMemorySession::Owns(const InMemoryMachine& machine, PlayerId player) const noexcept
{
    const Player* found = Find(player);
    return found != nullptr && found->Machine == &machine;
}

std::int32_t InMemorySession::CreateGroup(std::string_view shortName)
{
    const std::int32_t id = m_nextId++;
    m_groups.push_back({{id, std::string(shortName)}, {}});
    Announce(SystemMessage::PlayerOrGroupCreated, nullptr, std::array<std::int32_t, 2>{0, id});
    return id;
}

std::vector<SessionMember> InMemorySession::Groups() const
{
    std::vector<SessionMember> groups;
    for (const Group& group : m_groups)
        groups.push_back(group.Member);
    return groups;
}

Result<void> InMemorySession::AddToGroup(std::int32_t group, PlayerId player)
{
    const auto found =
        std::find_if(m_groups.begin(), m_groups.end(), [&](const Group& g) { return g.Member.Id == group; });
    if (found == m_groups.end())
        return Fail("AddPlayerToGroup", "there is no group " + NumberText(group));
    if (Find(player) == nullptr)
        return NoSuchPlayer("AddPlayerToGroup", player);
    if (std::find(found->Players.begin(), found->Players.end(), player) == found->Players.end())
        found->Players.push_back(player);
    Announce(SystemMessage::PlayerAddedToGroup, nullptr, std::array<std::int32_t, 2>{group, player});
    return {};
}

std::vector<PlayerId> InMemorySession::GroupPlayers(std::int32_t group) const
{
    for (const Group& candidate : m_groups) {
        if (candidate.Member.Id == group)
            return candidate.Players;
    }
    return {};
}

Result<void> InMemorySession::Send(const InMemoryMachine& machine, PlayerId from, PlayerId to, ByteSpan message)
{
    if (m_lost)
        return Fail("Send", "the session is lost");
    if (!Owns(machine, from))
        return NoSuchPlayer("Send", from);
    if (to == AllPlayers) {
        for (const Player& player : m_players) {
            if (player.Member.Id != from)
                Deliver(player, from, message);
        }
        return {};
    }
    if (const Player* receiver = Find(to)) {
        Deliver(*receiver, from, message);
        return {};
    }
    const auto group =
        std::find_if(m_groups.begin(), m_groups.end(), [&](const Group& g) { return g.Member.Id == to; });
    if (group != m_groups.end()) {
        for (const PlayerId player : group->Players) {
            if (player != from)
                Deliver(*Find(player), from, message);
        }
        return {};
    }
    return HasLeft(to) ? Result<void>() : NoSuchPlayer("Send", to);
}

const InMemorySession::Player* InMemorySession::Find(PlayerId player) const noexcept
{
    const auto found = std::lower_bound(m_players.begin(), m_players.end(), player,
                                        [](const Player& p, PlayerId id) { return p.Member.Id < id; });
    return found != m_players.end() && found->Member.Id == player ? &*found : nullptr;
}

InMemorySession::Player* InMemorySession::Find(PlayerId player) noexcept
{
    return const_cast<Player*>(std::as_const(*this).Find(player)); // the object itself is not const
}

bool InMemorySession::HasLeft(PlayerId player) const noexcept
{
    return player > 0 && player < m_nextId; // ids are never given twice
}

void InMemorySession::Deliver(const Player& to, PlayerId from, ByteSpan message)
{
    to.Machine->Queue({from, to.Member.Id, Bytes(message.begin(), message.end())});
}

void InMemorySession::Announce(SystemMessage message, const InMemoryMachine* except,
                               std::span<const std::int32_t> values)
{
    const Bytes bytes = SystemBytes(message, values);
    for (const Player& player : m_players) {
        if (player.Machine != except)
            Deliver(player, SystemSender, bytes);
    }
}
} // namespace corvane
