#include "net/machine/SessionHost.h"

#include <algorithm>
#include <utility>

namespace corvane::directplay {
static Guid RandomGuid(std::mt19937_64& random)
{
    Guid guid;
    std::uniform_int_distribution<unsigned> byte(0, 255);
    for (auto& value : guid.Value)
        value = static_cast<std::uint8_t>(byte(random));
    return guid;
}

void SessionHost::Begin(const HostRequest& request, Millis now)
{
    m_common.Request = {.Kind = RequestKind::Join, .Deadline = now + m_common.Config.Timers.Request};
    SessionTable& table = m_common.Table;
    if (table.Phase != SessionPhase::Idle)
        return m_common.Finish(Fail("session", "one is open already"));
    if ((request.Flags & UnsupportedSessionFlags) != 0)
        return m_common.Finish(Fail("session", "its flags " + std::to_string(request.Flags) + " are unsupported"));
    table.LossReason.clear();
    table.Description = {};
    table.Description.Flags = request.Flags;
    table.Description.Instance = RandomGuid(m_common.Random);
    table.Description.Application = request.Application;
    table.Description.MaxPlayers = request.MaxPlayers;
    // Bit 31 stays clear so that every id is positive for programs that keep ids as signed numbers.
    table.Description.IdKey = std::uniform_int_distribution<std::uint32_t>(1, 0x7FFFFFFF)(m_common.Random);
    table.Name = request.Name;
    table.Password = request.Password;
    m_ids = IdAllotment(table.Description.IdKey);
    table.OwnId = NewId().value_or(0);
    table.HostId = table.OwnId;
    table.EnterOwnMachine(m_common.Config);
    table.Phase = SessionPhase::Member;
    table.Changes.Session = true;
    m_common.Output.OpenEnumerationPorts();
    m_common.Finish(WireId{0});
}

void SessionHost::TakeOver(Millis now)
{
    m_tookOver = now;
    m_ids = IdAllotment(m_common.Table.Description.IdKey, m_common.Table.Names.Ids());
    m_common.Output.OpenEnumerationPorts();
}

void SessionHost::Clear()
{
    for (const Reservation& reservation : m_reservations)
        m_common.Output.CloseStream(reservation.Machine);
    m_reservations.clear();
    m_admissions.clear();
    m_tookOver = {};
}

std::optional<WireId> SessionHost::NewId()
{
    std::vector<WireId> inUse = m_common.Table.Names.Ids();
    for (const Reservation& reservation : m_reservations)
        inUse.push_back(reservation.Id);
    return m_ids.Next(inUse);
}

std::size_t SessionHost::MachinesAt(std::uint32_t ip) const
{
    return static_cast<std::size_t>(std::ranges::count_if(
        m_common.Table.Names.Machines(), [&](const auto& entry) { return entry.second.Stream.Ip == ip; }));
}

std::uint32_t SessionHost::CurrentPlayers() const
{
    const auto reserved =
        std::ranges::count_if(m_reservations, [](const Reservation& one) { return one.Kind == RequestKind::Player; });
    return static_cast<std::uint32_t>(m_common.Table.Names.Players().size()) + static_cast<std::uint32_t>(reserved);
}

bool SessionHost::Full() const
{
    return m_common.Table.IsFull(CurrentPlayers());
}

bool SessionHost::Handle(const Origin& origin, const EnumSessions& message, Millis now)
{
    if (!m_common.Table.Hosting() || origin.Machine.Port == 0)
        return m_common.Drop(DropReason::Stranger);
    if (!m_common.MayAnswer(origin, now))
        return m_common.Drop(DropReason::Flooding);
    if (!m_common.Table.IsFoundBy(message, CurrentPlayers()))
        return false;
    SessionDescription description = m_common.Table.Description;
    description.CurrentPlayers = CurrentPlayers();
    m_common.Output.SendStreamOnce(origin.Machine,
                                   m_common.Encoded(EnumSessionsReply{description, m_common.Table.Name}));
    return false;
}

bool SessionHost::Handle(const Origin& origin, const EnumPlayer& /*message*/, Millis now)
{
    const bool open = !m_common.Table.HasFlag(FlagPasswordRequired | FlagPrivate);
    if (!m_common.Table.Hosting() || !open || origin.Machine.Port == 0)
        return m_common.Drop(DropReason::Stranger);
    if (!m_common.MayAnswer(origin, now))
        return m_common.Drop(DropReason::Flooding);
    m_common.Output.SendStreamOnce(origin.Machine, m_common.Encoded(m_common.Table.Listing(CurrentPlayers(), false)));
    return false;
}

std::optional<WireId> SessionHost::Reserve(const Origin& origin, RequestKind kind, Millis now)
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
        m_reservations.push_back(
            {*id, origin.Machine, kind, origin.Connection, now + m_common.Config.Timers.Reservation});
    return id;
}

