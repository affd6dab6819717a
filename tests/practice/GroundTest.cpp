#include "practice/GroundTraffic.h"
#include "practice/Pilot.h"
#include "practice/TaxiRoute.h"
#include "tests/practice/PracticeWorld.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <set>

namespace corvane {
namespace {
const LatLon Field{47.45, -122.31};

/// One runway 18/36 with a parallel taxiway 0.1 nm east of it, joined at both ends and in the middle, and two stands; a
/// path to nowhere besides.
AirportRecord Airfield()
{
    AirportRecord airport = test::MakeAirport("Field", "KFLD", Field, 100);
    airport.Runways.push_back(test::MakeRunway("18", "36", Field, 180, 9000, 100));
    const double halfNm = 9000 / FeetPerNm / 2;
    const auto point = [&](double northNm, double eastNm) {
        const LatLon at = Along(Along(Field, 0, northNm), 90, eastNm);
        airport.TaxiPoints.push_back({.Kind = 1, .Lat = at.Lat, .Lon = at.Lon});
    };
    for (const double north : {halfNm, 0.0, -halfNm}) {
        point(north, 0);
        point(north, 0.1);
    }
    for (const double north : {0.0, 0.05, -0.05}) {
        const LatLon at = Along(Along(Field, 0, north), 90, 0.2);
        airport.Parkings.push_back({.Name = "G", .Lat = at.Lat, .Lon = at.Lon, .RadiusFt = 60});
    }
    const auto path = [&](int kind, int from, int to, const char* name = "") {
        airport.TaxiPaths.push_back({.Kind = kind, .StartPoint = from, .EndPoint = to, .Name = name});
    };
    path(0, 0, 1, "N1");
    path(0, 2, 3, "M");
    path(0, 4, 5, "S1");
    path(0, 1, 3, "A");
    path(0, 3, 5, "a ");
    path(1, 0, 2);
    path(1, 2, 4);
    path(2, 3, 0);
    path(2, 3, 1);
    path(2, 3, 2);
    path(0, 3, 999);
    path(2, -1, 7);
    return airport;
}

class Ground : public testing::Test {
protected:
    Pilot Make(std::size_t seed, bool asks)
    {
        PracticeRandom random(seed);
        PilotStart start;
        start.Airport = &Scene.Airports().front();
        start.AsksFirst = asks;
        return {Scene, *Grid, AircraftKind::Airliner, start, random};
    }
    /// Miles from the nearest taxiway or runway.
    static double AsideNm(const LatLon& at)
    {
        const double eastNm = -OffsetFromLine(Field, 0, at).LeftNm;
        const double northNm = -OffsetFromLine(Field, 0, at).OutNm;
        const double halfNm = 9000 / FeetPerNm / 2;
        double nm = std::min({std::abs(eastNm), std::abs(eastNm - 0.1)});
        if (eastNm < 0.1)
            for (const double link : {halfNm, 0.0, -halfNm})
                nm = std::min(nm, std::abs(northNm - link));
        return eastNm > 0.1 ? 0 : nm; // the stands' own ways
    }

