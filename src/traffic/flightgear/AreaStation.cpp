#include "traffic/flightgear/AreaStation.h"

#include "traffic/flightgear/Texts.h"

#include <utility>

namespace corvane {
FlightGearStation StationAt(const AreaModel& area, std::string callsign)
{
    constexpr std::uint16_t AirportRangeNm = 100;
    constexpr std::uint16_t SectorRangeNm = 300;
    constexpr int AtTheAirportNm = 2;
    FlightGearStation station;
    station.Callsign = std::move(callsign);
    station.Position = area.AreaCenter;
    station.RangeNm = area.AreaMode == ControlMode::Sector ? SectorRangeNm : AirportRangeNm;
    int nearestNm = AtTheAirportNm + 1;
    for (const AirportRecord& airport : area.AreaAirports) {
        const int nm = DistanceNm(area.AreaCenter, {airport.Lat, airport.Lon});
        if (nm < nearestNm) {
            nearestNm = nm;
            station.ElevationFt = airport.ElevationFt;
        }
    }
    return station;
}

std::string SuggestedCallsign(const AreaModel& area)
{
    constexpr std::size_t LongestIcao = 4;
    const std::string icao = flightgear::SentCallsign(area.AreaName.substr(0, area.AreaName.find(' ')));
    if (area.AreaMode == ControlMode::Sector || icao.empty() || icao.size() > LongestIcao)
        return "CENTER";
    return icao + "_TW";
}

bool IsStationCallsign(std::string_view text)
{
    return !text.empty() && flightgear::SentCallsign(text) == text && !text.starts_with("obs");
}
} // namespace corvane
