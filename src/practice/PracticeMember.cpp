#include "practice/PracticeMember.h"

#include "core/Rounding.h"

#include <utility>

namespace corvane {
PracticeMember::PracticeMember(std::shared_ptr<SessionPeer> peer, PlayerId id, std::string name,
                               std::optional<Pilot> pilot)
    : Flying(std::move(pilot)), m_peer(std::move(peer)), m_id(id), m_name(std::move(name))
{
}

void PracticeMember::Send(PlayerId to, const Message& message)
{
    if (m_lost)
        return;
    if (const auto sent = m_peer->Send(m_id, to, SendGuaranteed, EncodeMessage(message)); !sent)
        m_lost = true;
}

void PracticeMember::RequestAdmission(bool again)
{
    WaitingS = 0;
    ++Attempts;
    if (again)
        Send(AllPlayers, PlainMessage{MessageType::JoinRetry});
    Send(AllPlayers, PlainMessage{IsPilot() ? MessageType::JoinRequest : MessageType::ObserverJoinRequest});
}

void PracticeMember::EnterAdmitted(std::int32_t group)
{
    Admitted = true;
    static_cast<void>(m_peer->AddPlayerToGroup(group, m_id)); // a group leaves with the host that made it
    Announce(AllPlayers);
}

void PracticeMember::Announce(PlayerId to)
{
    Send(to, AnnounceMessage{IsPilot() ? MessageType::PilotAnnounce : MessageType::ObserverAnnounce, m_id});
}

void PracticeMember::SendAircraftInfo(PlayerId to)
{
    if (!Flying)
        return;
    const AircraftClass& aircraft = Flying->Aircraft();
    const std::string_view title = aircraft.Titles[static_cast<std::uint32_t>(m_id) % aircraft.Titles.size()];
    Send(to, AircraftInfoMessage{std::string(aircraft.EngineType), std::string(title)});
}

void PracticeMember::SendPosition()
{
    if (!Flying)
        return;
    const ReportedPosition report = Flying->Report();
    Send(AllPlayers, PositionMessage{.Type = ShortPositions ? MessageType::PositionShort : MessageType::PositionFull,
                                     .Latitude = report.Position.Lat,
                                     .Longitude = report.Position.Lon,
                                     .AltitudeFt = RoundTo<std::int32_t>(report.AltitudeFt),
                                     .TrueHeading = RoundTo<std::int16_t>(report.TrueHeading),
                                     .GroundSpeedKt = RoundTo<std::int16_t>(report.SpeedKt)});
}

void PracticeMember::Say(std::string_view text)
{
    Send(AllPlayers, ChatTextMessage{std::string(text)});
}

void PracticeMember::AnswerRequest(PlayerId requester, bool asObserver, bool admit)
{
    if (admit)
        Send(requester,
             AnnounceMessage{asObserver ? MessageType::ObserverAnnounce : MessageType::PilotAnnounce, requester});
    else
        Send(requester, PlainMessage{asObserver ? MessageType::ObserverJoinRefused : MessageType::JoinRefused});
}

void PracticeMember::SendHostLeft()
{
    Send(AllPlayers, PlainMessage{MessageType::HostLeft});
}

void PracticeMember::Rename(std::string_view name)
{
    if (m_peer->SetPlayerName(m_id, name))
        m_name = name;
}

void PracticeMember::Leave()
{
    static_cast<void>(m_peer->DestroyPlayer(m_id));
    m_lost = true;
}

void PracticeMember::Hear(std::string line)
{
    constexpr std::size_t MostLines = 8;
    if (m_lines.size() < MostLines)
        m_lines.push_back(std::move(line));
}

std::optional<std::string> PracticeMember::TakeLine()
{
    if (m_lines.empty())
        return std::nullopt;
    std::string line = std::move(m_lines.front());
    m_lines.pop_front();
    return line;
}
} // namespace corvane
