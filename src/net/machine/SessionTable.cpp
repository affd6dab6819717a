#include "net/machine/SessionTable.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace corvane::directplay {
MachineEntry* SessionTable::MemberAt(const Origin& origin)
{
    if (!InSession() || origin.Machine.Port == 0)
        return nullptr;
    MachineEntry* machine = Names.FindMachine(origin.Machine);
    return machine != nullptr && machine->Id != OwnId ? machine : nullptr;
}

MachineEntry* SessionTable::OwnerOf(WireId id)
{
    if (const PlayerEntry* player = Names.FindPlayer(id))
        return Names.FindMachine(player->Machine);
    return Names.FindMachine(id);
}

bool SessionTable::FromHost(const Origin& origin) const
{
    return !Hosting() && std::ranges::find(HostAddresses, origin.Machine) != HostAddresses.end();
}

bool SessionTable::FromAskedHost(const Origin& origin) const
{
    return !HostAddresses.empty() && origin.Machine == HostAddresses.front();
}

bool SessionTable::MayChange(const Origin& origin, WireId owner)
{
    const MachineEntry* member = MemberAt(origin);
    return FromHost(origin) || (member != nullptr && (member->Id == owner || member->Id == HostId));
}

bool SessionTable::SpeaksFor(const Origin& origin, const MachineEntry& machine) const
{
    if (machine.Id == OwnId)
        return false;
    if (origin.Opened)
        return origin.Machine == machine.Stream;
    if (origin.Remote.Ip != machine.Stream.Ip)
        return false;
    if (origin.Connection) {
        const auto bound = m_boundStreams.find(*origin.Connection);
        return bound == m_boundStreams.end() || bound->second == machine.Stream;
    }
    // Machines that share an address are told apart by their datagram ports, where those are what they announced.
    return std::ranges::none_of(Names.Machines(), [&](const auto& entry) {
        return entry.first != machine.Id && entry.second.Datagram == origin.Remote;
    });
}

void SessionTable::Bind(const Origin& origin)
{
    constexpr std::size_t MaxBoundStreams = 1024;
    if (origin.Connection && m_boundStreams.size() < MaxBoundStreams)
        m_boundStreams.try_emplace(*origin.Connection, origin.Machine);
}

bool SessionTable::IsFull(std::size_t players) const noexcept
{
    return Description.MaxPlayers != 0 && players >= Description.MaxPlayers;
}

bool SessionTable::IsFoundBy(const EnumSessions& question, std::size_t players) const
{
    if (!question.Application.IsEmpty() && question.Application != Description.Application)
        return false;
    const bool needsPassword =
        HasFlag(FlagPrivate) || (HasFlag(FlagPasswordRequired) && (question.Flags & EnumPasswordRequired) == 0);
    if (needsPassword && question.Password.value_or(u"") != Password)
        return false;
    if ((question.Flags & EnumAvailable) == 0 || (question.Flags & EnumAll) != 0)
        return true;
    return !IsFull(players) && !HasFlag(FlagJoinDisabled | FlagNewPlayersDisabled);
}

void SessionTable::EnterOwnMachine(const PeerConfig& config)
{
    MachineEntry* own = Names.AddMachine(OwnId);
    assert(own != nullptr); // it is the first, and its id has been checked
    own->Stream = {0, config.StreamPort};
    own->Datagram = {0, config.DatagramPort};
}

void SessionTable::SetHost(WireId id)
{
    assert(Names.FindMachine(id) != nullptr);
    Changes.Session = true;
    HostId = id;
    Migrating = false;
    HostAddresses = {Names.FindMachine(id)->Stream};
    for (auto& [groupId, group] : Names.Groups()) {
        if (group.Machine == 0)
            group.Machine = id; // what the old host owned passes on
    }
}

void SessionTable::ForgetPlayer(WireId id)
{
    const PlayerEntry* player = std::as_const(Names).FindPlayer(id);
    if (player == nullptr)
        return;
    for (const WireId forgotten : m_departed.Add(id, player->Machine, player->ShortName))
        Changed(forgotten);
    Names.RemovePlayer(id);
    Changed(id);
}

void SessionTable::ForgetMachine(WireId id)
{
    const SocketAddress stream = Names.FindMachine(id)->Stream;
    for (const WireId player : std::set<WireId>(Names.PlayersOf(id)))
        ForgetPlayer(player);
    Names.RemoveMachine(id, HostId == id ? 0 : HostId);
    std::erase_if(m_boundStreams, [&](const auto& bound) { return bound.second == stream; });
}

void SessionTable::Clear()
{
    Changes.Session = true;
    Changes.Everybody = true;
    Phase = SessionPhase::Idle;
    Names = NameTable(m_limits);
    OwnId = 0;
    HostId = 0;
    Migrating = false;
    HostAddresses.clear();
    m_departed = DepartedPlayers(m_limits.DepartedOfMachine);
    m_boundStreams.clear();
}

