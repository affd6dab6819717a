#include "net/machine/PeerMachine.h"
#include "net/wire/WireEncode.h"

#include <algorithm>
#include <utility>

/// The host's side: enumeration, ids, admissions.
namespace corvane::directplay {
static Guid RandomGuid(std::mt19937_64& random)
{
    Guid guid;
    std::uniform_int_distribution<unsigned> byte(0, 255);
    for (auto& value : guid.Value)
        value = static_cast<std::uint8_t>(byte(random));
    return guid;
}

void PeerMachine::Host(const HostRequest& request, Millis now)
{
    m_request = {RequestKind::Join, now + m_config.Timers.Request};
    if (m_phase != Phase::Idle)
        return Finish(Fail("session", "one is open already"));
    if ((request.Flags & UnsupportedSessionFlags) != 0)
        return Finish(Fail("session", "its flags " + std::to_string(request.Flags) + " are unsupported"));
    m_lossReason.clear();
    m_description = {};
    m_description.Flags = request.Flags;
    m_description.Instance = RandomGuid(m_random);
    m_description.Application = request.Application;
    m_description.MaxPlayers = request.MaxPlayers;
    // Bit 31 stays clear so that every id is positive for programs that keep ids as signed numbers.
    m_description.IdKey = std::uniform_int_distribution<std::uint32_t>(1, 0x7FFFFFFF)(m_random);
    m_sessionName = request.Name;
    m_password = request.Password;
    m_ids = IdAllotment(m_description.IdKey);
    m_ownId = NewId().value_or(0);
    m_hostId = m_ownId;
    MachineEntry* own = m_table.AddMachine(m_ownId);
    own->Stream = {0, m_config.StreamPort};
    own->Datagram = {0, m_config.DatagramPort};
    m_phase = Phase::Member;
    m_changes.Session = true;
    m_output.OpenEnumerationPorts();
    Finish(WireId{0});
}

std::optional<WireId> PeerMachine::NewId()
{
    std::vector<WireId> inUse = m_table.Ids();
    for (const Reservation& reservation : m_reservations)
        inUse.push_back(reservation.Id);
    return m_ids.Next(inUse);
}

std::size_t PeerMachine::MachinesAt(std::uint32_t ip) const
{
    return static_cast<std::size_t>(
        std::ranges::count_if(m_table.Machines(), [&](const auto& entry) { return entry.second.Stream.Ip == ip; }));
}

std::uint32_t PeerMachine::CurrentPlayers() const
{
    const auto reserved =
        std::ranges::count_if(m_reservations, [](const Reservation& one) { return one.Kind == RequestKind::Player; });
    return static_cast<std::uint32_t>(m_table.Players().size()) + static_cast<std::uint32_t>(reserved);
}

bool PeerMachine::Full() const
{
    return m_description.MaxPlayers != 0 && CurrentPlayers() >= m_description.MaxPlayers;
}

bool PeerMachine::AnswersEnumeration(const EnumSessions& message) const
{
    const std::uint32_t flags = m_description.Flags;
    if (!message.Application.IsEmpty() && message.Application != m_description.Application)
        return false;
    const bool needsPassword = (flags & FlagPrivate) != 0 ||
                               ((flags & FlagPasswordRequired) != 0 && (message.Flags & EnumPasswordRequired) == 0);
    if (needsPassword && message.Password.value_or(u"") != m_password)
        return false;
    if ((message.Flags & EnumAvailable) == 0 || (message.Flags & EnumAll) != 0)
        return true;
    return !Full() && (flags & (FlagJoinDisabled | FlagNewPlayersDisabled)) == 0;
}

bool PeerMachine::Handle(const Origin& origin, const EnumSessions& message, Millis now)
{
    if (!Hosting() || origin.Machine.Port == 0)
        return Drop(DropReason::Stranger);
    if (!m_strangers.Allow(origin.Remote.Ip, now))
        return Drop(DropReason::Flooding);
    if (!AnswersEnumeration(message))
        return false;
    SessionDescription description = m_description;
    description.CurrentPlayers = CurrentPlayers();
    m_output.SendStreamOnce(origin.Machine,
                            EncodeMessage(EnumSessionsReply{description, m_sessionName}, m_config.StreamPort));
    return false;
}

bool PeerMachine::Handle(const Origin& origin, const EnumPlayer& /*message*/, Millis now)
{
    const bool open = (m_description.Flags & (FlagPasswordRequired | FlagPrivate)) == 0;
    if (!Hosting() || !open || origin.Machine.Port == 0)
        return Drop(DropReason::Stranger);
    if (!m_strangers.Allow(origin.Remote.Ip, now))
        return Drop(DropReason::Flooding);
    m_output.SendStreamOnce(origin.Machine, EncodeMessage(MakeTable(false), m_config.StreamPort));
    return false;
}

std::optional<WireId> PeerMachine::Reserve(const Origin& origin, RequestKind kind, Millis now)
{
    const auto known = std::ranges::find_if(m_reservations, [&](const Reservation& one) {
        return one.Machine == origin.Machine && one.Kind == RequestKind::Join && kind == RequestKind::Join;
    });
    if (known != m_reservations.end())
        return known->Id; // asked again: the answer was lost
    const auto ofSource = std::ranges::count_if(
        m_reservations, [&](const Reservation& one) { return one.Machine.Ip == origin.Machine.Ip; });
    if (m_reservations.size() >= MaxReservations || static_cast<std::size_t>(ofSource) >= MaxReservationsPerSource)
        return std::nullopt;
    const auto id = NewId();
    if (id)
        m_reservations.push_back({*id, origin.Machine, kind, origin.Connection, now + m_config.Timers.Reservation});
    return id;
}

bool PeerMachine::Handle(const Origin& origin, const RequestPlayerId& message, Millis now)
{
    if (!Hosting() || origin.Machine.Port == 0 || !origin.Connection)
        return Drop(DropReason::Stranger);
    const bool join = (message.Flags & PlayerIsSystem) != 0;
    const MachineEntry* member = MemberAt(origin);
    if (!join && member == nullptr)
        return Drop(DropReason::Stranger);
    if (join && !m_strangers.Allow(origin.Remote.Ip, now))
        return Drop(DropReason::Flooding);
    const std::uint32_t closing = FlagNewPlayersDisabled | (join ? FlagJoinDisabled : 0);
    const bool crowded = join && MachinesAt(origin.Remote.Ip) >= MaxMachinesPerSource;
    const bool admits = !Full() && !crowded && (m_description.Flags & closing) == 0;
    const auto id = admits ? Reserve(origin, join ? RequestKind::Join : RequestKind::Player, now) : std::nullopt;
    const RequestPlayerReply reply{id.value_or(0), id ? ResultOk : ResultNoNewPlayers};
    Bytes bytes = EncodeMessage(reply, m_config.StreamPort);
    if (join && !id)
        m_output.SendStreamOnce(origin.Machine, std::move(bytes));
    else
        m_output.SendStream(origin.Machine, std::move(bytes));
    return member != nullptr;
}

bool PeerMachine::Handle(const Origin& origin, const RequestGroupId& /*message*/, Millis now)
{
    const MachineEntry* member = MemberAt(origin);
    if (!Hosting() || member == nullptr)
        return Drop(DropReason::Stranger);
    const bool room = m_table.Groups().size() < MaxGroups;
    const auto id = room ? Reserve(origin, RequestKind::Group, now) : std::nullopt;
    SendTo(*member, RequestPlayerReply{id.value_or(0), id ? ResultOk : ResultAccessDenied});
    return true;
}

bool PeerMachine::Handle(const Origin& origin, const AddForwardRequest& message, Millis now)
{
    const auto reservation = std::ranges::find_if(m_reservations, [&](const Reservation& one) {
        return one.Id == message.Id && one.Machine == origin.Machine && one.Kind == RequestKind::Join;
    });
    if (!Hosting() || reservation == m_reservations.end())
        return Drop(DropReason::Stranger);
    m_reservations.erase(reservation);
    if ((m_description.Flags & FlagPasswordRequired) != 0 && message.Password != m_password) {
        m_output.SendStream(origin.Machine, EncodeMessage(AddForwardReply{ResultInvalidPassword}, m_config.StreamPort));
        m_output.CloseStream(origin.Machine);
        return false;
    }
    Admit(origin, message, now);
    return true;
}

void PeerMachine::Admit(const Origin& origin, const AddForwardRequest& message, Millis now)
{
    // A machine that comes back under the same address has lost its first life without a word.
    if (const MachineEntry* former = m_table.FindMachine(origin.Machine))
        Expel(former->Id, now);
    MachineEntry* joiner = m_table.AddMachine(message.Id);
    if (joiner == nullptr) {
        m_output.SendStream(origin.Machine, EncodeMessage(AddForwardReply{ResultNoNewPlayers}, m_config.StreamPort));
        return m_output.CloseStream(origin.Machine);
    }
    joiner->Stream = origin.Machine;
    const std::uint16_t datagramPort =
        message.Player.Service ? message.Player.Service->Datagram.Port : std::uint16_t{0};
    joiner->Datagram = {origin.Machine.Ip, datagramPort};
    joiner->Version = message.Player.Version;
    // Through the loopback interface our own machine looks like one that nobody else can reach: others must take our
    // address for it.
    joiner->SharesHostAddress = IsLoopback(origin.Machine.Ip) && origin.Machine.Ip == origin.LocalIp;
    joiner->LastHeard = now;
    joiner->NextCheck = now + m_config.Timers.PingPeriod;
    Admission admission{message.Id, {}, now + m_config.Timers.NameTable};
    for (const auto& [id, machine] : m_table.Machines()) {
        if (id == m_ownId || id == message.Id || machine.Unreachable)
            continue;
        admission.Waiting.insert(id);
        SendTo(machine, AddForward{id, message.Id, RecordOf(*joiner)});
    }
    const bool alone = admission.Waiting.empty();
    m_admissions.push_back(std::move(admission));
    if (alone)
        CompleteAdmission(message.Id);
}

bool PeerMachine::Handle(const Origin& origin, const AddForwardAck& message, Millis /*now*/)
{
    const MachineEntry* member = MemberAt(origin);
    if (!Hosting() || member == nullptr)
        return Drop(DropReason::Stranger);
    const auto admission =
        std::ranges::find_if(m_admissions, [&](const Admission& one) { return one.Joiner == message.Id; });
    if (admission == m_admissions.end())
        return true;
    admission->Waiting.erase(member->Id);
    if (admission->Waiting.empty())
        CompleteAdmission(message.Id);
    return true;
}

void PeerMachine::CompleteAdmission(WireId joiner)
{
    std::erase_if(m_admissions, [&](const Admission& one) { return one.Joiner == joiner; });
    if (const MachineEntry* machine = m_table.FindMachine(joiner))
        SendTo(*machine, MakeTable(true));
}

template <class Map> static auto InOrderOfArrival(const Map& map)
{
    std::vector<const typename Map::mapped_type*> entries;
    for (const auto& [id, entry] : map)
        entries.push_back(&entry);
    std::ranges::sort(entries, {}, [](const auto* entry) { return entry->Order; });
    return entries;
}

SuperEnumPlayersReply PeerMachine::MakeTable(bool withPassword) const
{
    SuperEnumPlayersReply table{m_description, m_sessionName, withPassword ? m_password : u"", {}, {}};
    table.Description.CurrentPlayers = CurrentPlayers();
    table.Players.reserve(m_table.Machines().size() + m_table.Players().size());
    table.Groups.reserve(m_table.Groups().size());
    for (const auto& [id, machine] : m_table.Machines()) {
        const PackedPlayer record = RecordOf(machine);
        table.Players.push_back({record.Flags, id, record.Version, {}, {}, {}, record.Service, {}, 0});
    }
    for (const PlayerEntry* player : InOrderOfArrival(m_table.Players())) {
        const PackedPlayer record = RecordOf(*player);
        table.Players.push_back({record.Flags,
                                 record.Id,
                                 record.SystemId,
                                 record.ShortName,
                                 record.LongName,
                                 record.Data,
                                 record.Service,
                                 {},
                                 0});
    }
    for (const GroupEntry* group : InOrderOfArrival(m_table.Groups())) {
        const std::uint32_t flags = group->Machine == m_ownId ? PlayerIsLocal : 0;
        table.Groups.push_back({flags, group->Id, group->Machine, group->ShortName, group->LongName, group->Data,
                                std::nullopt, group->Members, 0});
    }
    return table;
}

/// True for an id that waits for the machine to use it. The host before may have given out one that we do not know of;
/// whoever got it uses it at once.
bool PeerMachine::WasGiven(WireId id, RequestKind kind, const SocketAddress& machine, Millis now) const
{
    const bool reserved = std::ranges::any_of(m_reservations, [&](const Reservation& one) {
        return one.Id == id && one.Kind == kind && one.Machine == machine;
    });
    const bool fromBefore = m_tookOver.count() > 0 && now - m_tookOver < m_config.Timers.Request;
    return reserved || (fromBefore && (kind != RequestKind::Player || !Full()));
}

void PeerMachine::ReleaseReservation(WireId id)
{
    std::erase_if(m_reservations, [&](const Reservation& one) { return one.Id == id; });
}

void PeerMachine::TickHost(Millis now)
{
    if (!Hosting())
        return;
    for (auto one = m_reservations.begin(); one != m_reservations.end();) {
        if (now < one->Deadline) {
            ++one;
            continue;
        }
        if (one->Kind == RequestKind::Join)
            m_output.CloseStream(one->Machine);
        one = m_reservations.erase(one);
    }
    std::vector<WireId> late;
    for (const Admission& admission : m_admissions) {
        if (now >= admission.Deadline)
            late.push_back(admission.Joiner);
    }
    for (const WireId joiner : late)
        CompleteAdmission(joiner);
}
} // namespace corvane::directplay
