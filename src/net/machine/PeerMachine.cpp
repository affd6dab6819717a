#include "net/machine/PeerMachine.h"

#include "net/wire/WireDecode.h"

namespace corvane::directplay {
PeerMachine::PeerMachine(const PeerConfig& config, PeerOutput& output) : m_common(config, output) {}

/// A relay on our own machine passes enumeration requests on with the asker's address inside; from anywhere else the
/// address is not to be believed.
static bool IsLocalRelay(const Prefix& prefix, const Origin& origin)
{
    return prefix.Token == TokenRelayed && prefix.Stated.Ip != 0 && origin.Remote.Ip == origin.LocalIp;
}

static bool IsEnumRequest(ByteSpan bare)
{
    ByteReader in(bare);
    const bool management = in.ReadU32() == Signature;
    return management && in.ReadU16() == static_cast<std::uint16_t>(Command::EnumSessions);
}

bool PeerMachine::OnStream(const StreamSource& source, ByteSpan message, Millis now)
{
    Origin origin{source.Opened, source.Remote, source.LocalIp, source.Connection};
    origin.Opened = source.Opened.Port != 0;
    return OnPacket(origin, source.Enumeration, message, now);
}

bool PeerMachine::OnDatagram(const DatagramSource& source, ByteSpan packet, Millis now)
{
    return OnPacket({{}, source.Remote}, source.Enumeration, packet, now);
}

bool PeerMachine::OnPacket(Origin origin, bool enumeration, ByteSpan packet, Millis now)
{
    ++m_common.Counters.Received;
    const auto prefix = DecodePrefix(packet);
    if (const auto* reason = std::get_if<DropReason>(&prefix))
        return m_common.Drop(*reason);
    const auto& head = std::get<Prefix>(prefix);
    const ByteSpan bare = packet.subspan(PrefixSize);
    if (enumeration && !IsEnumRequest(bare))
        return m_common.Drop(IsManagement(packet) ? DropReason::Stranger : DropReason::BadMagic);
    origin.StatedPort = head.Stated.Port;
    if (!origin.Opened)
        origin.Machine = {origin.Remote.Ip, head.Stated.Port};
    if (!origin.Opened && origin.Connection && IsLocalRelay(head, origin) && IsEnumRequest(bare))
        origin.Machine.Ip = head.Stated.Ip;
    return Dispatch(origin, bare, now);
}

bool PeerMachine::Dispatch(const Origin& origin, ByteSpan bare, Millis now)
{
    const bool management = bare.size() >= SignaturePart && ByteReader(bare).ReadU32() == Signature;
    return management ? DispatchManagement(origin, bare, now) : m_delivery.OnPlayerMessage(origin, bare, now);
}

/// True for what may come before the joiner has its table, and must be kept until then.
static bool WaitsForTable(const WireMessage& message)
{
    return std::holds_alternative<AddForward>(message) || std::holds_alternative<CreatePlayerMessage>(message) ||
           std::holds_alternative<CreateGroupMessage>(message) ||
           std::holds_alternative<AddPlayerToGroupMessage>(message);
}

/// Gives a message to the first of some duties that handles its kind.
template <class Message, class Duty, class... Duties>
static bool GiveToOneOf(const Origin& origin, const Message& message, Millis now, Duty& duty, Duties&... others)
{
    if constexpr (requires { duty.Handle(origin, message, now); })
        return duty.Handle(origin, message, now);
    else if constexpr (requires { duty.Handle(origin, message); })
        return duty.Handle(origin, message);
    else
        return GiveToOneOf(origin, message, now, others...);
}

/// What concerns several duties, or changes the course of the join, is put in order here.
struct PeerMachine::Receiver {
    PeerMachine& Self;
    const Origin& From;
    Millis Now;

