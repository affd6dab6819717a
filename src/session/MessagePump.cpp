#include "session/MessagePump.h"

#include "core/Geodesy.h"
#include "session/BusyFlag.h"
#include "session/MemberManners.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace corvane {
static constexpr std::string_view RemovedText =
    "The host had removed you from the session, Corvane closes multiplayer session.";

MessagePump::MessagePump(SessionState& session, PlayerTable& players, const MagVarGrid& magVar, PumpEvents& events,
                         MessageBoxes& boxes) noexcept
    : m_session(session), m_players(players), m_magVar(magVar), m_events(events), m_boxes(boxes)
{
}

void MessagePump::Start()
{
    m_isSessionHost = false;
    m_malformedCount = 0;
    m_hostlessTicks = 0;
    static_cast<void>( // the upkeep tick asks again
        SendFromOwnPlayer(m_session, AllPlayers, EncodeMessage(PlainMessage{MessageType::IdentifyRequest})));
}

void MessagePump::PumpTick()
{
    if (m_busy || !m_session.HasOwnPlayer())
        return;
    const BusyFlag busy(m_busy);
    m_senders.clear();
    m_sessionOver = false;
    if (const auto drained = Drain(); !drained) {
        m_lastError = drained.error();
        EndSession(RemovedText);
    } else if (!m_sessionOver) {
        TakeOver();
    }
}

/// A host that has crashed cannot hand the session over, and the simulator's own members wait for that for ever.
void MessagePump::TakeOver()
{
    const bool hostless = m_session.TakesOver && m_session.SessionJoined && !m_isSessionHost;
    if (!hostless || !m_session.SessionPeer->IsHost()) {
        m_hostlessTicks = 0;
        return;
    }
    if (++m_hostlessTicks < TakeOverMs / PumpIntervalMs)
        return;
    m_isSessionHost = true;
    Inform("The original host is gone without a word, Corvane is now hosting the session.");
}

Result<void> MessagePump::Drain()
{
    const auto count = m_session.SessionPeer->GetMessageCount(m_session.OwnPlayerId);
    if (!count)
        return count.error();
    for (std::int32_t i = 0; i < *count && !m_sessionOver; ++i) {
        const auto message = m_session.SessionPeer->Receive();
        if (!message)
            return message.error();
        if (auto handled = Handle(*message); !handled)
            return handled;
    }
    return {};
}

/// A message that cannot be read ends the session, unless the user would rather have it passed over.
Result<void> MessagePump::Malformed(const Error& why)
{
    if (!m_passesMalformed)
        return why;
    ++m_malformedCount;
    return {};
}

Result<void> MessagePump::Handle(const ReceivedMessage& message)
{
    if (message.From == SystemSender)
        return {}; // the transport's own messages may be shorter than a header
    const auto header = DecodeHeader(message.Content);
    if (!header)
        return Malformed(header.error());
    switch (header->Type) {
    case MessageType::HostLeft: return HandleHostLeft();
    case MessageType::RemovedByHost: EndSession(RemovedText); return {};
    case MessageType::ChatText: return HandleChat(*header, message);
    case MessageType::JoinRequest:
    case MessageType::ObserverJoinRequest: return Admit(message.From, header->Type);
    default: return m_session.SessionJoined ? HandleJoined(*header, message) : Result<void>();
    }
}

/// The messages that matter only once the host has admitted this program.
Result<void> MessagePump::HandleJoined(const MessageHeader& header, const ReceivedMessage& message)
{
    switch (header.Type) {
    case MessageType::PilotAnnounce:
    case MessageType::ObserverAnnounce: return HandleAnnounce(header, message);
    case MessageType::IdentifyRequest:
        return SendFromOwnPlayer(m_session, message.From, MemberManners(m_session.OwnPlayerId).Introduction());
    case MessageType::AircraftInfo: return HandleAircraftInfo(header, message);
    case MessageType::PositionShort:
    case MessageType::PositionFull: return HandlePosition(header, message);
    default: return {};
    }
}

