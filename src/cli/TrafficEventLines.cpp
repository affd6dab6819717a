#include "cli/TrafficEventLines.h"

#include "core/Geodesy.h"
#include "core/Rounding.h"

namespace corvane {
PlayerRecord TrafficEventLines::Detailed(PlayerRecord player)
{
    if (const TrafficDetails* const now = m_details.Find(player.PlayerId))
        m_told.insert_or_assign(player.PlayerId, *now);
    const auto details = m_told.find(player.PlayerId);
    if (details == m_told.end())
        return player;
    player.AircraftType = details->second.ShortType;
    player.AircraftTitle = details->second.Title;
    if (!details->second.Report || player.Role != PilotRole)
        return player;
    const TrafficReport& report = *details->second.Report;
    player.Latitude = report.Position.Lat;
    player.Longitude = report.Position.Lon;
    player.AltitudeFt = RoundTo<std::int32_t>(report.AltitudeFt);
    player.MagHeading = MagneticFromTrue(m_magVar, report.TrueHeading, {player.Latitude, player.Longitude});
    player.GroundSpeedKt = RoundTo<std::int16_t>(report.GroundSpeedKt);
    return player;
}
} // namespace corvane
