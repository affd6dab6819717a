#include "cli/RecordJson.h"

#include "cli/JsonMembers.h"
#include "core/NumberText.h"
#include "core/Text.h"

#include <string>

namespace corvane {
Json TextJson(std::string_view text)
{
    return Windows1252ToUtf8(text);
}

static void AddList(Json& object, const char* name, Json list)
{
    const std::size_t count = list.size();
    const std::string countName = std::string(name, std::string_view(name).size() - 1) + "Count";
    object[name] = std::move(list);
    object[countName] = count;
}

static Json ToJson(const RunwayRecord& runway)
{
    return {{"Designation", TextJson(runway.Designation)},
            {"ReciprocalDesignation", TextJson(runway.ReciprocalDesignation)},
            {"CenterLat", runway.CenterLat},
            {"CenterLon", runway.CenterLon},
            {"End1Lat", runway.End1Lat},
            {"End1Lon", runway.End1Lon},
            {"End2Lat", runway.End2Lat},
            {"End2Lon", runway.End2Lon},
            {"ElevationFt", runway.ElevationFt},
            {"MagHeading", runway.MagHeading},
            {"ReciprocalMagHeading", runway.ReciprocalMagHeading},
            {"LengthFt", runway.LengthFt},
            {"WidthFt", runway.WidthFt}};
}

static Json ToJson(const IlsRecord& ils)
{
    return {{"Ident", TextJson(ils.Ident)},
            {"Lat", ils.Lat},
            {"Lon", ils.Lon},
            {"MagHeading", ils.MagHeading},
            {"Frequency", TextJson(ils.Frequency)}};
}

static Json ToJson(const TaxiPoint& point)
{
    return {{"Kind", point.Kind}, {"Lat", point.Lat}, {"Lon", point.Lon}};
}

static Json ToJson(const ParkingRecord& parking)
{
    return {
        {"Name", TextJson(parking.Name)}, {"Lat", parking.Lat}, {"Lon", parking.Lon}, {"RadiusFt", parking.RadiusFt}};
}

static Json ToJson(const TaxiPath& path)
{
    return {{"Kind", path.Kind},
            {"StartPoint", path.StartPoint},
            {"EndPoint", path.EndPoint},
            {"Name", TextJson(path.Name)}};
}

static Json ToJson(const BoundaryPoint& point)
{
    return {
        {"Kind", static_cast<unsigned>(point.Kind)}, {"Lat", point.Lat}, {"Lon", point.Lon}, {"Radius", point.Radius}};
}

template <class Element> static Json ElementArray(const std::vector<Element>& elements)
{
    Json array = Json::array();
    for (const Element& element : elements)
        array.push_back(ToJson(element));
    return array;
}

Json ToJson(const SettingsRecord& settings)
{
    return {{"VersionText", TextJson(settings.VersionText)},
            {"RecordMark", settings.RecordMark},
            {"FsVersion", settings.FsVersion},
            {"FsPath", TextJson(settings.FsPath)},
            {"AirportCount", settings.AirportCount},
            {"AirspaceCount", settings.AirspaceCount},
            {"VorCount", settings.VorCount},
            {"NdbCount", settings.NdbCount}};
}

Json ToJson(const NavaidRecord& navaid)
{
    return {{"Name", TextJson(navaid.Name)},
            {"Ident", TextJson(navaid.Ident)},
            {"Lat", navaid.Lat},
            {"Lon", navaid.Lon},
            {"Frequency", TextJson(navaid.Frequency)},
            {"RangeNm", navaid.RangeNm}};
}

Json ToJson(const AirportRecord& airport)
{
    Json object = {{"Name", TextJson(airport.Name)},
                   {"Icao", TextJson(airport.Icao)},
                   {"NextPos", airport.NextPos},
                   {"Lat", airport.Lat},
                   {"Lon", airport.Lon},
                   {"ElevationFt", airport.ElevationFt},
                   {"ClearanceFreq", TextJson(airport.ClearanceFreq)},
                   {"ClearanceName", TextJson(airport.ClearanceName)},
                   {"GroundFreq", TextJson(airport.GroundFreq)},
                   {"GroundName", TextJson(airport.GroundName)},
                   {"TowerFreq", TextJson(airport.TowerFreq)},
                   {"TowerName", TextJson(airport.TowerName)},
                   {"DepartureFreq", TextJson(airport.DepartureFreq)},
                   {"DepartureName", TextJson(airport.DepartureName)},
                   {"ApproachFreq", TextJson(airport.ApproachFreq)},
                   {"ApproachName", TextJson(airport.ApproachName)}};
    AddList(object, "Runways", ElementArray(airport.Runways));
    object["Ils"] = ElementArray(airport.Ils);
    object["IlsCount"] = airport.Ils.size();
    AddList(object, "TaxiPoints", ElementArray(airport.TaxiPoints));
    AddList(object, "Parkings", ElementArray(airport.Parkings));
    AddList(object, "TaxiPaths", ElementArray(airport.TaxiPaths));
    return object;
}

Json ToJson(const AirspaceRecord& airspace)
{
    Json object = {{"ComName", TextJson(airspace.ComName)},
                   {"Kind", TextJson(airspace.Kind)},
                   {"NextPos", airspace.NextPos},
                   {"Name", TextJson(airspace.Name)},
                   {"Frequency", TextJson(airspace.Frequency)},
                   {"CenterLat", airspace.CenterLat},
                   {"CenterLon", airspace.CenterLon},
                   {"North", airspace.North},
                   {"South", airspace.South},
                   {"West", airspace.West},
                   {"East", airspace.East}};
    AddList(object, "Points", ElementArray(airspace.Points));
    object["Floor"] = airspace.Floor;
    object["Ceiling"] = airspace.Ceiling;
    return object;
}

Json ToJson(const PlayerRecord& player)
{
    return {{"Name", TextJson(player.Name)},
            {"PlayerId", player.PlayerId},
            {"Role", TextJson(player.Role)},
            {"Longitude", player.Longitude},
            {"Latitude", player.Latitude},
            {"AltitudeFt", player.AltitudeFt},
            {"MagHeading", player.MagHeading},
            {"GroundSpeedKt", player.GroundSpeedKt},
            {"AircraftType", TextJson(player.AircraftType)},
            {"AircraftTitle", TextJson(player.AircraftTitle)},
            {"FlightRules", player.FlightRules},
            {"DepartureIcao", TextJson(player.DepartureIcao)},
            {"DestinationIcao", TextJson(player.DestinationIcao)},
            {"CruiseAltitude", player.CruiseAltitude},
            {"MinimumAltitudeFt", player.MinimumAltitudeFt}};
}

static std::string TakePlayer(const Json& object, PlayerRecord& player)
{
    if (!object.is_object())
        return "is not an object";
    JsonMembers members(object);
    members.Take("Name", player.Name);
    members.Take("PlayerId", player.PlayerId);
    members.Take("Role", player.Role);
    members.Take("Longitude", player.Longitude);
    members.Take("Latitude", player.Latitude);
    members.Take("AltitudeFt", player.AltitudeFt);
    members.Take("MagHeading", player.MagHeading);
    members.Take("GroundSpeedKt", player.GroundSpeedKt);
    members.Take("AircraftType", player.AircraftType);
    members.Take("AircraftTitle", player.AircraftTitle);
    members.Take("FlightRules", player.FlightRules);
    members.Take("DepartureIcao", player.DepartureIcao);
    members.Take("DestinationIcao", player.DestinationIcao);
    members.Take("CruiseAltitude", player.CruiseAltitude);
    members.Take("MinimumAltitudeFt", player.MinimumAltitudeFt);
    return members.Why();
}

Result<std::vector<PlayerRecord>> PlayersFromText(std::string_view text, std::string_view what)
{
    return PlayersFromJson(Json::parse(text, nullptr, false), what);
}

Result<std::vector<PlayerRecord>> PlayersFromJson(const Json& array, std::string_view what)
{
    if (!array.is_array())
        return Fail(std::string(what), "is not a JSON array of players");
    std::vector<PlayerRecord> players;
    players.reserve(array.size());
    for (const Json& object : array) {
        const std::string why = TakePlayer(object, players.emplace_back());
        if (!why.empty())
            return Fail(std::string(what), "player " + NumberText(std::int64_t(players.size())) + ": " + why);
    }
    return players;
}
} // namespace corvane
