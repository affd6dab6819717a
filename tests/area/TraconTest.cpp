#include "area/Tracon.h"

#include "tests/area/SmallWorld.h"

#include <gtest/gtest.h>

#include <limits>

namespace corvane {
namespace {
struct TraconCase {
    const char* Name;
    const char *ApproachName, *ApproachFreq, *DepartureName, *DepartureFreq;
    const char *ComName, *Frequency; // none where there is no TRACON
};
class Tracons : public testing::TestWithParam<TraconCase> {};
} // namespace

TEST_P(Tracons, AreServedByApproachBeforeDeparture)
{
    const TraconCase& c = GetParam();
    AirportRecord airport = MakeAirport("KSEA", 47.5, -122.25);
    airport.ApproachName = c.ApproachName;
    airport.ApproachFreq = c.ApproachFreq;
    airport.DepartureName = c.DepartureName;
    airport.DepartureFreq = c.DepartureFreq;
    const std::optional<AirspaceRecord> tracon = MakeTracon(airport);
    ASSERT_EQ(tracon.has_value(), c.ComName != nullptr);
    if (!tracon)
        return;
    EXPECT_EQ(tracon->ComName, c.ComName);
    EXPECT_EQ(tracon->Frequency, c.Frequency);
}

INSTANTIATE_TEST_SUITE_P(Tracon, Tracons,
                         testing::Values(TraconCase{"Neither", "", "", "", "", nullptr, nullptr},
                                         TraconCase{"NamesAlone", "APP", "", "DEP", "", nullptr, nullptr},
                                         TraconCase{"Both", "APP", "119.2", "DEP", "120.4", "APP", "119.2 Mhz"},
                                         TraconCase{"DepartureAlone", "", "", "DEP", "120.4", "DEP", "120.4 Mhz"},
                                         TraconCase{"ApproachNameWins", "APP", "", "DEP", "120.4", "APP", " Mhz"},
                                         TraconCase{"ApproachWithoutName", "", "119.2", "DEP", "120.4", "",
                                                    "119.2 Mhz"}),
                         [](const auto& row) { return std::string(row.param.Name); });

TEST(Tracon, IsACircleOf20MilesUpTo10000FeetAboveTheField)
{
    AirportRecord airport = MakeAirport("KSEA", 47.5, -122.25);
    airport.ApproachFreq = "119.2";
    AirspaceRecord expected;
    expected.Kind = "TRACON (Departure/Approach)";
    expected.Frequency = "119.2 Mhz";
    expected.CenterLat = 47.5;
    expected.CenterLon = -122.25;
    expected.Points = {{BoundaryKind::ArcCenter, 47.5, -122.25, 0}, {BoundaryKind::Circle, 0, 0, 20}};
    expected.Floor = 433;
    expected.Ceiling = 10433;
    EXPECT_EQ(MakeTracon(airport), expected);

    airport.ElevationFt = std::numeric_limits<std::int32_t>::max(); // from a damaged file
    EXPECT_EQ(MakeTracon(airport)->Ceiling, std::numeric_limits<std::int32_t>::max());
}
} // namespace corvane