bool SessionHost::Handle(const Origin& origin, const RequestPlayerId& message, Millis now)
{
    if (!m_common.Table.Hosting() || origin.Machine.Port == 0 || !origin.Connection)
        return m_common.Drop(DropReason::Stranger);
    const bool join = (message.Flags & PlayerIsSystem) != 0;
    const MachineEntry* member = m_common.Table.MemberAt(origin);
    if (!join && member == nullptr)
        return m_common.Drop(DropReason::Stranger);
    if (join && !m_common.MayAnswer(origin, now))
        return m_common.Drop(DropReason::Flooding);
    const std::uint32_t closing = FlagNewPlayersDisabled | (join ? FlagJoinDisabled : 0);
    const bool crowded = join && MachinesAt(origin.Remote.Ip) >= MaxMachinesPerSource;
    const bool admits = !Full() && !crowded && !m_common.Table.HasFlag(closing);
    const auto id = admits ? Reserve(origin, join ? RequestKind::Join : RequestKind::Player, now) : std::nullopt;
    Bytes reply = m_common.Encoded(RequestPlayerReply{id.value_or(0), id ? ResultOk : ResultNoNewPlayers});
    if (join && !id)
        m_common.Output.SendStreamOnce(origin.Machine, std::move(reply));
    else
        m_common.Output.SendStream(origin.Machine, std::move(reply));
    return member != nullptr;
}

bool SessionHost::Handle(const Origin& origin, const RequestGroupId& /*message*/, Millis now)
{
    const MachineEntry* member = m_common.Table.MemberAt(origin);
    if (!m_common.Table.Hosting() || member == nullptr)
        return m_common.Drop(DropReason::Stranger);
    const bool room = m_common.Table.Names.Groups().size() < MaxGroups;
    const auto id = room ? Reserve(origin, RequestKind::Group, now) : std::nullopt;
    m_common.SendTo(*member, RequestPlayerReply{id.value_or(0), id ? ResultOk : ResultAccessDenied});
    return true;
}

void SessionHost::Refuse(const Origin& origin, std::uint32_t result)
{
    m_common.Send(origin.Machine, AddForwardReply{result});
    m_common.Output.CloseStream(origin.Machine);
}

bool SessionHost::Redeem(const Origin& origin, const AddForwardRequest& message)
{
    const auto reservation = std::ranges::find_if(m_reservations, [&](const Reservation& one) {
        return one.Id == message.Id && one.Machine == origin.Machine && one.Kind == RequestKind::Join;
    });
    if (!m_common.Table.Hosting() || reservation == m_reservations.end())
        return m_common.Drop(DropReason::Stranger);
    m_reservations.erase(reservation);
    if (!m_common.Table.HasFlag(FlagPasswordRequired) || message.Password == m_common.Table.Password)
        return true;
    Refuse(origin, ResultInvalidPassword);
    return false;
}

