#include "core/Rounding.h"
#include "core/Text.h"
#include "traffic/TrafficSession.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace corvane {
/// One place always stays free for another controller.
bool TrafficSession::HasPlace() const noexcept
{
    return static_cast<std::int64_t>(m_keys.size() + m_others.size()) + 2 < m_options.MaxPlayers;
}

/// Gives an aircraft its player, where there is a place; otherwise its next report tries again.
void TrafficSession::Enter(TrafficKey key, Aircraft& aircraft)
{
    if (!HasPlace())
        return;
    const auto id = m_peer->CreatePlayer(aircraft.Told.Name, MemberManners::FormalName);
    if (!id)
        return;
    aircraft.Id = *id;
    m_keys.emplace(*id, key);
    TrafficDetails& details = m_details.Of(*id);
    details = {.ShortType = aircraft.Told.ShortType, .Title = aircraft.Told.Title, .Report = {}};
    Introduce(aircraft);
}

/// Where the source does not tell the kind of engine: most of those who fly for fun have pistons.
static MemberManners MannersOf(PlayerId id, const AircraftAppeared& told)
{
    MemberManners manners(id, told.IsPilot ? MessageType::PilotAnnounce : MessageType::ObserverAnnounce);
    if (told.IsPilot)
        manners.SetAircraft(
            EncodeMessage(AircraftInfoMessage{told.EngineType.empty() ? "Piston Plane" : told.EngineType,
                                              told.Title.empty() ? told.ShortType : told.Title}));
    return manners;
}

MemberManners TrafficSession::HostManners() const
{
    return MemberManners(m_hostId,
                         m_options.HostIsMember ? std::optional(MessageType::ObserverAnnounce) : std::nullopt);
}

/// Tells the others who it is and what it flies.
void TrafficSession::Introduce(const Aircraft& aircraft)
{
    const MemberManners manners = MannersOf(aircraft.Id, aircraft.Told);
    SendToOthers(aircraft.Id, manners.Introduction());
    SendToOthers(aircraft.Id, manners.AnswerTo(MessageType::AircraftInfoRequest));
}

void TrafficSession::Apply(const AircraftAppeared& told)
{
    const auto [entry, isNew] = m_aircraft.try_emplace(told.Key, Aircraft{0, told});
    if (isNew)
        Enter(told.Key, entry->second);
}

void TrafficSession::Apply(const AircraftMoved& told)
{
    const auto found = m_aircraft.find(told.Key);
    if (found == m_aircraft.end())
        return;
    Aircraft& aircraft = found->second;
    if (aircraft.Id == 0)
        Enter(told.Key, aircraft);
    if (aircraft.Id == 0)
        return;
    m_details.Of(aircraft.Id).Report = told.Report;
    if (!aircraft.Told.IsPilot)
        return;
    const PositionMessage position{.Type = MessageType::PositionFull,
                                   .Latitude = told.Report.Position.Lat,
                                   .Longitude = told.Report.Position.Lon,
                                   .AltitudeFt = RoundTo<std::int32_t>(told.Report.AltitudeFt),
                                   .TrueHeading = RoundTo<std::int16_t>(told.Report.TrueHeading),
                                   .GroundSpeedKt = RoundTo<std::int16_t>(told.Report.GroundSpeedKt)};
    SendToOthers(aircraft.Id, EncodeMessage(position));
}

void TrafficSession::Apply(const AircraftRenamed& told)
{
    const auto found = m_aircraft.find(told.Key);
    if (found == m_aircraft.end())
        return;
    Aircraft& aircraft = found->second;
    aircraft.Told.Name = told.Name;
    if (aircraft.Id == 0)
        return;
    static_cast<void>(m_peer->SetPlayerName(aircraft.Id, told.Name)); // keeps its old name then
    Introduce(aircraft);
}

/// Who has no player speaks through the host.
void TrafficSession::Apply(const AircraftSaid& told)
{
    const auto found = m_aircraft.find(told.Key);
    if (found == m_aircraft.end())
        return;
    if (found->second.Id != 0)
        SendToOthers(found->second.Id, EncodeMessage(ChatTextMessage{told.Text}));
    else
        Apply(OutsiderSaid{found->second.Told.Name, told.Text});
}

void TrafficSession::Apply(const OutsiderSaid& told)
{
    SendToOthers(m_hostId, EncodeMessage(ChatTextMessage{told.Name + ": " + told.Text}));
}

void TrafficSession::Apply(const AircraftVanished& told)
{
    const auto found = m_aircraft.find(told.Key);
    if (found == m_aircraft.end())
        return;
    if (const PlayerId id = found->second.Id; id != 0) {
        static_cast<void>(m_peer->DestroyPlayer(id));
        m_keys.erase(id);
        m_details.Forget(id);
    }
    m_aircraft.erase(found);
}

void TrafficSession::Apply(const SourceNotice& told)
{
    Notice(told.Text);
}

