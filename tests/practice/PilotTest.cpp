#include "practice/Pilot.h"

#include "practice/Approach.h"
#include "session/WireUnits.h"
#include "tests/practice/PracticeWorld.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <memory>

namespace corvane {
namespace {
using testing::HasSubstr;
using testing::StartsWith;

constexpr std::array<AircraftKind, AircraftKindCount> Kinds{AircraftKind::PistonSingle, AircraftKind::TwinTurboprop,
                                                            AircraftKind::LightJet, AircraftKind::Airliner,
                                                            AircraftKind::Helicopter};

class Pilots : public testing::Test {
protected:
    Pilot Make(AircraftKind kind, Scenario scenario) { return {Scene, *Grid, kind, scenario, Random}; }
    static std::string Tell(Pilot& pilot, const char* line)
    {
        const ParsedLine parsed = ParseInstructions(line);
        return parsed.Understood ? pilot.Obey(parsed.Instructions) : "say again";
    }
    void Fly(Pilot& pilot, int seconds)
    {
        for (int i = 0; i < seconds; ++i)
            pilot.Step(Random);
    }
    int ShownHeading(const Pilot& pilot) const
    {
        const ReportedPosition report = pilot.Report();
        const double lat = LatitudeFromWire(LatitudeToWire(report.Position.Lat));
        const double lon = LongitudeFromWire(LongitudeToWire(report.Position.Lon));
        return MagneticFromTrue(*Grid, HeadingFromPbh(PbhFromHeading(report.TrueHeading)), {lat, lon});
    }