MachineEntry* SessionHost::Enter(const Origin& origin, const AddForwardRequest& message, Millis now)
{
    MachineEntry* joiner = m_common.Table.Names.AddMachine(message.Id);
    if (joiner == nullptr)
        return nullptr;
    joiner->Stream = origin.Machine;
    const std::uint16_t datagramPort =
        message.Player.Service ? message.Player.Service->Datagram.Port : std::uint16_t{0};
    joiner->Datagram = {origin.Machine.Ip, datagramPort};
    joiner->Version = message.Player.Version;
    // Through the loopback interface our own machine looks like one that nobody else can reach: others must take our
    // address for it.
    joiner->SharesHostAddress = IsLoopback(origin.Machine.Ip) && origin.Machine.Ip == origin.LocalIp;
    joiner->Watch(now, m_common.Config.Timers.PingPeriod);
    return joiner;
}

void SessionHost::Admit(const Origin& origin, const AddForwardRequest& message, Millis now)
{
    const MachineEntry* joiner = Enter(origin, message, now);
    if (joiner == nullptr)
        return Refuse(origin, ResultNoNewPlayers);
    Admission admission{message.Id, {}, now + m_common.Config.Timers.NameTable};
    for (const auto& [id, machine] : m_common.Table.Names.Machines()) {
        if (id == m_common.Table.OwnId || id == message.Id || machine.Unreachable)
            continue;
        admission.Waiting.insert(id);
        m_common.SendTo(machine, AddForward{id, message.Id, m_common.Table.RecordOf(*joiner)});
    }
    const bool alone = admission.Waiting.empty();
    m_admissions.push_back(std::move(admission));
    if (alone)
        CompleteAdmission(message.Id);
}

bool SessionHost::Handle(const Origin& origin, const AddForwardAck& message, Millis /*now*/)
{
    const MachineEntry* member = m_common.Table.MemberAt(origin);
    if (!m_common.Table.Hosting() || member == nullptr)
        return m_common.Drop(DropReason::Stranger);
    const auto admission =
        std::ranges::find_if(m_admissions, [&](const Admission& one) { return one.Joiner == message.Id; });
    if (admission == m_admissions.end())
        return true;
    admission->Waiting.erase(member->Id);
    if (admission->Waiting.empty())
        CompleteAdmission(message.Id);
    return true;
}

void SessionHost::CompleteAdmission(WireId joiner)
{
    std::erase_if(m_admissions, [&](const Admission& one) { return one.Joiner == joiner; });
    if (const MachineEntry* machine = m_common.Table.Names.FindMachine(joiner))
        m_common.SendTo(*machine, m_common.Table.Listing(CurrentPlayers(), true));
}

bool SessionHost::WasGiven(WireId id, RequestKind kind, const SocketAddress& machine, Millis now) const
{
    const bool reserved = std::ranges::any_of(m_reservations, [&](const Reservation& one) {
        return one.Id == id && one.Kind == kind && one.Machine == machine;
    });
    const bool fromBefore = m_tookOver.count() > 0 && now - m_tookOver < m_common.Config.Timers.Request;
    return reserved || (fromBefore && (kind != RequestKind::Player || !Full()));
}

void SessionHost::Release(WireId id)
{
    std::erase_if(m_reservations, [&](const Reservation& one) { return one.Id == id; });
}

void SessionHost::ForgetReservations(const SocketAddress& machine)
{
    std::erase_if(m_reservations, [&](const Reservation& one) { return one.Machine == machine; });
}

void SessionHost::ForgetMachine(WireId id)
{
    std::vector<WireId> complete;
    std::erase_if(m_admissions, [&](const Admission& one) { return one.Joiner == id; });
    for (Admission& admission : m_admissions) {
        if (admission.Waiting.erase(id) > 0 && admission.Waiting.empty())
            complete.push_back(admission.Joiner);
    }
    for (const WireId joiner : complete)
        CompleteAdmission(joiner);
}

void SessionHost::Tick(Millis now)
{
    if (!m_common.Table.Hosting())
        return;
    for (auto one = m_reservations.begin(); one != m_reservations.end();) {
        if (now < one->Deadline) {
            ++one;
            continue;
        }
        if (one->Kind == RequestKind::Join)
            m_common.Output.CloseStream(one->Machine);
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
