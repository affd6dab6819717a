#include "area/AirportListModel.h"

#include "core/NumberText.h"

#include <array>

namespace corvane {
std::string AirportEntryText(const AirportRecord& airport, AirportListMode mode)
{
    if (mode == AirportListMode::Name)
        return airport.Name + " - " + airport.Icao;
    return airport.Icao + " - " + airport.Name;
}

std::vector<std::string> AirportEntries(std::span<const AirportRecord> airports, AirportListMode mode)
{
    std::vector<std::string> entries;
    entries.reserve(airports.size());
    for (const AirportRecord& airport : airports)
        entries.push_back(AirportEntryText(airport, mode));
    return entries;
}

std::vector<const AirportRecord*> FindAirports(std::span<const AirportRecord> airports, std::string_view entry,
                                               AirportListMode mode)
{
    std::vector<const AirportRecord*> found;
    for (const AirportRecord& airport : airports) {
        if (AirportEntryText(airport, mode) == entry)
            found.push_back(&airport);
    }
    return found;
}

std::string AirportInfoText(const AirportRecord& airport)
{
    const std::array<std::string, 13> lines = {"Airport Name: " + airport.Name,
                                               "ICAO_ID: " + airport.Icao,
                                               "Altitude: " + NumberText(airport.ElevationFt) + " ft",
                                               "Clearance Name: " + airport.ClearanceName,
                                               "Clearance Frequency: " + airport.ClearanceFreq,
                                               "Ground Name: " + airport.GroundName,
                                               "Ground Frequency: " + airport.GroundFreq,
                                               "Tower Name: " + airport.TowerName,
                                               "Tower Frequency: " + airport.TowerFreq,
                                               "Departure Name: " + airport.DepartureName,
                                               "Departure Frequency: " + airport.DepartureFreq,
                                               "Approach Name: " + airport.ApproachName,
                                               "Approach Frequency: " + airport.ApproachFreq};
    std::string text;
    for (const std::string& line : lines) {
        if (!text.empty())
            text += "\r\n";
        text += line;
    }
    return text;
}
} // namespace corvane
