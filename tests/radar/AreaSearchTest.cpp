#include "radar/AreaSearch.h"

#include <gmock/gmock.h>

namespace corvane {
namespace {
using testing::ElementsAre;

class AreaSearchTest : public testing::Test {
protected:
    AreaSearchTest()
    {
        const auto airport = [&](const char* icao, const char* name) {
            AirportRecord& added = m_area.AreaAirports.emplace_back();
            added.Icao = icao;
            added.Name = name;
        };
        airport("KSEA", "Seattle-Tacoma");
        airport("S36", "Crest Airpark");
        airport("KBFI", "Boeing Field, Seattle");
        m_area.AreaVors.push_back({"Seattle", "SEA", 47.4, -122.3, "116.80", 130});
        m_area.AreaNdbs.push_back({"", "S", 47, -122, "300", 15});
        AirspaceRecord& center = m_area.AreaAirspaces.emplace_back();
        center.ComName = "SEATTLE CENTER";
        center.Kind = "ARTCC/FIR (HIGH)";
        m_pilots.Append("Seaplane1", 3, PilotRole);
        m_pilots.Append("Seawatch", 4, ObserverRole);
        m_pilots.Append("Seaborne", 5, PilotRole); // not heard from yet
        m_pilots.Players()[0].Latitude = 48;
    }
    std::vector<std::string> Find(std::string_view part)
    {
        std::vector<std::string> labels;
        for (const FoundPlace& found : AreaSearch(m_area).Find(part, m_pilots.Players()))
            labels.push_back(found.Label);
        return labels;
    }

    AreaModel m_area;
    PlayerTable m_pilots;
};

TEST_F(AreaSearchTest, FindsByAPartTheBestFirst)
{
    EXPECT_THAT(Find("sea"),
                ElementsAre("VOR SEA - Seattle", "Pilot Seaplane1", "Airport KSEA - Seattle-Tacoma",
                            "Airspace SEATTLE CENTER - ARTCC/FIR (HIGH)", "Airport KBFI - Boeing Field, Seattle"));
    EXPECT_THAT(Find("S"), testing::Contains("NDB S"));
    EXPECT_EQ(Find("S").front(), "NDB S") << "the code itself";
    EXPECT_THAT(Find("airpark"), ElementsAre("Airport S36 - Crest Airpark"));
    EXPECT_THAT(Find("nowhere"), testing::IsEmpty());
    EXPECT_THAT(Find(""), testing::IsEmpty());
    EXPECT_EQ(AreaSearch(m_area).Find("sea", {}).front().Place, (LatLon{47.4, -122.3}));
}

TEST_F(AreaSearchTest, TellsNoMoreThanTheLimitAndPrefersTheBest)
{
    for (int i = 0; i < 1000; ++i)
        m_area.AreaNdbs.push_back({"Over the sea", "X" + std::to_string(i), 1, 1, "", 1});
    const auto found = Find("sea");
    EXPECT_EQ(found.size(), AreaSearch::Limit);
    EXPECT_EQ(found.front(), "VOR SEA - Seattle");
}
} // namespace
} // namespace corvane