Result<void> MessagePump::Admit(PlayerId sender, MessageType request)
{
    if (!m_isSessionHost)
        return {};
    std::optional<std::size_t> entry;
    if (auto found = FindEntry(sender, entry); !found)
        return found;
    const bool welcomed = !entry && std::cmp_less_equal(m_players.PlayerCount(), m_session.SessionMaxPlayers);
    return SendFromOwnPlayer(m_session, sender, MemberManners::Admission(request, sender, welcomed));
}

Result<void> MessagePump::HandleAnnounce(const MessageHeader& header, const ReceivedMessage& message)
{
    if (const auto announce = DecodeAnnounce(header, message.Content); !announce)
        return Malformed(announce.error());
    const auto found = FindSender(message.From);
    if (!found)
        return found.error();
    Sender& sender = **found;
    if (sender.Entry || m_players.PlayerCount() >= MaxPlayers)
        return {};
    m_players.Append(sender.Name, message.From, header.Type == MessageType::PilotAnnounce ? PilotRole : ObserverRole);
    sender.Entry = m_players.PlayerCount() - 1;
    m_events.RefreshPlayerList();
    m_events.PlayerAdded(m_players.Players().back());
    return {};
}

Result<void> MessagePump::HandleAircraftInfo(const MessageHeader& header, const ReceivedMessage& message)
{
    std::optional<std::size_t> entry;
    if (auto found = FindEntry(message.From, entry); !found || !entry)
        return found;
    const auto info = DecodeAircraftInfo(header, message.Content);
    if (!info)
        return Malformed(info.error());
    for (auto index = entry; index; index = m_players.FindNextPlayer(*index)) {
        PlayerRecord& player = m_players.Players()[*index];
        player.AircraftType = info->AircraftType;
        player.AircraftTitle = info->AircraftTitle;
        m_events.PlayerUpdated(player);
    }
    return {};
}

Result<void> MessagePump::HandlePosition(const MessageHeader& header, const ReceivedMessage& message)
{
    std::optional<std::size_t> entry;
    if (auto found = FindEntry(message.From, entry); !found || !entry)
        return found;
    const auto position = DecodePosition(header, message.Content);
    if (!position)
        return Malformed(position.error());
    for (auto index = entry; index; index = m_players.FindNextPlayer(*index)) {
        PlayerRecord& player = m_players.Players()[*index];
        UpdatePosition(player, *position);
        m_events.PlayerUpdated(player);
        m_events.PositionReported(player);
    }
    return {};
}

void MessagePump::UpdatePosition(PlayerRecord& player, const PositionMessage& position) const
{
    player.Latitude = position.Latitude;
    player.Longitude = position.Longitude;
    player.AltitudeFt = position.AltitudeFt;
    player.MagHeading = MagneticFromTrue(m_magVar, position.TrueHeading, {position.Latitude, position.Longitude});
    player.GroundSpeedKt = position.GroundSpeedKt;
}

Result<void> MessagePump::HandleChat(const MessageHeader& header, const ReceivedMessage& message)
{
    const auto chat = DecodeChatText(header, message.Content);
    if (!chat)
        return Malformed(chat.error());
    if (chat->Text.empty())
        return {};
    const auto sender = FindSender(message.From);
    if (!sender)
        return sender.error();
    m_events.AddChatLine((*sender)->Name, chat->Text);
    return {};
}

Result<void> MessagePump::HandleHostLeft()
{
    const auto members = m_session.SessionPeer->GetDPEnumPlayers();
    if (!members)
        return members.error();
    PruneDepartedPlayers(*members);
    if (m_players.PlayerCount() != 1) {
        m_isSessionHost = true;
        Inform("The original host had left the session, Corvane is now hosting the session.");
        return {};
    }
    const auto ownName = OwnFriendlyName(m_session);
    if (!ownName)
        return ownName.error();
    if (IsPlayer(m_players.Players().front(), m_session.OwnPlayerId, *ownName))
        EndSession("The FS multiplayer connection was lost, Corvane closes multiplayer session.");
    return {};
}

