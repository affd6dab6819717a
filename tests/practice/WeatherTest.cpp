#include "practice/Pilot.h"
#include "tests/practice/PracticeWorld.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

// Wind, the runways in use, and fuel.

namespace corvane {
namespace {
using testing::HasSubstr;

class Weather : public testing::Test {
protected:
    Pilot Arrive(AircraftKind kind, double bearing, std::optional<double> fuelMin = {})
    {
        PilotStart start;
        start.Destination = Scene.FindAirport("KBIG");
        start.Position = Along(start.Destination->Position, bearing, 30);
        start.AltitudeFt = 6000;
        start.FuelMin = fuelMin;
        return {Scene, *Grid, kind, start, Random};
    }

    PracticeScene Scene = test::MakeScene();
    std::unique_ptr<MagVarGrid> Grid = std::make_unique<MagVarGrid>();
    PracticeRandom Random{3};
};

TEST_F(Weather, WindDriftsWhoFliesAHeadingAndNotWhoFliesToAPlace)
{
    Scene.SetWind({.FromDeg = 270, .SpeedKt = 30});
    Pilot pilot = Arrive(AircraftKind::TwinTurboprop, 180);
    const LatLon from = pilot.State().Position;
    pilot.Obey(ParseInstructions("heading 360, speed 180").Instructions);
    for (int i = 0; i < 90; ++i)
        pilot.Step(Random);
    const LatLon before = pilot.State().Position;
    for (int i = 0; i < 60; ++i)
        pilot.Step(Random);
    EXPECT_EQ(pilot.Report().TrueHeading % 360, 0);
    EXPECT_NEAR(RangeNm(before, pilot.State().Position) * 60, 182.5, 0.5) << "a crosswind adds little";
    EXPECT_NEAR(pilot.Report().SpeedKt, 182.5, 0.5);
    EXPECT_NEAR(TurnTo(0, CourseTo(before, pilot.State().Position)), 9.5, 0.2) << "atan(30 / 180), to the east";

    pilot.Obey(ParseInstructions("direct KBIG").Instructions);
    for (int i = 0; i < 60; ++i)
        pilot.Step(Random);
    const LatLon field = Scene.FindAirport("KBIG")->Position;
    const double course = CourseTo(pilot.State().Position, field);
    const LatLon here = pilot.State().Position;
    for (int i = 0; i < 30; ++i)
        pilot.Step(Random);
    EXPECT_NEAR(TurnTo(course, CourseTo(here, pilot.State().Position)), 0, 0.3);
    EXPECT_GT(std::abs(TurnTo(course, pilot.State().HeadingDeg)), 5) << "into the wind";
    EXPECT_GT(RangeNm(from, here), 1);
}

TEST_F(Weather, EveryClassLandsOnTheRunwayIntoTheWind)
{
    for (const double fromDeg : {160.0, 340.0, 60.0, 250.0})
        for (int kind = 0; kind < AircraftKindCount; ++kind) {
            Scene.SetWind({.FromDeg = fromDeg, .SpeedKt = 25});
            Pilot pilot = Arrive(static_cast<AircraftKind>(kind), 75);
            const std::string where = "kind " + std::to_string(kind) + " wind " + std::to_string(fromDeg);
            for (int i = 0; i < 3600 && pilot.Phase() == PilotPhase::Airborne; ++i)
                pilot.Step(Random);
            ASSERT_EQ(pilot.Phase(), PilotPhase::LandingRoll) << where;
            const PracticeRunway* runway = Scene.FindAirport("KBIG")->RunwayInUse(pilot.Aircraft().RunwayFt);
            EXPECT_GT(Scene.Wind().HeadKt(runway->Course), -5) << where;
            EXPECT_NEAR(TurnTo(runway->Course, pilot.State().HeadingDeg), 0, 2) << where;
            EXPECT_LT(std::abs(OffsetFromLine(runway->Threshold, runway->Course, pilot.State().Position).LeftNm), 0.05)
                << where;
        }
}

TEST_F(Weather, RunwaysFollowTheWindOrWhatIsGiven)
{
    const PracticeAirport& big = *Scene.FindAirport("KBIG");
    EXPECT_EQ(big.RunwayInUse(5000)->Name, "16R");
    EXPECT_EQ(big.TakeOffRunway(5000), big.RunwayInUse(5000)) << "calm: as ever";
    Scene.SetWind({.FromDeg = 330, .SpeedKt = 10});
    EXPECT_EQ(big.RunwayInUse(5000)->Name, "34L");
    EXPECT_EQ(big.TakeOffRunway(5000)->Name, "34R") << "clear of the landings";
    EXPECT_EQ(big.TakeOffRunway(10000)->Name, "34L") << "the other is too short";
    Scene.UseRunways({"99", "16L"}, {"16R"});
    EXPECT_EQ(big.RunwayInUse(5000)->Name, "16L");
    EXPECT_EQ(big.RunwayInUse(10000)->Name, "34L") << "none of those given is long enough";
    EXPECT_EQ(big.TakeOffRunway(5000)->Name, "16R");
}

TEST_F(Weather, FuelEnds)
{
    Pilot pilot = Arrive(AircraftKind::PistonSingle, 0, 32);
    pilot.Obey(ParseInstructions("hold present position, maintain 3000").Instructions);
    EXPECT_THAT(pilot.Obey(ParseInstructions("say fuel").Instructions), HasSubstr("32 minutes"));
    std::string calls;
    int seconds = 0;
    for (; seconds < 3600 && !pilot.IsDown(); ++seconds) {
        pilot.Step(Random);
        if (const auto call = pilot.TakeRadioCall())
            calls += *call + '\n';
    }
    EXPECT_THAT(calls, HasSubstr("minimum fuel, 30 minutes\nmayday fuel, 10 minutes"));
    EXPECT_THAT(calls, HasSubstr("out of fuel"));
    EXPECT_GT(seconds, 32 * 60);
    EXPECT_LT(seconds, 40 * 60);
}

TEST_F(Weather, AMissedApproachWaitsForAWordOnlyWhereOthersDoToo)
{
    PilotStart start;
    start.Destination = Scene.FindAirport("KBIG");
    start.Position = Along(start.Destination->Position, 343, 12);
    start.AltitudeFt = 3000;
    start.AsksFirst = true;
    Pilot pilot(Scene, *Grid, AircraftKind::Airliner, start, Random);
    pilot.Obey(ParseInstructions("cleared approach 16R").Instructions);
    for (int i = 0; i < 150; ++i)
        pilot.Step(Random);
    pilot.Obey(ParseInstructions("go around").Instructions);
    std::string calls;
    for (int i = 0; i < 1200; ++i) {
        pilot.Step(Random);
        if (const auto call = pilot.TakeRadioCall())
            calls += *call + '\n';
    }
    EXPECT_EQ(pilot.Phase(), PilotPhase::Airborne);
    EXPECT_NEAR(pilot.State().AltitudeFt, 3400, 20);
    EXPECT_THAT(calls, HasSubstr("holding, request approach"));
}
} // namespace
} // namespace corvane