bool SessionTable::IsOwnPlayer(WireId player) const
{
    const PlayerEntry* entry = Names.FindPlayer(player);
    return entry != nullptr && entry->Machine == OwnId;
}

std::optional<std::u16string> SessionTable::NameOf(WireId player) const
{
    if (const PlayerEntry* entry = Names.FindPlayer(player))
        return entry->ShortName;
    return m_departed.NameOf(player);
}

bool SessionTable::Knows(WireId to) const
{
    return to == EveryPlayer || Names.Contains(to) || m_departed.Contains(to);
}

std::vector<WireId> SessionTable::Recipients(WireId from, WireId to) const
{
    std::vector<WireId> players;
    if (to == EveryPlayer) {
        for (const auto& [id, player] : Names.Players())
            players.push_back(id);
    } else if (const auto group = Names.Groups().find(to); group != Names.Groups().end()) {
        players = group->second.Members;
    } else if (Names.FindPlayer(to) != nullptr) {
        players.push_back(to);
    }
    std::erase(players, from);
    return players;
}

ServiceData SessionTable::ServiceOf(const MachineEntry& machine) const
{
    // Ip 0: whoever receives the record takes the address that it came from.
    const bool hidden = machine.Id == OwnId || machine.SharesHostAddress;
    const std::uint32_t ip = hidden ? 0 : machine.Stream.Ip;
    return {{ip, machine.Stream.Port}, {ip, machine.Datagram.Port}};
}

PackedPlayer SessionTable::RecordOf(const MachineEntry& machine) const
{
    PackedPlayer record;
    record.Flags = PlayerIsSystem | PlayerInGroup;
    record.Flags |= machine.Id == HostId ? PlayerIsNameServer : 0;
    record.Flags |= machine.Id == OwnId ? PlayerIsLocal : 0;
    record.Id = machine.Id;
    record.Service = ServiceOf(machine);
    record.SystemId = machine.Id;
    record.Version = machine.Version;
    return record;
}

PackedPlayer SessionTable::RecordOf(const PlayerEntry& player) const
{
    PackedPlayer record;
    record.Flags = player.Machine == OwnId ? PlayerIsLocal : 0;
    record.Flags |= player.InGroup ? PlayerInGroup : 0;
    record.Id = player.Id;
    record.ShortName = player.ShortName;
    record.LongName = player.LongName;
    record.Data = player.Data;
    record.SystemId = player.Machine;
    const auto owner = Names.Machines().find(player.Machine);
    if (owner != Names.Machines().end())
        record.Service = ServiceOf(owner->second);
    return record;
}

template <class Map> static auto InOrderOfArrival(const Map& map)
{
    std::vector<const typename Map::mapped_type*> entries;
    for (const auto& [id, entry] : map)
        entries.push_back(&entry);
    std::ranges::sort(entries, {}, [](const auto* entry) { return entry->Order; });
    return entries;
}

static SuperPackedPlayer ListedAs(const PackedPlayer& record, std::uint32_t versionOrSystemId)
{
    return {record.Flags, record.Id, versionOrSystemId, record.ShortName, record.LongName, record.Data, record.Service,
            {},           0};
}

SuperEnumPlayersReply SessionTable::Listing(std::uint32_t currentPlayers, bool withPassword) const
{
    SuperEnumPlayersReply listing{Description, Name, withPassword ? Password : u"", {}, {}};
    listing.Description.CurrentPlayers = currentPlayers;
    listing.Players.reserve(Names.Machines().size() + Names.Players().size());
    listing.Groups.reserve(Names.Groups().size());
    for (const auto& [id, machine] : Names.Machines())
        listing.Players.push_back(ListedAs(RecordOf(machine), machine.Version));
    for (const PlayerEntry* player : InOrderOfArrival(Names.Players()))
        listing.Players.push_back(ListedAs(RecordOf(*player), player->Machine));
    for (const GroupEntry* group : InOrderOfArrival(Names.Groups())) {
        const std::uint32_t flags = group->Machine == OwnId ? PlayerIsLocal : 0;
        listing.Groups.push_back({flags, group->Id, group->Machine, group->ShortName, group->LongName, group->Data,
                                  std::nullopt, group->Members, 0});
    }
    return listing;
}

void StoreAddresses(MachineEntry& machine, const std::optional<ServiceData>& service, std::uint32_t sourceIp)
{
    if (!service)
        return;
    machine.Stream = service->Stream;
    machine.Datagram = service->Datagram;
    if (machine.Stream.Ip == 0)
        machine.Stream.Ip = sourceIp;
    if (machine.Datagram.Ip == 0)
        machine.Datagram.Ip = sourceIp;
}
} // namespace corvane::directplay
