#include "practice/PracticeMember.h"

#include "core/Rounding.h"

#include <utility>

namespace corvane {
static MemberManners MannersOf(PlayerId id, const std::optional<Pilot>& pilot)
{
    MemberManners manners(id, pilot ? MessageType::PilotAnnounce : MessageType::ObserverAnnounce);
    if (!pilot)
        return manners;
    const AircraftClass& aircraft = pilot->Aircraft();
    const std::string_view title = aircraft.Titles[static_cast<std::uint32_t>(id) % aircraft.Titles.size()];
    manners.SetAircraft(EncodeMessage(AircraftInfoMessage{std::string(aircraft.EngineType), std::string(title)}));
    return manners;
}

PracticeMember::PracticeMember(std::shared_ptr<SessionPeer> peer, PlayerId id, std::string name,
                               std::optional<Pilot> pilot)
    : Flying(std::move(pilot)), m_peer(std::move(peer)), m_manners(MannersOf(id, Flying)), m_name(std::move(name))
{
}

void PracticeMember::Send(PlayerId to, ByteSpan message)
{
    if (m_lost || message.empty())
        return;
    if (const auto sent = m_peer->Send(Id(), to, SendGuaranteed, message); !sent)
        m_lost = true;
}

void PracticeMember::RequestAdmission(bool again)
{
    WaitingS = 0;
    ++Attempts;
    for (const Bytes& request : m_manners.RequestsForAdmission(again))
        Send(AllPlayers, request);
}

void PracticeMember::EnterAdmitted(std::int32_t group)
{
    Admitted = true;
    static_cast<void>(m_peer->AddPlayerToGroup(group, Id())); // a group leaves with the host that made it
    Send(AllPlayers, m_manners.Introduction());
}

void PracticeMember::Answer(PlayerId asker, MessageType request)
{
    Send(asker, m_manners.AnswerTo(request));
}

void PracticeMember::SendPosition()
{
    if (!Flying)
        return;
    const ReportedPosition report = Flying->Report();
    const PositionMessage position{.Type = ShortPositions ? MessageType::PositionShort : MessageType::PositionFull,
                                   .Latitude = report.Position.Lat,
                                   .Longitude = report.Position.Lon,
                                   .AltitudeFt = RoundTo<std::int32_t>(report.AltitudeFt),
                                   .TrueHeading = RoundTo<std::int16_t>(report.TrueHeading),
                                   .GroundSpeedKt = RoundTo<std::int16_t>(report.SpeedKt)};
    Send(AllPlayers, EncodeMessage(position));
}

void PracticeMember::Say(std::string_view text)
{
    Send(AllPlayers, EncodeMessage(ChatTextMessage{std::string(text)}));
}

void PracticeMember::Admit(PlayerId requester, MessageType request, bool admits)
{
    Send(requester, MemberManners::Admission(request, requester, admits));
}

void PracticeMember::SendHostLeft()
{
    Send(AllPlayers, MemberManners::Farewell());
}

void PracticeMember::Rename(std::string_view name)
{
    if (m_peer->SetPlayerName(Id(), name))
        m_name = name;
}

void PracticeMember::Leave()
{
    static_cast<void>(m_peer->DestroyPlayer(Id()));
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
