#include "area/AirportListModel.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvane {
using testing::ElementsAre;
using testing::IsEmpty;

static AirportRecord Airport(const char* icao, const char* name)
{
    AirportRecord airport;
    airport.Icao = icao;
    airport.Name = name;
    return airport;
}

TEST(AirportList, ListsInTableOrderInBothModes)
{
    const std::vector<AirportRecord> airports = {Airport("KSEA", "Seattle Tacoma Intl"), Airport("KBFI", "Boeing")};
    EXPECT_THAT(AirportEntries(airports, AirportListMode::Name),
                ElementsAre("Seattle Tacoma Intl - KSEA", "Boeing - KBFI"));
    EXPECT_THAT(AirportEntries(airports, AirportListMode::Identifier),
                ElementsAre("KSEA - Seattle Tacoma Intl", "KBFI - Boeing"));
    EXPECT_THAT(AirportEntries({}, AirportListMode::Name), IsEmpty());
}

TEST(AirportList, FindsEveryAirportWithTheEntryInItsMode)
{
    const std::vector<AirportRecord> airports = {Airport("AAAA", "Field"), Airport("BBBB", "Field"),
                                                 Airport("AAAA", "Field")};
    EXPECT_THAT(FindAirports(airports, "AAAA - Field", AirportListMode::Identifier),
                ElementsAre(&airports[0], &airports[2]));
    EXPECT_THAT(FindAirports(airports, "AAAA - Field", AirportListMode::Name), IsEmpty());
    EXPECT_THAT(FindAirports(airports, "Field - BBBB", AirportListMode::Name), ElementsAre(&airports[1]));
}

TEST(AirportList, DescribesAnAirportWithEveryLabel)
{
    AirportRecord airport = Airport("KSEA", "Seattle Tacoma Intl");
    airport.ElevationFt = 433;
    airport.GroundName = "Seattle Ground";
    airport.GroundFreq = "121.7";
    airport.TowerName = "Seattle Tower";
    airport.TowerFreq = "119.9";
    airport.DepartureFreq = "120.4";
    airport.ApproachName = "Seattle Approach";
    EXPECT_EQ(AirportInfoText(airport), "Airport Name: Seattle Tacoma Intl\r\nICAO_ID: KSEA\r\nAltitude: 433 ft\r\n"
                                        "Clearance Name: \r\nClearance Frequency: \r\n"
                                        "Ground Name: Seattle Ground\r\nGround Frequency: 121.7\r\n"
                                        "Tower Name: Seattle Tower\r\nTower Frequency: 119.9\r\n"
                                        "Departure Name: \r\nDeparture Frequency: 120.4\r\n"
                                        "Approach Name: Seattle Approach\r\nApproach Frequency: ");
}
} // namespace corvane