void MessagePump::EndSession(std::string_view text)
{
    Inform(text);
    if (!m_sessionOver)
        m_events.Disconnect();
    m_sessionOver = true;
}

/// Shows a box. Whatever the program allows meanwhile, names and entries may have changed when it closes, and the
/// session may be another one.
void MessagePump::Inform(std::string_view text)
{
    const SessionPeer* peer = m_session.SessionPeer.get();
    const PlayerId ownId = m_session.OwnPlayerId;
    m_boxes.Inform(text);
    m_senders.clear();
    m_sessionOver = m_session.SessionPeer.get() != peer || m_session.OwnPlayerId != ownId;
}

void MessagePump::UpkeepTick()
{
    if (m_busy || !m_session.HasOwnPlayer())
        return;
    const BusyFlag busy(m_busy);
    if (const auto members = m_session.SessionPeer->GetDPEnumPlayers()) {
        PruneDepartedPlayers(*members);
        AskUnknownMembers(*members);
    }
    AskForAircraft();
}

void MessagePump::PruneDepartedPlayers(std::span<const SessionMember> members)
{
    std::vector<std::pair<PlayerId, std::string_view>> present;
    present.reserve(members.size());
    for (const SessionMember& member : members)
        present.emplace_back(member.Id, member.ShortName);
    std::sort(present.begin(), present.end());
    std::vector<std::size_t> departed;
    for (std::size_t i = 0; i < m_players.PlayerCount(); ++i) {
        const PlayerRecord& player = m_players.Players()[i];
        if (!std::binary_search(present.begin(), present.end(),
                                std::pair(player.PlayerId, std::string_view(player.Name))))
            departed.push_back(i);
    }
    if (departed.empty())
        return;
    for (const std::size_t index : departed)
        m_events.PlayerRemoved(m_players.Players()[index]);
    m_players.Remove(departed);
    m_senders.clear();
    m_events.RefreshPlayerList();
}

void MessagePump::AskUnknownMembers(std::span<const SessionMember> members)
{
    const Bytes request = EncodeMessage(PlainMessage{MessageType::IdentifyRequest});
    for (const SessionMember& member : members) {
        if (!m_players.FindPlayer(member.Id, member.ShortName))
            static_cast<void>(SendFromOwnPlayer(m_session, member.Id, request)); // asked again next time
    }
}

void MessagePump::AskForAircraft()
{
    const Bytes request = EncodeMessage(PlainMessage{MessageType::AircraftInfoRequest});
    const auto ownName = OwnFriendlyName(m_session);
    for (const PlayerRecord& player : m_players.Players()) {
        const bool isOther = ownName ? EligiblePilot(player, m_session.OwnPlayerId, *ownName)
                                     : player.Role == PilotRole && player.PlayerId != m_session.OwnPlayerId;
        if (isOther)
            static_cast<void>(SendFromOwnPlayer(m_session, player.PlayerId, request)); // asked again next time
    }
}

Result<MessagePump::Sender*> MessagePump::FindSender(PlayerId id)
{
    if (const auto known = m_senders.find(id); known != m_senders.end())
        return &known->second;
    auto name = m_session.SessionPeer->GetPlayerFriendlyName(id);
    if (!name)
        return name.error();
    const auto entry = m_players.FindPlayer(id, *name);
    return &m_senders.insert_or_assign(id, Sender{std::move(*name), entry}).first->second;
}

/// Gives the first entry that is the sender. A sender whose id no entry has is not asked for its name.
Result<void> MessagePump::FindEntry(PlayerId id, std::optional<std::size_t>& entry)
{
    if (const auto known = m_senders.find(id); known != m_senders.end()) {
        entry = known->second.Entry;
    } else if (m_players.HasId(id)) {
        const auto sender = FindSender(id);
        if (!sender)
            return sender.error();
        entry = (*sender)->Entry;
    }
    return {};
}
} // namespace corvane