void TrafficSession::Notice(const std::string& text)
{
    if (m_options.OnNotice)
        m_options.OnNotice(text);
    else
        SendToOthers(m_hostId, EncodeMessage(ChatTextMessage{text}));
}

/// What waits when it begins, at most: a flood cannot keep the call going.
Result<void> TrafficSession::ReceiveAll()
{
    constexpr int MostAtOnce = 65536;
    const auto alive = m_peer->GetMessageCount(m_hostId);
    if (!alive)
        return alive.error();
    for (int i = 0; i < MostAtOnce; ++i) {
        const auto message = m_peer->Receive();
        if (!message)
            break; // none waits, or the next count says that the session is gone
        if (message->From != SystemSender)
            Handle(*message);
    }
    return {};
}

void TrafficSession::Handle(const ReceivedMessage& message)
{
    const auto header = DecodeHeader(message.Content);
    if (!header || m_keys.contains(message.From))
        return;
    const bool fromHost = message.From == m_hostId; // in whose name it is watched
    if (!fromHost && FindOther(message.From) == nullptr)
        return;
    if (header->Type == MessageType::IdentifyRequest || header->Type == MessageType::AircraftInfoRequest)
        AnswerRequest(header->Type, message);
    else if (!fromHost && message.To == m_hostId)
        HandleAtHost(*header, message);
}

void TrafficSession::AnswerRequest(MessageType request, const ReceivedMessage& message)
{
    if (message.To == m_hostId)
        return Send(m_hostId, message.From, HostManners().AnswerTo(request));
    if (const auto key = m_keys.find(message.To); key != m_keys.end())
        Send(message.To, message.From, MannersOf(message.To, m_aircraft.at(key->second).Told).AnswerTo(request));
}

void TrafficSession::HandleAtHost(const MessageHeader& header, const ReceivedMessage& message)
{
    switch (header.Type) {
    case MessageType::JoinRequest:
    case MessageType::ObserverJoinRequest: {
        const bool room = static_cast<std::int64_t>(m_keys.size() + m_others.size()) + 1 <= m_options.MaxPlayers;
        Send(m_hostId, message.From, MemberManners::Admission(header.Type, message.From, room));
        break;
    }
    case MessageType::ChatText: HandleChat(header, message); break;
    case MessageType::PositionShort:
    case MessageType::PositionFull: HandlePosition(header, message); break;
    default: break;
    }
}

void TrafficSession::HandleChat(const MessageHeader& header, const ReceivedMessage& message)
{
    const auto chat = DecodeChatText(header, message.Content);
    if (!chat || chat->Text.empty())
        return;
    if (!m_feed.CanBeTalkedTo())
        return Notice("This traffic cannot be talked to: nobody has read \"" + chat->Text + "\".");
    if (!m_options.ShowMembers || message.From == m_controller)
        return m_feed.Tell(LineSaid{chat->Text});
    constexpr std::string_view ControllersMark = "**";
    std::string_view speaker = FindOther(message.From)->Name;
    if (speaker.starts_with(ControllersMark))
        speaker.remove_prefix(ControllersMark.size());
    m_feed.Tell(LineSaid{std::string(speaker) + ": " + chat->Text});
}

void TrafficSession::HandlePosition(const MessageHeader& header, const ReceivedMessage& message)
{
    const auto position = DecodePosition(header, message.Content);
    if (!m_options.ShowMembers || !position)
        return;
    Other& other = *FindOther(message.From);
    other.Shown = true;
    m_feed.Tell(MemberMoved{other.Name,
                            {.Position = {position->Latitude, position->Longitude},
                             .AltitudeFt = static_cast<double>(position->AltitudeFt),
                             .TrueHeading = static_cast<double>(position->TrueHeading),
                             .GroundSpeedKt = static_cast<double>(position->GroundSpeedKt),
                             .Squawk = {},
                             .FrequencyKhz = {}}});
}

/// The member of another program that an id belongs to; null where the session does not know it.
TrafficSession::Other* TrafficSession::FindOther(PlayerId id)
{
    if (const auto known = m_others.find(id); known != m_others.end())
        return &known->second;
    auto name = m_peer->GetPlayerFriendlyName(id);
    return name ? &m_others.emplace(id, Other{*std::move(name)}).first->second : nullptr;
}

void TrafficSession::LookWhoIsThere()
{
    const auto members = m_peer->GetDPEnumPlayers();
    if (!members)
        return;
    std::unordered_map<PlayerId, Other> present;
    for (const SessionMember& member : *members) {
        if (member.Id == m_hostId || m_keys.contains(member.Id))
            continue;
        const auto known = m_others.find(member.Id);
        if (known == m_others.end() || known->second.Name != member.ShortName)
            present.emplace(member.Id, Other{member.ShortName});
        else
            present.emplace(member.Id, known->second);
    }
    for (const auto& [id, other] : m_others) {
        const auto still = present.find(id);
        if (other.Shown && (still == present.end() || still->second.Name != other.Name))
            m_feed.Tell(MemberLeft{other.Name});
    }
    m_others = std::move(present);
}
} // namespace corvane
