#include "tests/area/SmallWorld.h"

#include "core/RecordCodec.h"

namespace corvane {
static void AddNavaid(Bytes& file, std::int32_t& count, std::string_view ident, double lat, double lon)
{
    NavaidRecord navaid;
    navaid.Name = "Station";
    navaid.Ident = ident;
    navaid.Lat = lat;
    navaid.Lon = lon;
    navaid.Frequency = "113.9";
    EncodeNavaid(file, navaid);
    ++count;
}

static std::unique_ptr<ByteSource> Source(std::string name, const Bytes& bytes)
{
    return std::make_unique<MemorySource>(std::move(name), bytes);
}

void SmallWorld::AddAirport(const AirportRecord& airport)
{
    EncodeAirport(Airports, airport, static_cast<std::int64_t>(Airports.size()) + 1);
    ++Counts.AirportCount;
}

void SmallWorld::AddVor(std::string_view ident, double lat, double lon)
{
    AddNavaid(Vors, Counts.VorCount, ident, lat, lon);
}

void SmallWorld::AddNdb(std::string_view ident, double lat, double lon)
{
    AddNavaid(Ndbs, Counts.NdbCount, ident, lat, lon);
}

void SmallWorld::AddTerrain(double lat, double lon, std::int32_t elevationFt)
{
    ByteWriter out(Terrain);
    out.WriteF64(lat);
    out.WriteF64(lon);
    out.WriteI32(elevationFt);
}

void SmallWorld::AddMapEntry(std::int32_t lat, std::int32_t lon)
{
    ByteWriter out(WorldMap);
    out.WriteI32(lat);
    out.WriteI32(lon);
}

AreaFiles SmallWorld::Files() const
{
    return {Source("airports", Airports), Source("vors", Vors), Source("ndbs", Ndbs), Source("terrain", Terrain),
            Source("map", WorldMap)};
}

AirportRecord MakeAirport(std::string_view icao, double lat, double lon)
{
    AirportRecord airport;
    airport.Name = "Field";
    airport.Icao = icao;
    airport.Lat = lat;
    airport.Lon = lon;
    airport.ElevationFt = 433;
    return airport;
}

AirspaceRecord MakeSector(std::string_view comName, double north, double south, double west, double east)
{
    AirspaceRecord sector;
    sector.ComName = comName;
    sector.Kind = HighSectorKind;
    sector.North = north;
    sector.South = south;
    sector.West = west;
    sector.East = east;
    return sector;
}

std::vector<std::string> Idents(const std::vector<AirportRecord>& airports)
{
    std::vector<std::string> idents;
    for (const AirportRecord& airport : airports)
        idents.push_back(airport.Icao);
    return idents;
}

std::vector<std::string> Idents(const std::vector<NavaidRecord>& navaids)
{
    std::vector<std::string> idents;
    for (const NavaidRecord& navaid : navaids)
        idents.push_back(navaid.Ident);
    return idents;
}

std::vector<std::string> Titles(const std::vector<AirspaceRecord>& airspaces)
{
    std::vector<std::string> titles;
    for (const AirspaceRecord& airspace : airspaces)
        titles.push_back(airspace.Kind + " " + airspace.ComName);
    return titles;
}
} // namespace corvane
