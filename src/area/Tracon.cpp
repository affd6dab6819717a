#include "area/Tracon.h"

#include "core/Rounding.h"

namespace corvane {
std::optional<AirspaceRecord> MakeTracon(const AirportRecord& airport)
{
    if (airport.ApproachFreq.empty() && airport.DepartureFreq.empty())
        return std::nullopt;
    const bool byDeparture = airport.ApproachName.empty() && airport.ApproachFreq.empty();
    AirspaceRecord tracon;
    tracon.ComName = byDeparture ? airport.DepartureName : airport.ApproachName;
    tracon.Kind = TraconKind;
    tracon.Frequency = (byDeparture ? airport.DepartureFreq : airport.ApproachFreq) + " Mhz";
    tracon.CenterLat = airport.Lat;
    tracon.CenterLon = airport.Lon;
    tracon.Floor = airport.ElevationFt;
    tracon.Ceiling =
        RoundTo<std::int32_t>(static_cast<double>(airport.ElevationFt) + TraconHeightFt); // held to 32 bits
    tracon.Points = {{BoundaryKind::ArcCenter, airport.Lat, airport.Lon, 0},
                     {BoundaryKind::Circle, 0, 0, TraconRadiusNm}};
    return tracon;
}
} // namespace corvane
