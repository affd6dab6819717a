#include "radar/AreaSearch.h"

#include "core/Text.h"

#include <array>
#include <utility>

namespace corvane {
AreaSearch::AreaSearch(const AreaModel& area)
{
    for (const AirportRecord& airport : area.AreaAirports)
        Add("Airport ", airport.Icao, airport.Name, {airport.Lat, airport.Lon});
    for (const NavaidRecord& vor : area.AreaVors)
        Add("VOR ", vor.Ident, vor.Name, {vor.Lat, vor.Lon});
    for (const NavaidRecord& ndb : area.AreaNdbs)
        Add("NDB ", ndb.Ident, ndb.Name, {ndb.Lat, ndb.Lon});
    for (const AirspaceRecord& airspace : area.AreaAirspaces)
        Add("Airspace ", airspace.ComName.empty() ? airspace.Name : airspace.ComName, airspace.Kind,
            {airspace.CenterLat, airspace.CenterLon});
}

void AreaSearch::Add(std::string_view kind, std::string_view code, std::string_view name, LatLon place)
{
    std::string label(kind);
    label += code;
    if (!name.empty())
        label.append(" - ").append(name);
    m_entries.push_back({ToLower(code), ToLower(name), {std::move(label), place, std::nullopt}});
}

namespace {
/// The places found so far, by how well they fit.
class Ranks {
public:
    explicit Ranks(std::string_view part) : m_part(part) {}

    void Consider(const std::string& code, const std::string& name, const FoundPlace& found)
    {
        const std::size_t inCode = code.find(m_part);
        const std::size_t inName = name.find(m_part);
        if (inCode == std::string::npos && inName == std::string::npos)
            return;
        auto& rank = m_ranks.at(code == m_part ? 0 : inCode == 0 || inName == 0 ? 1 : 2);
        if (rank.size() < AreaSearch::Limit)
            rank.push_back(found);
    }
    [[nodiscard]] std::vector<FoundPlace> Best() const
    {
        std::vector<FoundPlace> best;
        for (const auto& rank : m_ranks)
            for (const FoundPlace& found : rank)
                if (best.size() < AreaSearch::Limit)
                    best.push_back(found);
        return best;
    }

private:
    std::string_view m_part;
    std::array<std::vector<FoundPlace>, 3> m_ranks;
};
} // namespace

std::vector<FoundPlace> AreaSearch::Find(std::string_view part, std::span<const PlayerRecord> pilots) const
{
    if (part.empty())
        return {};
    const std::string wanted = ToLower(part);
    Ranks ranks(wanted);
    for (const PlayerRecord& pilot : pilots)
        if (pilot.Role == PilotRole && (pilot.Latitude != 0 || pilot.Longitude != 0))
            ranks.Consider(
                ToLower(pilot.Name), {},
                {"Pilot " + pilot.Name, {pilot.Latitude, pilot.Longitude}, MemberKey{pilot.PlayerId, pilot.Name}});
    for (const Entry& entry : m_entries)
        ranks.Consider(entry.Code, entry.Name, entry.Found);
    return ranks.Best();
}
} // namespace corvane
