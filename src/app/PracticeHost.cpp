#include "app/PracticeHost.h"

namespace corvane {
Result<void> PracticeHost::HostOver(const AreaModel& area)
{
    if (m_session && !m_session->IsOver() && m_areaName == area.AreaName)
        return {};
    if (m_session)
        m_session->End();
    m_session.reset();
    PracticeOptions options;
    options.Seed = m_seed;
    options.Address = m_connectionAddress;
    options.SessionName = PracticeSessionName(area.AreaName);
    const LatLon center{area.AreaCenterLat, area.AreaCenterLon};
    auto session = PracticeSession::Create(
        m_factory, PracticeScene(area.AreaAirports, area.AreaVors, area.AreaNdbs, center), m_variation, options);
    if (!session)
        return session.error();
    m_session = *std::move(session);
    m_areaName = area.AreaName;
    return {};
}

void PracticeHost::Advance(double nowS)
{
    if (m_session)
        m_session->Advance(nowS);
}
} // namespace corvane