    PracticeScene Scene = test::MakeScene();
    std::unique_ptr<MagVarGrid> Grid = std::make_unique<MagVarGrid>();
    PracticeRandom Random{7};
};

/// What must hold between two seconds of any flight.
void ExpectPlausible(const FlightState& before, const FlightState& after, const AircraftClass& aircraft,
                     const std::string& where)
{
    const double fastest = std::max(before.SpeedKt, after.SpeedKt) / 3600 + 1e-6;
    EXPECT_LE(RangeNm(before.Position, after.Position), fastest) << where << ": jumps";
    EXPECT_LE(std::abs(after.BankDeg), BankLimitDeg + 1e-6) << where;
    EXPECT_LE(after.SpeedKt, aircraft.MaximumKt) << where;
    EXPECT_LE(after.VerticalFpm, aircraft.ClimbFpm + 1e-6) << where;
    EXPECT_GE(after.VerticalFpm, -aircraft.DescentFpm - 1e-6) << where;
    const double turn = std::abs(TurnTo(before.HeadingDeg, after.HeadingDeg));
    EXPECT_LE(turn, after.OnGround ? GroundTurnDegPerS + 1e-6 : TurnRate(after.SpeedKt) + 1e-6) << where;
    EXPECT_LE(std::abs(after.AltitudeFt - before.AltitudeFt),
              std::max(aircraft.ClimbFpm, aircraft.DescentFpm) / 60 + 1e-6)
        << where;
    const double largestChange = after.OnGround ? 8 : aircraft.AccelerationKtPerS;
    EXPECT_LE(std::abs(after.SpeedKt - before.SpeedKt), largestChange + 1e-6) << where;
    if (!after.OnGround && !before.OnGround) {
        EXPECT_GE(after.SpeedKt, std::min(aircraft.FinalKt, aircraft.RotateKt) - 1e-6) << where << ": stalls";
    }
}

TEST_F(Pilots, KeepWithinTheirLimitsInEveryScenario)
{
    int landings = 0;
    for (const AircraftKind kind : Kinds)
        for (const Scenario scenario : {Scenario::Departure, Scenario::Arrival, Scenario::Cruise, Scenario::Pattern}) {
            Pilot pilot = Make(kind, scenario);
            for (int second = 0; second < 3 * 3600; ++second) {
                const FlightState before = pilot.State();
                pilot.Step(Random);
                ExpectPlausible(before, pilot.State(), pilot.Aircraft(),
                                "kind " + std::to_string(static_cast<int>(kind)) + " scenario " +
                                    std::to_string(static_cast<int>(scenario)) + " second " + std::to_string(second) +
                                    " phase " + std::to_string(static_cast<int>(pilot.Phase())));
                ASSERT_FALSE(HasFailure());
            }
            landings += pilot.FlightsDone();
            EXPECT_GE(pilot.FlightsDone(), 1) << static_cast<int>(kind) << ' ' << static_cast<int>(scenario);
        }
    EXPECT_GE(landings, 40);
}

TEST_F(Pilots, LandInTheFirstThirdOnTheCentrelineAndTaxiOff)
{
    for (const AircraftKind kind : Kinds) {
        Pilot pilot = Make(kind, Scenario::Arrival);
        const std::string answer = Tell(pilot, "cleared ILS 16R");
        ASSERT_EQ(answer, "cleared ILS 16R");
        FlightState last = pilot.State();
        int seconds = 0;
        while (pilot.Phase() == PilotPhase::Airborne) {
            last = pilot.State();
            pilot.Step(Random);
            ASSERT_LT(++seconds, 3 * 3600) << static_cast<int>(kind);
        }
        ASSERT_EQ(pilot.Phase(), PilotPhase::LandingRoll);
        const PracticeRunway& runway = *Scene.FindAirport("KBIG")->FindRunway("16R");
        const LineOffset touchdown = OffsetFromLine(runway.Threshold, runway.Course, pilot.State().Position);
        EXPECT_LT(touchdown.OutNm, 0) << "before the threshold";
        EXPECT_GT(touchdown.OutNm, -runway.LengthFt / FeetPerNm / 3);
        EXPECT_LT(std::abs(touchdown.LeftNm) * FeetPerNm, 75); // half the runway's width
        EXPECT_LT(std::abs(TurnTo(runway.Course, last.HeadingDeg)), 1);
        EXPECT_EQ(pilot.State().AltitudeFt, runway.ElevationFt);
        const double exit = 0.05; // clear of the runway, on the way to a stand
        while (std::abs(OffsetFromLine(runway.Threshold, runway.Course, pilot.State().Position).LeftNm) < exit) {
            pilot.Step(Random);
            ASSERT_LT(++seconds, 4 * 3600);
            EXPECT_GT(OffsetFromLine(runway.Threshold, runway.Course, pilot.State().Position).OutNm,
                      -runway.LengthFt / FeetPerNm);
        }
    }
}

TEST_F(Pilots, FlyTheGlidePathOnceEstablished)
{
    Pilot pilot = Make(AircraftKind::Airliner, Scenario::Arrival);
    Tell(pilot, "cleared ILS 16R");
    const PracticeRunway& runway = *Scene.FindAirport("KBIG")->FindRunway("16R");
    int checked = 0;
    for (int second = 0; second < 3 * 3600 && pilot.Phase() == PilotPhase::Airborne; ++second) {
        pilot.Step(Random);
        const LineOffset offset = OffsetFromLine(runway.Threshold, runway.Course, pilot.State().Position);
        if (offset.OutNm > 5 || offset.OutNm < 0.3 || std::abs(offset.LeftNm) > 0.1)
            continue;
        // 3 degrees to a point 500 ft down the runway
        const double path = runway.ElevationFt + (offset.OutNm * 6080 + 500) * 0.052408;
        EXPECT_NEAR(pilot.State().AltitudeFt, path, 60) << offset.OutNm;
        ++checked;
    }
    EXPECT_GT(checked, 60);
}

TEST_F(Pilots, ShowExactlyTheMagneticHeadingTheyWereTold)
{
    // Variations that change from cell to cell, as they do in the world.
    for (int lon = 0; lon < 360; ++lon)
        for (int lat = -90; lat <= 90; ++lat)
            Grid->Values[static_cast<std::size_t>(lon * 181 + lat + 90)] =
                static_cast<std::int16_t>((lon % 7 - 3 + lat % 5) * 1000);
    for (const int heading : {1, 45, 90, 179, 180, 270, 359}) {
        Pilot pilot = Make(AircraftKind::LightJet, Scenario::Cruise);
        ASSERT_EQ(Tell(pilot, ("maintain 9000, heading " + std::to_string(heading)).c_str()).find("unable"),
                  std::string::npos)
            << Tell(pilot, "say altitude");
        Fly(pilot, 180);
        for (int second = 0; second < 900; ++second) {
            pilot.Step(Random);
            ASSERT_EQ(ShownHeading(pilot), heading) << "second " << second;
        }
    }
}

TEST_F(Pilots, ObeyWhatTheyReadBack)
{
    Pilot pilot = Make(AircraftKind::Airliner, Scenario::Cruise);
    EXPECT_EQ(Tell(pilot, "heading 270, maintain 12000, speed 230"),
              std::string("heading 270, ") + (pilot.State().AltitudeFt > 12050 ? "descending" : "climbing") +
                  " 12000, speed 230");
    Fly(pilot, 1200);
    EXPECT_EQ(ShownHeading(pilot), 270);
    EXPECT_NEAR(pilot.State().AltitudeFt, 12000, 1);
    EXPECT_NEAR(pilot.State().SpeedKt, 230, 0.01);
    EXPECT_EQ(Tell(pilot, "say altitude, say heading, say speed"), "altitude 12000, heading 270, speed 230");

    EXPECT_EQ(Tell(pilot, "turn right heading 260"), "turning right heading 260");
    Fly(pilot, 20);
    EXPECT_GT(pilot.State().HeadingDeg, 295);
    EXPECT_LT(pilot.State().HeadingDeg, 330);

    EXPECT_EQ(Tell(pilot, "direct big"), "direct BIG");
    Fly(pilot, 200);
    EXPECT_NEAR(TurnTo(pilot.State().HeadingDeg, CourseTo(pilot.State().Position, {47.44, -122.3})), 0, 0.5);

    EXPECT_THAT(Tell(pilot, "hold"), StartsWith("holding"));
    const LatLon fix = pilot.State().Position;
    for (int second = 0; second < 3600; ++second) {
        pilot.Step(Random);
        EXPECT_LT(RangeNm(fix, pilot.State().Position), 12);
    }
}

TEST_F(Pilots, SayWhyTheyCannot)
{
    Pilot airliner = Make(AircraftKind::Airliner, Scenario::Arrival);
    const std::pair<const char*, const char*> cases[] = {
        {"cleared ILS 22", "unable, no runway 22 at "},
        {"cleared ILS 16L", "unable, no ILS for runway 16L at KBIG"},
        {"cleared visual 7", "unable, runway 7 at KTNY is too short for us"},
        {"direct ZZZ", "unable, we do not know ZZZ"},
        {"speed 90", "unable, our minimum speed is 150"},
        {"speed 600", "unable, our maximum speed is 470"},
        {"climb FL500", "unable, our ceiling is FL390"},
        {"descend 100", "unable, too close to the ground"},
        {"climb 2000", "unable, we are at "},
        {"go around", "unable, we are not on approach"},
    };
    // Near both airports, level, and not on any approach.
    Tell(airliner, "resume own navigation");
    Tell(airliner, "direct BIG, maintain 9000");
    Fly(airliner, 500);
    Tell(airliner, "hold");
    for (const auto& [line, answer] : cases)
        EXPECT_THAT(Tell(airliner, line), StartsWith(answer)) << line;
    // A clearance with one part that cannot be done is not flown at all.
    const double altitude = airliner.State().AltitudeFt;
    EXPECT_THAT(Tell(airliner, "maintain 5000, direct ZZZ"), StartsWith("unable"));
    Fly(airliner, 120);
    EXPECT_NEAR(airliner.State().AltitudeFt, altitude, 50);

    Pilot parked = Make(AircraftKind::PistonSingle, Scenario::Departure);
    EXPECT_EQ(Tell(parked, "heading 270"), "unable, we are on the ground");
    EXPECT_EQ(Tell(parked, "hold"), "holding position");
    Fly(parked, 600);
    EXPECT_EQ(parked.Phase(), PilotPhase::Parked);
    EXPECT_EQ(Tell(parked, "resume"), "continuing");
    Fly(parked, 30);
    EXPECT_EQ(parked.Phase(), PilotPhase::TaxiOut);
}

TEST_F(Pilots, KeepAVectorUntilItMeetsTheLocalizer)
{
    Pilot pilot = Make(AircraftKind::Airliner, Scenario::Arrival);
    const PracticeRunway& runway = *Scene.FindAirport("KBIG")->FindRunway("16R");
    // North of the field and west of the final approach, flying east.
    Tell(pilot, "maintain 3000, speed 200, direct KTNY");
    while (!pilot.TakeRadioCall())
        Fly(pilot, 1);
    Tell(pilot, "heading 270");
    Fly(pilot, 300);
    EXPECT_EQ(Tell(pilot, "turn right heading 120, cleared ILS 16R"), "turning right heading 120, cleared ILS 16R");
    std::string call;
    for (int second = 0; second < 1800 && call.empty(); ++second) {
        pilot.Step(Random);
        call = pilot.TakeRadioCall().value_or("");
        if (call.empty() && second > 90) {
            EXPECT_EQ(ShownHeading(pilot), 120);
        }
    }
    EXPECT_EQ(call, "established, runway 16R");
    EXPECT_GT(OffsetFromLine(runway.Threshold, runway.Course, pilot.State().Position).OutNm, 4);
    Fly(pilot, 60);
    EXPECT_LT(std::abs(OffsetFromLine(runway.Threshold, runway.Course, pilot.State().Position).LeftNm), 0.2);

    EXPECT_EQ(Tell(pilot, "go around"), "going around");
    Fly(pilot, 60);
    EXPECT_GT(pilot.State().VerticalFpm, -1);
    int seconds = 0;
    while (pilot.Phase() == PilotPhase::Airborne) { // and comes round again
        pilot.Step(Random);
        ASSERT_LT(++seconds, 2 * 3600);
    }
}

TEST_F(Pilots, FlyWithoutAnyAirport)
{
    const PracticeScene ocean({}, {}, {}, {10, -179.9});
    for (const Scenario scenario : {Scenario::Departure, Scenario::Arrival, Scenario::Cruise, Scenario::Pattern}) {
        Pilot pilot(ocean, *Grid, AircraftKind::Airliner, scenario, Random);
        for (int second = 0; second < 4 * 3600; ++second) {
            const FlightState before = pilot.State();
            pilot.Step(Random);
            ExpectPlausible(before, pilot.State(), pilot.Aircraft(), std::to_string(second));
        }
        EXPECT_LT(RangeNm({10, -179.9}, pilot.State().Position), 90);
        EXPECT_THAT(Tell(pilot, "cleared ILS 9"), HasSubstr("no runway 9"));
        EXPECT_EQ(Tell(pilot, "say position"), "no airport around");
    }
}
} // namespace
} // namespace corvane
