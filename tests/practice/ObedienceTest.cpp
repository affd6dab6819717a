#include "practice/Pilot.h"
#include "tests/practice/PracticeWorld.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <memory>

namespace corvane {
namespace {
using testing::HasSubstr;
using testing::StartsWith;

class Obeying : public testing::Test {
protected:
    Pilot Make(AircraftKind kind, Scenario scenario) { return {Scene, *Grid, kind, scenario, Random}; }
    static std::string Tell(Pilot& pilot, const std::string& line)
    {
        const ParsedLine parsed = ParseInstructions(line);
        return parsed.Understood ? pilot.Obey(parsed.Instructions) : pilot.NotUnderstood();
    }
    void Fly(Pilot& pilot, double seconds)
    {
        for (double i = 0; i < seconds; ++i)
            pilot.Step(Random);
    }
    /// An airliner on the final of 16R, some miles out.
    Pilot OnFinal()
    {
        Pilot pilot = Make(AircraftKind::Airliner, Scenario::Arrival);
        Tell(pilot, "cleared ILS 16R");
        std::string call;
        for (int i = 0; i < 3 * 3600 && call != "established, runway 16R"; ++i) {
            pilot.Step(Random);
            call = pilot.TakeRadioCall().value_or("");
        }
        EXPECT_EQ(call, "established, runway 16R");
        return pilot;
    }

