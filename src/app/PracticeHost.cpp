#include "app/PracticeHost.h"

#include <cassert>

namespace corvane {
void PracticeHost::End()
{
    if (m_session)
        m_session->End();
    m_session.reset();
}

Result<void> PracticeHost::HostOver(const AreaModel& area)
{
    if (m_session && !m_session->IsOver() && m_areaName == area.AreaName)
        return {};
    End();
    PracticeOptions options;
    options.Seed = m_seed++; // every session meets other pilots; the first those of the seed
    options.Address = m_transport.Address();
    options.SessionName = PracticeSessionName(area.AreaName);
    if (m_playing)
        options.Scenario = m_scenarios[*m_playing];
    if (m_transport.OnNetwork()) { // one machine, which others rely on
        options.PeerForEach = false;
        options.HostStaysS = -1;
    }
    const LatLon center = area.AreaCenter;
    auto session = PracticeSession::Create(
        m_transport, PracticeScene(area.AreaAirports, area.AreaVors, area.AreaNdbs, center), m_variation, options);
    if (!session)
        return session.error();
    m_session = *std::move(session);
    m_areaName = area.AreaName;
    return {};
}

Result<void> PracticeHost::Play(std::optional<std::size_t> scenario, const AreaModel& area)
{
    assert(!scenario || *scenario < m_scenarios.size());
    m_playing = scenario;
    End();
    return HostOver(area);
}

Result<void> PracticeHost::ServeAt(std::string_view address, const AreaModel& area)
{
    End();
    m_address = address;
    m_transport.ServeAt(m_address);
    Result<void> hosted = HostOver(area);
    if (hosted || m_address.empty())
        return hosted;
    m_address.clear();
    m_transport.ServeAt({});
    static_cast<void>(HostOver(area)); // what keeps it from the network is the news
    return hosted;
}

std::optional<PracticeWind> PracticeHost::WindIn(std::string_view instanceGuid) const
{
    if (!m_session || m_session->Entry().InstanceGuid != instanceGuid)
        return std::nullopt;
    return m_playing ? m_scenarios[*m_playing].Wind : PracticeWind();
}

std::string PracticeHost::DestinationOf(std::string_view callsign) const
{
    return m_session ? m_session->DestinationOf(callsign) : std::string();
}

void PracticeHost::Advance(double nowS)
{
    if (m_session)
        m_session->Advance(nowS);
}
} // namespace corvane
