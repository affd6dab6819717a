#include "demo/RadioPlan.h"

#include <gtest/gtest.h>

#include <set>

namespace corvane {
static AirportSource AirportAt(const char* icao, double lat, double lon, bool large)
{
    AirportSource airport;
    airport.Icao = icao;
    airport.Position = {lat, lon};
    airport.Large = large;
    return airport;
}

TEST(RadioPlan, HashesAsTheNavaidTableDoes)
{
    EXPECT_EQ(TextHash(""), 0);
    EXPECT_EQ(TextHash("A"), 65);
    EXPECT_EQ(TextHash("AB"), 31 * 65 + 66);
    EXPECT_EQ(TextHash("ZZZZ"), ((90 * 31 + 90) * 31 + 90) * 31 + 90 - 2 * 1000003); // 2,766,090 reduced
}

TEST(RadioPlan, KnownFrequenciesAreKeptAndNeighboursDiffer)
{
    std::vector<AirportSource> airports;
    for (const char* const icao : {"AAAA", "AAAB", "AAAC", "BAAA"})
        airports.push_back(AirportAt(icao, 47, 8, true));
    airports[0].TowerMhz = 131.1;
    airports.push_back(AirportAt("CAAA", 47, 8, false));
    const std::vector<AirportRadio> plans = PlanRadio(airports);
    EXPECT_EQ(plans[0].Tower, 131100);
    std::set<std::int32_t> towers;
    std::set<std::int32_t> grounds;
    for (const AirportRadio& plan : plans) {
        towers.insert(plan.Tower);
        grounds.insert(plan.Ground);
        EXPECT_EQ(plan.Ground % 25, 0);
    }
    EXPECT_EQ(towers.size(), 5U);
    EXPECT_EQ(grounds.size(), 5U);
    EXPECT_GT(plans[3].Departure, 0);
    EXPECT_EQ(plans[4].Clearance, 0);
    EXPECT_EQ(plans[4].Approach, 0);
    EXPECT_EQ(plans[4].Departure, 0);
}

TEST(RadioPlan, FarAirportsMayShareAChannelAcrossTheDateLineNeighboursMayNot)
{
    std::vector<AirportSource> airports{AirportAt("AAAA", 0, 179.9, false), AirportAt("AAAA", 0, -179.9, false),
                                        AirportAt("AAAA", 0, 0, false)};
    const std::vector<AirportRadio> plans = PlanRadio(airports);
    EXPECT_NE(plans[0].Tower, plans[1].Tower);
    EXPECT_EQ(plans[0].Tower, plans[2].Tower);
}

struct IlsCase {
    const char* Name;
    bool Large;
    bool Scheduled;
    int LengthFt;
    bool First;
    bool Far;
};
class IlsRule : public testing::TestWithParam<IlsCase> {};
TEST_P(IlsRule, GivesTheEnds)
{
    AirportSource airport = AirportAt("AAAA", 0, 0, GetParam().Large);
    airport.Scheduled = GetParam().Scheduled;
    airport.Runways.resize(2);
    airport.Runways[0].LengthFt = GetParam().LengthFt;
    airport.Runways[1].LengthFt = 1000;
    const IlsEnds ends = IlsEndsOf(airport, 0);
    EXPECT_EQ(ends.First, GetParam().First);
    EXPECT_EQ(ends.Far, GetParam().Far);
    EXPECT_FALSE(IlsEndsOf(airport, 1).First);
    const AirportRadio radio = PlanRadio(std::span(&airport, 1)).front();
    EXPECT_EQ(radio.FirstEndIls[0] > 0, GetParam().First);
    EXPECT_EQ(radio.FarEndIls[0] > 0, GetParam().Far);
    if (GetParam().First) {
        EXPECT_EQ(radio.FirstEndIls[0] / 100 % 2, 1); // an odd tenth of a megahertz
    }
}

INSTANTIATE_TEST_SUITE_P(Airports, IlsRule,
                         testing::Values(IlsCase{"LargeLong", true, true, 7000, true, true},
                                         IlsCase{"LargeMiddling", true, true, 6999, true, false},
                                         IlsCase{"LargeShort", true, true, 4999, false, false},
                                         IlsCase{"MediumScheduled", false, true, 6500, true, false},
                                         IlsCase{"MediumShort", false, true, 6499, false, false},
                                         IlsCase{"MediumUnscheduled", false, false, 9000, false, false}),
                         [](const auto& row) { return std::string(row.param.Name); });
} // namespace corvane