    bool operator()(const RequestPlayerReply& message) const
    {
        if (Self.m_common.Table.Phase != SessionPhase::WaitingForId)
            return Self.m_own.OnId(From, message, Now);
        return Self.Follow(Self.m_joining.OnId(From, message, Now), Now);
    }
    bool operator()(const SuperEnumPlayersReply& message) const
    {
        return Self.Follow(Self.m_joining.OnTable(From, message, Now), Now);
    }
    bool operator()(const EnumPlayersReply& message) const { return (*this)(ToSuper(message)); }
    bool operator()(const AddForwardReply& message) const
    {
        return Self.Follow(Self.m_joining.OnRefusal(From, message), Now);
    }
    bool operator()(const LoginFailed& /*message*/) const
    {
        return Self.Follow(Self.m_joining.OnLoginFailed(From), Now);
    }
    bool operator()(const AddForwardRequest& message) const { return Self.AdmitMachine(From, message, Now); }
    bool operator()(const CreatePlayerMessage& message) const
    {
        return Self.OnEntered(Self.m_others.Enter(From, message, Now), Now);
    }
    bool operator()(const CreatePlayerVerify& message) const
    {
        return Self.OnEntered(Self.m_others.Enter(From, message, Now), Now);
    }
    bool operator()(const IgnoredMessage& /*message*/) const { return false; }
    template <class Message> bool operator()(const Message& message) const
    {
        return GiveToOneOf(From, message, Now, Self.m_search, Self.m_host, Self.m_liveness, Self.m_delivery,
                           Self.m_others, Self.m_succession);
    }
};

bool PeerMachine::DispatchManagement(Origin origin, ByteSpan bare, Millis now)
{
    auto decoded = DecodeManagement(bare);
    if (const auto* reason = std::get_if<DropReason>(&decoded))
        return m_common.Drop(*reason);
    const auto& [version, body] = std::get<Management>(decoded);
    origin.Version = version;
    if (m_common.Table.Phase == SessionPhase::WaitingForTable && WaitsForTable(body))
        return m_delivery.Hold(origin, bare, 0, now);
    if (MachineEntry* member = m_common.Table.MemberAt(origin)) {
        member->Heard(now);
        m_common.Table.Bind(origin);
    }
    return std::visit(Receiver{*this, origin, now}, body);
}

bool PeerMachine::Follow(const JoinStep& step, Millis now)
{
    if (!step.Heeded)
        return m_common.Drop(DropReason::Stranger);
    if (!step.Failure.empty())
        FailJoin(step.Failure);
    if (step.Complete) {
        m_delivery.ReplayHeld(0, now);
        m_common.Finish(WireId{0});
    }
    return true;
}

bool PeerMachine::AdmitMachine(const Origin& origin, const AddForwardRequest& message, Millis now)
{
    if (!m_host.Redeem(origin, message))
        return false;
    // A machine that comes back under the same address has lost its first life without a word.
    if (const MachineEntry* former = m_common.Table.Names.FindMachine(origin.Machine))
        m_succession.Expel(former->Id, now);
    m_host.Admit(origin, message, now);
    return true;
}

/// A player has become known, if it may be: what it said before can be heard.
bool PeerMachine::OnEntered(std::optional<WireId> player, Millis now)
{
    if (player)
        m_delivery.ReplayHeld(*player, now);
    return player.has_value();
}

void PeerMachine::Join(const Guid& instance, std::u16string_view password, Millis now)
{
    m_joining.Begin(instance, m_search.Find(instance), password, now);
}

void PeerMachine::CreatePlayer(std::u16string_view shortName, std::u16string_view longName, Millis now)
{
    m_own.CreatePlayer(shortName, longName, now);
}

Result<void> PeerMachine::SetPlayerName(WireId player, std::u16string_view shortName)
{
    return m_own.SetPlayerName(player, shortName);
}

Result<void> PeerMachine::Send(WireId from, WireId to, bool guaranteed, ByteSpan content)
{
    return m_delivery.Send(from, to, guaranteed, content);
}

void PeerMachine::FailJoin(std::string why)
{
    ResetSession();
    m_common.Finish(Fail("session", std::move(why)));
}

void PeerMachine::LoseSession(std::string reason)
{
    ResetSession();
    m_common.Table.LossReason = std::move(reason);
    m_common.Finish(Fail("session", m_common.Table.LossReason));
}

void PeerMachine::CancelRequest()
{
    if (m_joining.UnderWay())
        ResetSession();
    m_common.Finish(Fail("request", "cancelled"));
}

void PeerMachine::Leave()
{
    const SessionTable& table = m_common.Table;
    if (table.InSession()) {
        for (const WireId player : std::set<WireId>(table.Names.PlayersOf(table.OwnId)))
            (void)DestroyPlayer(player); // an own player of a running session: cannot fail
        m_common.SendToOthers(DeletePlayerMessage{table.OwnId, 0});
    }
    if (table.Phase != SessionPhase::Idle)
        ResetSession();
    m_common.Finish(Fail("request", "cancelled"));
}

void PeerMachine::ResetSession()
{
    SessionTable& table = m_common.Table;
    for (const auto& [id, machine] : table.Names.Machines()) {
        if (id != table.OwnId)
            m_common.Output.CloseStream(machine.Stream);
    }
    if (table.Hosting())
        m_common.Output.CloseEnumerationPorts();
    for (const SocketAddress& host : table.HostAddresses) {
        if (table.InSession())
            m_common.Output.CloseStream(host);
        else
            m_common.Output.DropStream(host); // a join that is given up has nothing to say any more
    }
    m_host.Clear();
    m_delivery.Clear();
    table.Clear();
}

void PeerMachine::OnStreamFailed(const SocketAddress& machine, Millis now)
{
    if (m_joining.UnderWay() && machine == m_common.Table.HostAddresses.front())
        return FailJoin("the host cannot be reached at " + AddressText(machine));
    if (!InSession())
        return;
    m_host.ForgetReservations(machine);
    if (const MachineEntry* entry = m_common.Table.Names.FindMachine(machine))
        m_succession.OnDead(entry->Id, now);
}

void PeerMachine::Tick(Millis now)
{
    m_search.Tick(now);
    EndRequestInTime(now);
    m_delivery.Tick(now);
    if (!InSession())
        return;
    m_host.Tick(now);
    for (const WireId dead : m_liveness.Tick(now))
        m_succession.OnDead(dead, now);
}

void PeerMachine::EndRequestInTime(Millis now)
{
    const PendingRequest& request = m_common.Request;
    if (request.Kind == RequestKind::None || now < request.Deadline)
        return;
    if (request.Kind == RequestKind::Enumerate)
        m_common.Finish(WireId{0});
    else if (request.Kind == RequestKind::Join)
        FailJoin("the host does not answer");
    else
        m_common.Finish(Fail("host", "does not answer"));
}
} // namespace corvane::directplay
