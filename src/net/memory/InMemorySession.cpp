#include "net/memory/InMemorySession.h"

#include "core/NumberText.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace corvane {
using directplay::WireId;

void InMemoryMachine::Queue(ReceivedMessage message)
{
    if (m_queue.size() >= QueueLimit)
        static_cast<void>(Take());
    ++m_waiting[message.To];
    m_queue.push_back(std::move(message));
}

ReceivedMessage InMemoryMachine::Take()
{
    assert(!m_queue.empty());
    ReceivedMessage message = std::move(m_queue.front());
    m_queue.pop_front();
    assert(m_waiting.contains(message.To)); // Forget takes a player's messages along with the count
    --m_waiting[message.To];
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

static Error NoSuchPlayer(std::string what, PlayerId player)
{
    return Fail(std::move(what), "there is no player " + NumberText(player));
}

/// No conversion: what is written here is read here.
static std::u16string Widened(std::string_view text)
{
    std::u16string wide(text.size(), u'\0');
    std::ranges::transform(text, wide.begin(), [](char c) { return static_cast<unsigned char>(c); });
    return wide;
}

static std::string Narrowed(std::u16string_view wide)
{
    std::string text(wide.size(), '\0');
    std::ranges::transform(wide, text.begin(), [](char16_t unit) { return static_cast<char>(unit); });
    return text;
}

/// Nobody here is a stranger. Whoever's message still waits must have a name for its reader, also when all members of
/// a machine leave at once.
static constexpr directplay::TableLimits Limits{.LowestId = 1,
                                                .Machines = 65536,
                                                .Players = 65536,
                                                .Groups = 65536,
                                                .DepartedOfMachine = InMemoryMachine::QueueLimit};
static constexpr WireId FirstMachine = 0x80000000; // no player is called that, and those who come later are higher

InMemorySession::InMemorySession(SessionEntry description, InMemoryMachine& host)
    : m_description(std::move(description)), m_table(Limits), m_nextMachine(FirstMachine)
{
    m_table.Description.Flags = m_description.Flags;
    m_table.Description.MaxPlayers = static_cast<std::uint32_t>(std::max(m_description.MaxPlayers, 0));
    m_table.Password = Widened(m_description.Password);
    Enter(host);
    m_table.SetHost(host.Id);
}

bool InMemorySession::Enter(InMemoryMachine& machine)
{
    assert(machine.Id == 0 && machine.IsEmpty()); // it has left the session that it was in
    if (m_table.Names.AddMachine(m_nextMachine) == nullptr)
        return false;
    machine.Id = m_nextMachine++;
    m_machines.emplace(machine.Id, &machine);
    return true;
}

SessionEntry InMemorySession::Listing() const
{
    SessionEntry listing = m_description;
    listing.CurrentPlayers = static_cast<std::int32_t>(m_table.Names.Players().size());
    listing.Password.clear();
    return listing;
}

bool InMemorySession::IsFoundBy(std::uint32_t flags) const
{
    directplay::EnumSessions question;
    question.Flags = flags;
    return !m_lost && m_table.IsFoundBy(question, m_table.Names.Players().size());
}

Result<void> InMemorySession::Join(InMemoryMachine& machine, std::string_view password)
{
    if (m_table.HasFlag(SessionPasswordRequired) && password != m_description.Password)
        return Fail("Open", "the password is wrong");
    if (m_table.IsFull(m_table.Names.Players().size()) || !Enter(machine))
        return Fail("Open", "the session is full");
    return {};
}

void InMemorySession::Leave(InMemoryMachine& machine)
{
    assert(m_machines.contains(machine.Id));
    const bool hosted = IsHost(machine);
    m_table.ForgetMachine(machine.Id);
    m_table.Changes = {};
    m_machines.erase(machine.Id);
    machine = {};
    if (!hosted)
        return;
    m_lost = m_machines.empty() || !m_table.HasFlag(SessionMigrateHost);
    m_table.HostId = 0;
    if (!m_lost)
        m_table.SetHost(m_table.Names.Heir());
}

Result<PlayerId> InMemorySession::CreatePlayer(const InMemoryMachine& machine, std::string_view friendlyName)
{
    if (m_lost)
        return Fail("CreatePlayer", "the session is lost");
    auto* player =
        m_table.IsFull(m_table.Names.Players().size()) ? nullptr : m_table.Names.AddPlayer(m_nextId, machine.Id);
    if (player == nullptr)
        return Fail("CreatePlayer", "the session is full");
    player->ShortName = Widened(friendlyName);
    return static_cast<PlayerId>(m_nextId++);
}

Result<void> InMemorySession::DestroyPlayer(InMemoryMachine& machine, PlayerId player)
{
    if (!Owns(machine, player))
        return NoSuchPlayer("DestroyPlayer", player);
    machine.Forget(player);
    m_table.ForgetPlayer(static_cast<WireId>(player));
    m_table.Changes = {};
    return {};
}

Result<void> InMemorySession::Rename(const InMemoryMachine& machine, PlayerId player, std::string_view friendlyName)
{
    if (!Owns(machine, player))
        return NoSuchPlayer("SetPlayerName", player);
    m_table.Names.FindPlayer(static_cast<WireId>(player))->ShortName = Widened(friendlyName);
    return {};
}

Result<std::string> InMemorySession::FriendlyName(PlayerId player) const
{
    if (const auto* present = m_table.Names.FindPlayer(static_cast<WireId>(player))) // nearly always
        return Narrowed(present->ShortName);
    if (const auto name = m_table.NameOf(static_cast<WireId>(player)))
        return Narrowed(*name);
    return NoSuchPlayer("GetPlayerFriendlyName", player);
}

std::vector<SessionMember> InMemorySession::Players(const InMemoryMachine& seenFrom) const
{
    std::vector<SessionMember> members;
    for (const auto& [id, player] : m_table.Names.Players()) {
        if (!m_lost || player.Machine == seenFrom.Id)
            members.push_back({static_cast<PlayerId>(id), Narrowed(player.ShortName)});
    }
    return members;
}

bool InMemorySession::Owns(const InMemoryMachine& machine, PlayerId player) const
{
    const auto* found = m_table.Names.FindPlayer(static_cast<WireId>(player));
    return found != nullptr && found->Machine == machine.Id;
}

Result<std::int32_t> InMemorySession::CreateGroup(const InMemoryMachine& machine, std::string_view shortName)
{
    auto* group = m_table.Names.AddGroup(m_nextId);
    if (group == nullptr)
        return Fail("CreateGroup", "the session has too many groups");
    group->Machine = machine.Id;
    group->ShortName = Widened(shortName);
    return static_cast<std::int32_t>(m_nextId++);
}

std::vector<SessionMember> InMemorySession::Groups() const
{
    std::vector<SessionMember> groups;
    for (const auto& [id, group] : m_table.Names.Groups())
        groups.push_back({static_cast<std::int32_t>(id), Narrowed(group.ShortName)});
    return groups;
}

Result<void> InMemorySession::AddToGroup(std::int32_t group, PlayerId player)
{
    if (m_table.Names.FindGroup(static_cast<WireId>(group)) == nullptr)
        return Fail("AddPlayerToGroup", "there is no group " + NumberText(group));
    if (m_table.Names.FindPlayer(static_cast<WireId>(player)) == nullptr)
        return NoSuchPlayer("AddPlayerToGroup", player);
    m_table.Names.AddToGroup(static_cast<WireId>(player), static_cast<WireId>(group));
    return {};
}

Result<void> InMemorySession::Send(const InMemoryMachine& machine, PlayerId from, PlayerId to, ByteSpan message)
{
    if (m_lost)
        return Fail("Send", "the session is lost");
    if (!Owns(machine, from))
        return NoSuchPlayer("Send", from);
    if (static_cast<WireId>(to) >= m_nextId)
        return NoSuchPlayer("Send", to);
    for (const WireId target : m_table.Recipients(static_cast<WireId>(from), static_cast<WireId>(to))) {
        const auto* player = std::as_const(m_table.Names).FindPlayer(target);
        m_machines.at(player->Machine)
            ->Queue({from, static_cast<PlayerId>(target), Bytes(message.begin(), message.end())});
    }
    return {};
}
} // namespace corvane