    PracticeScene Scene = test::MakeScene();
    std::unique_ptr<MagVarGrid> Grid = std::make_unique<MagVarGrid>();
    PracticeRandom Random{11};
};

TEST_F(Obeying, DoesWhatItReadsBackWhateverItWasDoing)
{
    constexpr std::array Kinds{AircraftKind::PistonSingle, AircraftKind::TwinTurboprop, AircraftKind::LightJet,
                               AircraftKind::Airliner, AircraftKind::Helicopter};
    constexpr std::array Ways{Scenario::Departure, Scenario::Arrival, Scenario::Cruise, Scenario::Pattern};
    constexpr std::array Before{"",           "cleared ILS 16R",        "cleared visual 16R", "hold",
                                "direct BIG", "join the localizer 16R", "maintain 9000"};
    int done = 0;
    for (int trial = 0; trial < 400; ++trial) {
        const AircraftKind kind = Kinds[Random.Below(Kinds.size())];
        Pilot pilot = Make(kind, Ways[Random.Below(Ways.size())]);
        Fly(pilot, Random.Between(0, 900));
        const std::string before = Before[Random.Below(Before.size())];
        Tell(pilot, before);
        Fly(pilot, Random.Between(0, 900));
        if (pilot.Phase() != PilotPhase::Airborne)
            continue;
        const int heading = 10 * (1 + static_cast<int>(Random.Below(36)));
        const int feet = 500 * (4 + static_cast<int>(Random.Below(20)));
        const std::string told =
            trial % 2 == 0 ? "heading " + std::to_string(heading) : "maintain " + std::to_string(feet);
        const double from = pilot.State().AltitudeFt;
        const std::string answer = Tell(pilot, told);
        const std::string where =
            std::to_string(trial) + ": " + before + ", " + told + " / " + answer + " from " + std::to_string(from);
        // A cleared approach goes on where the heading meets it, and from the altitude down.
        const bool left = answer.find("leaving") != std::string::npos || answer.find("breaking") != std::string::npos;
        const bool joins = !left && (before.starts_with("cleared") || (trial % 2 == 0 && before.starts_with("join")));
        if (answer.starts_with("unable") || joins)
            continue;
        ++done;
        Fly(pilot, 200 + std::abs(feet - from) / 8);
        for (int i = 0; i < 300; ++i) {
            pilot.Step(Random);
            ASSERT_EQ(pilot.Phase(), PilotPhase::Airborne) << where;
            if (trial % 2 == 0)
                ASSERT_EQ(pilot.Report().TrueHeading, heading) << where; // there is no variation here
            else
                ASSERT_NEAR(pilot.State().AltitudeFt, feet, 60) << where;
        }
    }
    EXPECT_GT(done, 120);
}

TEST_F(Obeying, StaysWithinTheLimitsOfItsClassWhateverItIsTold)
{
    constexpr std::array Kinds{AircraftKind::PistonSingle, AircraftKind::TwinTurboprop, AircraftKind::LightJet,
                               AircraftKind::Airliner, AircraftKind::Helicopter};
    constexpr std::array Lines{"turn left heading 010",
                               "turn right heading 190",
                               "fly heading 270",
                               "turn left 90",
                               "climb 11000",
                               "descend 2000",
                               "maintain 6000",
                               "speed 100",
                               "speed 140",
                               "speed 250",
                               "slowest speed",
                               "hold",
                               "cleared ILS 16R",
                               "go around",
                               "resume own speed",
                               "direct BIG",
                               "cleared visual 34L",
                               "resume own navigation"};
    constexpr double MostTurnDegPerS = 3;
    constexpr double Rounding = 1e-6;
    int obeyed = 0;
    for (int trial = 0; trial < 60; ++trial) {
        Pilot pilot = Make(Kinds[Random.Below(Kinds.size())], trial % 2 == 0 ? Scenario::Cruise : Scenario::Arrival);
        const AircraftClass& limits = pilot.Aircraft();
        for (int second = 0; second < 1800 && pilot.Phase() == PilotPhase::Airborne; ++second) {
            std::string said;
            if (Random.Chance(0.03))
                said = Tell(pilot, Lines[Random.Below(Lines.size())]);
            obeyed += said.empty() || said.starts_with("unable") ? 0 : 1;
            const FlightState before = pilot.State();
            pilot.Step(Random);
            const FlightState& after = pilot.State();
            if (pilot.Phase() != PilotPhase::Airborne)
                break;
            const double climbFpm = (after.AltitudeFt - before.AltitudeFt) * 60;
            const std::string where = std::string(limits.EngineType) + " after " + said;
            ASSERT_LE(climbFpm, limits.ClimbFpm + Rounding) << where;
            ASSERT_GE(climbFpm, -limits.DescentFpm - Rounding) << where;
            ASSERT_LE(std::abs(TurnTo(before.HeadingDeg, after.HeadingDeg)), MostTurnDegPerS + Rounding) << where;
            ASSERT_LE(std::abs(after.SpeedKt - before.SpeedKt), limits.AccelerationKtPerS + Rounding) << where;
            ASSERT_LE(after.SpeedKt, limits.MaximumKt + Rounding) << where;
            ASSERT_GE(after.SpeedKt, std::min(limits.MinimumKt, limits.FinalKt) - Rounding) << where;
            ASSERT_LE(after.AltitudeFt, limits.CeilingFt + Rounding) << where;
        }
    }
    EXPECT_GT(obeyed, 500);
}

TEST_F(Obeying, BreaksOffTheApproachForAnAltitudeOrSaysWhyNot)
{
    Pilot pilot = OnFinal();
    EXPECT_EQ(Tell(pilot, "descend 2500"), "unable, we are established on the approach");
    EXPECT_EQ(Tell(pilot, "climb and maintain 12000"), "breaking off the approach, climbing 12000");
    Fly(pilot, 900);
    EXPECT_NEAR(pilot.State().AltitudeFt, 12000, 10);

    Pilot vectored = Make(AircraftKind::Airliner, Scenario::Arrival);
    Tell(vectored, "cleared ILS 16R");
    Fly(vectored, 5);
    EXPECT_THAT(Tell(vectored, "climb FL250"), StartsWith("breaking off the approach, climbing FL250"));
    Pilot own = Make(AircraftKind::LightJet, Scenario::Arrival);
    Tell(own, "maintain 9000");
    Fly(own, 3600);
    EXPECT_NEAR(own.State().AltitudeFt, 9000, 10) << "nobody cleared it";
    EXPECT_THAT(own.TakeRadioCall().value_or(""), HasSubstr("request approach"));
}

TEST_F(Obeying, ComesDownAlongTheProfileAfterAClearance)
{
    Pilot pilot = Make(AircraftKind::Airliner, Scenario::Arrival);
    Tell(pilot, "cleared ILS 16R");
    const PracticeRunway& runway = *Scene.FindAirport("KBIG")->FindRunway("16R");
    for (int i = 0; i < 3600 && pilot.Phase() == PilotPhase::Airborne; ++i) {
        const double before = pilot.State().AltitudeFt;
        pilot.Step(Random);
        const double nm = RangeNm(pilot.State().Position, runway.Threshold);
        EXPECT_LE(pilot.State().AltitudeFt, before + 5);
        if (nm > 24 && before > 6000) {
            EXPECT_GT(pilot.State().AltitudeFt, 5000) << nm << " miles out";
        }
    }
    EXPECT_EQ(pilot.Phase(), PilotPhase::LandingRoll);
}

/// What a pilot in level flight at 9000 ft, heading 090, answers; and what has become of it some time later.
struct Effect {
    const char* Line;
    const char* Answer;
    int AfterS;
    double HeadingDeg; ///< negative: any
    double AltitudeFt;
    double SpeedKt; ///< negative: any
};

TEST_F(Obeying, HasTheEffectOfEachPhrase)
{
    const Effect effects[] = {
        {"turn left heading 270", "turning left heading 270", 150, 270, 9000, 250},
        {"turn left 30 degrees", "turning left 30 degrees", 60, 60, 9000, 250},
        {"turn right 20 degrees", "turning right 20 degrees", 60, 110, 9000, 250},
        {"make a right 360", "turning right 360 degrees", 300, 90, 9000, 250},
        {"fly present heading", "present heading", 100, 90, 9000, 250},
        {"climb FL180", "climbing FL180", 600, 90, 18000, 250},
        {"descend and maintain one zero thousand", "unable, we are at 9000", 60, 90, 9000, 250},
        {"descend 4000, speed 200", "descending 4000, speed 200", 400, 90, 4000, 200},
        {"reduce to minimum approach speed", "minimum speed", 120, 90, 9000, 150},
        {"speed 200, resume normal speed", "speed 200, normal speed", 120, 90, 9000, -1},
        {"when passing 8000 turn right heading 180, descend 5000",
         "passing 8000 turning right heading 180, descending 5000", 400, 180, 5000, 250},
        {"descend 5000, heading 180 until passing 7000", "descending 5000, heading 180 until 7000", 50, 180, 7400, 250},
        {"climb 12000, disregard, descend 6000", "descending 6000", 300, 90, 6000, 250},
        {"heading 180, correction, 200", "heading 200", 100, 200, 9000, 250},
        {"hold present position left turns", "holding over present position, left turns", 30, 29, 9000, 250},
        {"squawk 4271", "squawking 4271", 10, 90, 9000, 250},
        {"ident", "ident", 10, 90, 9000, 250},
        {"radar contact, expect ILS 16R", "expecting ILS 16R", 10, 90, 9000, 250},
        {"cleared touch and go 16R", "unable, we want a full stop landing", 10, 90, 9000, 250},
        {"taxi to runway 16R", "unable, we are airborne", 10, 90, 9000, 250},
        {"line up and wait", "unable, we are airborne", 10, 90, 9000, 250},
        {"when passing 9000 heading 180", "unable, we are at 9000", 10, 90, 9000, 250},
        {"fetch the moon", "say again", 10, 90, 9000, 250},
        {"good evening", "good day", 10, 90, 9000, 250},
        {"say squawk, say destination", "squawking 1200, landing K", 10, 90, 9000, 250},
        {"contact center 128.5", "128.5, good day", 10, -1, 9000, -1},
    };
    for (const Effect& effect : effects) {
        Pilot pilot = Make(AircraftKind::Airliner, Scenario::Arrival);
        ASSERT_THAT(Tell(pilot, "heading 090, maintain 9000, speed 250"), HasSubstr("heading 090"));
        Fly(pilot, 1500);
        EXPECT_THAT(Tell(pilot, effect.Line), StartsWith(effect.Answer)) << effect.Line;
        Fly(pilot, effect.AfterS);
        if (effect.HeadingDeg >= 0) {
            EXPECT_NEAR(TurnTo(effect.HeadingDeg, pilot.State().HeadingDeg), 0, 5) << effect.Line;
        }
        EXPECT_NEAR(pilot.State().AltitudeFt, effect.AltitudeFt, 300) << effect.Line;
        if (effect.SpeedKt > 0) {
            EXPECT_NEAR(pilot.State().SpeedKt, effect.SpeedKt, 1) << effect.Line;
        }
    }
}

TEST_F(Obeying, TakesTheGroundInSteps)
{
    Pilot pilot = Make(AircraftKind::PistonSingle, Scenario::Departure);
    EXPECT_EQ(Tell(pilot, "push and start approved"), "pushback approved");
    const std::string runway = Tell(pilot, "taxi to runway 99");
    EXPECT_EQ(runway, "say again");
    EXPECT_THAT(Tell(pilot, "taxi to runway 22, hold short"), StartsWith("unable, no runway 22"));
    EXPECT_EQ(Tell(pilot, "hold short"), "holding short");
    Fly(pilot, 1500);
    EXPECT_EQ(pilot.Phase(), PilotPhase::TaxiOut);
    EXPECT_EQ(pilot.State().SpeedKt, 0);
    EXPECT_EQ(Tell(pilot, "line up and wait"), "lining up");
    Fly(pilot, 200);
    EXPECT_EQ(pilot.Phase(), PilotPhase::LineUp);
    EXPECT_EQ(Tell(pilot, "hold short"), "unable, we are on the runway");
    EXPECT_EQ(Tell(pilot, "fly runway heading, climb 3000, cleared for takeoff"),
              "runway heading, climbing 3000, cleared for take-off");
    Fly(pilot, 500);
    ASSERT_EQ(pilot.Phase(), PilotPhase::Airborne);
    EXPECT_NEAR(pilot.State().AltitudeFt, 3000, 20);
    EXPECT_EQ(Tell(pilot, "cancel takeoff clearance"), "unable, we are airborne");
}

TEST_F(Obeying, RepeatsAndForgetsWhenToldTo)
{
    Pilot pilot = Make(AircraftKind::Airliner, Scenario::Cruise);
    EXPECT_EQ(Tell(pilot, "say again"), "go ahead");
    EXPECT_EQ(Tell(pilot, "disregard"), "unable, there is nothing to disregard");
    Tell(pilot, "heading 090, maintain 9000");
    Fly(pilot, 1500);
    EXPECT_EQ(Tell(pilot, "turn right heading 180"), "turning right heading 180");
    EXPECT_EQ(Tell(pilot, "say again"), "turning right heading 180");
    EXPECT_EQ(Tell(pilot, "disregard"), "disregarding");
    Fly(pilot, 120);
    EXPECT_EQ(pilot.Report().TrueHeading, 90);
    EXPECT_EQ(Tell(pilot, "report passing 7000, descend 6000"), "will report 7000, descending 6000");
    std::string call;
    for (int i = 0; i < 200 && call.empty(); ++i) {
        pilot.Step(Random);
        call = pilot.TakeRadioCall().value_or("");
    }
    EXPECT_EQ(call, "passing 7000");
    EXPECT_NEAR(pilot.State().AltitudeFt, 7000, 60);
}
} // namespace
} // namespace corvane
