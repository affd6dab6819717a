#include "world/AirportDraft.h"

#include "core/Rounding.h"
#include "core/Text.h"
#include "world/AptRows.h"
#include "world/Ellipsoid.h"

#include <cmath>
#include <utility>

namespace corvane {
AirportHeader ReadAirportHeader(RowReader& row)
{
    AirportHeader header;
    const std::optional<std::int32_t> elevation = RoundChecked<std::int32_t>(row.Number());
    row.Skip(2); // tower, buildings
    header.Code = ToUpper(row.Text());
    header.Name = row.Rest();
    header.ElevationFt = elevation.value_or(0);
    if (!elevation)
        row.Refuse("the elevation makes no sense");
    if (header.Code.empty() || header.Name.empty())
        row.Refuse("the airport has no name");
    return header;
}

bool IsClosed(std::string_view name)
{
    // "Laverton (Military - Closed)" is not meant: the word stands between blanks.
    return name.starts_with("[X]") || (" " + ToLower(name) + " ").find(" closed ") != std::string::npos;
}

AirportDraft::AirportDraft(AirportHeader header, const MagVarGrid& grid, bool pavements)
    : m_header(std::move(header)), m_grid(grid), m_ground(pavements)
{
    m_airport.Name = m_header.Name;
    m_airport.ElevationFt = m_header.ElevationFt;
}

const std::string& AirportDraft::Icao() const noexcept
{
    return m_icaoCode.empty() ? m_header.Code : m_icaoCode;
}

void AirportDraft::TakeProperty(RowReader& row)
{
    const std::string_view key = row.Field();
    const std::string value = row.Rest();
    if (value.empty())
        return;
    if (key == "icao_code" && m_icaoCode.empty())
        m_icaoCode = ToUpper(value);
    if (key != "datum_lat" && key != "datum_lon")
        return;
    const std::optional<double> degrees = NumberOf(value);
    if (!degrees)
        return row.Refuse("the datum is no number");
    std::optional<double>& datum = key == "datum_lat" ? m_datumLat : m_datumLon;
    if (!datum)
        datum = degrees;
}

void AirportDraft::TakeFrequency(int kind, bool inKilohertz, RowReader& row)
{
    struct Field {
        std::string* Frequency;
        std::string* Name;
    };
    const std::array<Field, 5> fields = {{{&m_airport.ClearanceFreq, &m_airport.ClearanceName},
                                          {&m_airport.GroundFreq, &m_airport.GroundName},
                                          {&m_airport.TowerFreq, &m_airport.TowerName},
                                          {&m_airport.ApproachFreq, &m_airport.ApproachName},
                                          {&m_airport.DepartureFreq, &m_airport.DepartureName}}};
    const Field& field = fields.at(static_cast<std::size_t>(kind));
    std::string frequency = ReadFrequency(row, inKilohertz);
    if (row.Failed() || frequency.empty() || !field.Frequency->empty())
        return; // the first of a kind counts
    *field.Frequency = std::move(frequency);
    *field.Name = row.Rest();
}

void AirportDraft::TakeRunway(bool onWater, RowReader& row)
{
    RunwayRecord runway = ReadRunway(row, onWater, m_airport.ElevationFt, m_grid);
    if (!row.Failed())
        m_airport.Runways.push_back(std::move(runway));
}

void AirportDraft::TakeStrip(RowReader& row)
{
    StripRow strip = ReadStrip(row, m_airport.ElevationFt, m_grid);
    if (row.Failed())
        return;
    if (strip.IsTaxiway)
        m_ground.AddCenterLine(strip.Start, strip.End);
    else
        m_airport.Runways.push_back(std::move(strip.Runway));
}

void AirportDraft::TakeParking(bool hasType, RowReader& row)
{
    if (hasType)
        m_classedParking.reset();
    ParkingRecord parking = ReadParking(row, hasType);
    if (row.Failed())
        return;
    if (hasType)
        m_classedParking = m_airport.Parkings.size();
    m_airport.Parkings.push_back(std::move(parking));
}

void AirportDraft::TakeHelipad(RowReader& row)
{
    ParkingRecord helipad = ReadHelipad(row);
    if (!row.Failed())
        m_helipads.push_back(std::move(helipad));
}

void AirportDraft::Take(int code, RowReader& row, std::int64_t line)
{
    if (code >= 111 && code <= 116) {
        if (m_ground.InPavement())
            m_ground.TakePavementNode(code, row);
        return;
    }
    m_ground.EndPavement();
    if (++m_rows > MostRows)
        return row.Refuse("the airport has more than a million rows");
    switch (code) {
    case 10: return TakeStrip(row);
    case 14:
    case 18:
    case 19: {
        const LatLon position = row.Position();
        std::optional<LatLon>& place = code == 14 ? m_viewpoint : m_landmark;
        if (!row.Failed() && !place)
            place = position;
        return;
    }
    case 15: return TakeParking(false, row);
    case 52:
    case 53:
    case 54:
    case 55:
    case 56: return TakeFrequency(code - 52, false, row);
    case 100: return TakeRunway(false, row);
    case 101: return TakeRunway(true, row);
    case 102: return TakeHelipad(row);
    case 110: return m_ground.BeginPavement(line);
    case 1052:
    case 1053:
    case 1054:
    case 1055:
    case 1056: return TakeFrequency(code - 1052, true, row);
    case 1200: return m_ground.BeginNetwork();
    case 1201: return m_ground.TakeNode(row);
    case 1202: return m_ground.TakeEdge(row, line);
    case 1300: return TakeParking(true, row);
    case 1301: {
        const std::int32_t radiusFt = ReadParkingRadiusFt(row);
        if (!row.Failed() && m_classedParking)
            m_airport.Parkings[*m_classedParking].RadiusFt = radiusFt;
        return;
    }
    case 1302: return TakeProperty(row);
    default: return; // signs, lights, traffic flows, vehicles and what later editions add
    }
}

/// Where the airport is: its datum, the middle of its runways, of its helipads, or the first landmark.
std::optional<LatLon> AirportDraft::Place() const
{
    if (m_datumLat && m_datumLon && std::abs(*m_datumLat) <= 90 && std::abs(*m_datumLon) <= 180)
        return LatLon{*m_datumLat, *m_datumLon};
    std::vector<LatLon> places;
    for (const RunwayRecord& runway : m_airport.Runways)
        places.push_back({runway.CenterLat, runway.CenterLon});
    if (places.empty()) {
        for (const ParkingRecord& helipad : m_helipads)
            places.push_back({helipad.Lat, helipad.Lon});
    }
    if (!places.empty())
        return MeanPlace(places);
    return m_viewpoint ? m_viewpoint : m_landmark;
}

std::optional<AirportRecord> AirportDraft::Finish(ImportLog& log)
{
    const std::optional<LatLon> place = Place();
    m_pavementPointsLeftOut = m_ground.Finish(m_airport, log);
    if (!place)
        return std::nullopt;
    m_airport.Icao = Icao();
    m_airport.Lat = place->Lat;
    m_airport.Lon = place->Lon;
    std::move(m_helipads.begin(), m_helipads.end(), std::back_inserter(m_airport.Parkings));
    return std::move(m_airport);
}
} // namespace corvane