    std::vector<AirportRecord> Records{Airfield()};
    PracticeScene Scene{Records, {}, {}, Field};
    std::unique_ptr<MagVarGrid> Grid = std::make_unique<MagVarGrid>();
    PracticeRandom Random{1};
};

TEST_F(Ground, PilotsTaxiOnTheTaxiwaysAndStopBeforeTheRunway)
{
    Pilot pilot = Make(3, true);
    pilot.Obey(ParseInstructions("taxi to runway 18").Instructions);
    for (int i = 0; i < 600 && pilot.Request().empty(); ++i) {
        pilot.Step(Random);
        EXPECT_LT(AsideNm(pilot.State().Position), 0.015) << i;
    }
    EXPECT_THAT(pilot.Request(), testing::HasSubstr("ready for departure"));
    EXPECT_NEAR(OffsetFromLine(Field, 0, pilot.State().Position).LeftNm, -0.04, 0.02);
    pilot.Obey(ParseInstructions("cleared for take-off").Instructions);
    for (int i = 0; i < 120; ++i)
        pilot.Step(Random);
    EXPECT_EQ(pilot.Phase(), PilotPhase::Airborne);
}

TEST_F(Ground, RoutesInLeaveTheRunwayAhead)
{
    const PracticeAirport& airport = Scene.Airports().front();
    const PracticeRunway& runway = *airport.FindRunway("18");
    const auto route = RouteToStand(airport, runway, Along(runway.Threshold, 180, 0.5), airport.Stand(0));
    ASSERT_EQ(route.size(), 4U) << "the middle exit, the taxiway, the stand";
    EXPECT_LT(RangeNm(route.front(), Field), 0.001);
    EXPECT_LT(RangeNm(route.back(), airport.Stand(0)), 0.001);
    const auto late = RouteToStand(airport, runway, Along(runway.Threshold, 180, 0.8), airport.Stand(0));
    EXPECT_LT(RangeNm(late.front(), runway.FarEnd), 0.001) << "past it: the end";
}

struct ViaCase {
    const char* Name;
    const char* Told;
    const char* Answers; ///< its beginning
    double OverNorthNm;  ///< of the taxiway's middle: a place that it taxies over; only where it does
    double OverEastNm;
};
class NamedTaxiways : public Ground, public testing::WithParamInterface<ViaCase> {};

TEST_P(NamedTaxiways, AreObeyedOrRefusedWithTheReason)
{
    Pilot pilot = Make(3, true);
    const std::string answer = pilot.Obey(ParseInstructions(GetParam().Told).Instructions);
    EXPECT_THAT(answer, testing::StartsWith(GetParam().Answers));
    const bool refused = answer.starts_with("unable");
    const LatLon over = Along(Along(Field, 0, GetParam().OverNorthNm), 90, GetParam().OverEastNm);
    double nearestNm = 9;
    for (int i = 0; i < 900 && !(refused && i > 60); ++i) {
        pilot.Step(Random);
        nearestNm = std::min(nearestNm, RangeNm(pilot.State().Position, over));
    }
    EXPECT_EQ(pilot.Phase() == PilotPhase::Parked, refused) << "what is refused is not done";
    EXPECT_TRUE(refused || nearestNm < 0.01) << nearestNm;
}

INSTANTIATE_TEST_SUITE_P(
    Practice, NamedTaxiways,
    testing::Values(ViaCase{"AsTheShortest", "taxi to runway 18 via A", "taxi runway 18 via A", 0.5, 0.1},
                    ViaCase{"ToTheEntry", "taxi to runway 18 via A N1", "taxi runway 18 via A N1", 0.5, 0.1},
                    ViaCase{"TheOtherWay", "taxi to runway 36 via A", "taxi runway 36 via A", -0.5, 0.1},
                    ViaCase{"OverTheMiddle", "taxi to runway 18 via M", "unable, that way does not lead", 0, 0},
                    ViaCase{"ThereAndBack", "taxi to runway 18 via S1 A", "unable, that way does not lead", 0, 0},
                    ViaCase{"Unknown", "taxi to runway 18 via Q", "unable, there is no taxiway Q at KFLD", 0, 0}),
    [](const auto& row) { return std::string(row.param.Name); });

TEST_F(Ground, NobodyIsGivenAStandThatIsTakenOrAimedAt)
{
    const PracticeAirport& airport = Scene.Airports().front();
    FlightState rolling;
    rolling.OnGround = true;
    rolling.Position = Along(Field, 90, 0.1);
    GroundTraffic traffic;
    traffic.Add({.Position = airport.Stand(0), .OnGround = true}, true, 7);
    traffic.Add(rolling, false, 8, airport.Stand(1));
    for (std::size_t seed = 1; seed < 20; ++seed) {
        Pilot pilot = Make(seed, false);
        pilot.StandApart(GroundView(traffic, GroundTraffic::Nobody));
        EXPECT_EQ(pilot.State().Position, airport.Stand(2)) << seed;
    }
}

TEST_F(Ground, TwoKeepApartAndUseTheRunwayOneAfterTheOther)
{
    std::vector<Pilot> pilots;
    for (std::size_t seed = 1; pilots.size() < 3; ++seed) // each on a stand of its own
        if (Pilot pilot = Make(seed, false); std::none_of(pilots.begin(), pilots.end(), [&](const Pilot& other) {
                return other.State().Position == pilot.State().Position;
            }))
            pilots.push_back(std::move(pilot));
    int together = 0;
    std::set<std::size_t> departed;
    for (int second = 0; second < 1200; ++second) {
        GroundTraffic traffic;
        for (std::size_t i = 0; i < pilots.size(); ++i)
            traffic.Add(pilots[i].State(), pilots[i].Phase() == PilotPhase::Parked, i);
        int rolling = 0;
        for (std::size_t i = 0; i < pilots.size(); ++i) {
            pilots[i].Step(Random, GroundView(traffic, i));
            if (pilots[i].Phase() == PilotPhase::Airborne)
                departed.insert(i);
            rolling += pilots[i].Phase() == PilotPhase::TakeOff ? 1 : 0;
            for (std::size_t j = 0; j < i; ++j)
                if (pilots[i].Phase() == PilotPhase::TaxiOut && pilots[j].Phase() == PilotPhase::TaxiOut)
                    together += RangeNm(pilots[i].State().Position, pilots[j].State().Position) < 0.01 ? 1 : 0;
        }
        EXPECT_LE(rolling, 1) << second;
    }
    EXPECT_EQ(departed.size(), 3U);
    EXPECT_EQ(together, 0);
}
} // namespace
} // namespace corvane
