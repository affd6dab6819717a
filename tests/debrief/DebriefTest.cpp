#include "core/GreatCircle.h"
#include "debrief/DebriefPage.h"
#include "debrief/DebriefTables.h"
#include "debrief/DebriefWatch.h"
#include "debrief/SessionDebrief.h"
#include "debrief/TracksPicture.h"
#include "practice/Pilot.h"
#include "tests/practice/PracticeWorld.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

namespace corvane {
namespace {
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

const LatLon Field{47.45, -122.31};

class Debriefs : public testing::Test {
protected:
    Debriefs()
    {
        Area.AreaAirports = test::PracticeAirports();
        Area.AreaCenter = Field;
        Watch = std::make_unique<DebriefWatch>(Area, *Grid);
    }

    /// An aircraft that flies on a course at a place of bearing and distance from the field.
    std::size_t Add(const std::string& name, double bearing, double nm, int feet, int course, int knots,
                    const std::string& title = "Boeing 737-400")
    {
        PlayerRecord player;
        player.Name = name;
        player.PlayerId = static_cast<std::int32_t>(Players.size() + 2);
        const LatLon at = Along(Field, bearing, nm);
        player.Role = PilotRole;
        player.Latitude = at.Lat;
        player.Longitude = at.Lon;
        player.AltitudeFt = feet;
        player.MagHeading = course;
        player.GroundSpeedKt = static_cast<std::int16_t>(knots);
        player.AircraftTitle = title;
        player.AircraftType = "Jet Plane";
        Players.push_back(player);
        return Players.size() - 1;
    }
    void Live(int seconds)
    {
        for (int i = 0; i < seconds; ++i) {
            for (PlayerRecord& player : Players) {
                const LatLon at =
                    Along({player.Latitude, player.Longitude}, player.MagHeading, player.GroundSpeedKt / 3600.0);
                player.Latitude = at.Lat;
                player.Longitude = at.Lon;
            }
            Watch->Refresh(Players, ++Now);
        }
    }
    void Take(const std::string& name)
    {
        Watch->Hear("ATC", name + " descend 5000", Now);
        Watch->Hear(name, "descending 5000, " + name, Now);
    }
    [[nodiscard]] std::vector<std::string> Kinds() const
    {
        std::vector<std::string> kinds;
        for (const DebriefItem& item : Watch->Judge("S").Items)
            kinds.emplace_back(NameOf(item.Kind));
        return kinds;
    }

    AreaModel Area;
    std::unique_ptr<MagVarGrid> Grid = std::make_unique<MagVarGrid>();
    std::unique_ptr<DebriefWatch> Watch;
    std::vector<PlayerRecord> Players;
    double Now = 0;
};

TEST_F(Debriefs, ChargeWhatWasLostAfterAnAircraftWasYours)
{
    Add("Alfa1", 0, 20, 6000, 90, 240);
    Add("Bravo2", 0, 21, 6000, 90, 240); // already too close when they are taken
    Add("Charlie3", 180, 20, 8000, 180, 240);
    Add("Delta4", 180, 30, 8000, 360, 240); // comes too close a minute later
    Live(10);
    Take("Alfa1");
    Take("Charlie3");
    Live(120);
    const Debrief debrief = Watch->Judge("S");
    ASSERT_EQ(debrief.Items.size(), 1U);
    EXPECT_THAT(debrief.Items.front().Who, ElementsAre("Charlie3", "Delta4"));
    EXPECT_THAT(debrief.Items.front().Why, HasSubstr("Charlie3 was told"));
    EXPECT_GT(debrief.Items.front().TimeS, 20);
    EXPECT_EQ(debrief.Handled.back(), 2);
}

TEST_F(Debriefs, CountWhatIsSaid)
{
    Add("Alfa1", 0, 20, 6000, 90, 240);
    Add("Bravo2", 90, 40, 6000, 90, 240);
    Watch->Ignore("Instructor");
    Live(2);
    Watch->Hear("Alfa1", "hello, 20 miles from KBIG, Alfa1", Now);
    Watch->Hear("Instructor", "Alfa1 has called. Answer it: Alfa1, descend 4000.", Now);
    Live(70);
    Watch->Hear("ATC", "Alfa1 climb 90000", Now);
    Watch->Hear("Alfa1", "unable, our ceiling is 39000, Alfa1", Now);
    Watch->Hear("ATC", "Alfa1 brew coffee", Now);
    Watch->Hear("Alfa1", "say again, Alfa1", Now);
    Watch->Hear("ATC", "Bravo2 descend 4000", Now);
    Live(60);
    Watch->Hear("Alfa1", "going around, runway 16R, Alfa1", Now);
    const Debrief debrief = Watch->Judge("S");
    EXPECT_EQ(debrief.Instructions, 2);
    EXPECT_EQ(debrief.Refused, 1);
    EXPECT_EQ(debrief.NotUnderstood, 1);
    EXPECT_EQ(debrief.Unanswered, 1);
    EXPECT_EQ(debrief.GoArounds, 1);
    EXPECT_NEAR(debrief.LongestCallS, 70, 1);
    EXPECT_EQ(debrief.LongestCallBy, "Alfa1");
    EXPECT_THAT(Kinds(), ElementsAre("waited", "refused", "not understood", "unanswered", "go-around"));
}

TEST_F(Debriefs, CountWakeOnTheFinal)
{
    const double distances[][2] = {{3.6, 1}, {6.5, 0}}; // behind a heavy, medium needs 5
    for (const auto& [behindNm, expected] : distances) {
        Players.clear();
        Watch = std::make_unique<DebriefWatch>(Area, *Grid);
        const LatLon threshold{Area.AreaAirports[0].Runways[0].End1Lat, Area.AreaAirports[0].Runways[0].End1Lon};
        for (const double out : {3.0, 3.0 + behindNm}) {
            const LatLon at = Along(threshold, 343, out);
            Add("Alfa" + std::to_string(Players.size()), 0, 0, 430 + static_cast<int>(out * 318), 163, 140,
                Players.empty() ? "Boeing 747-400" : "Boeing 737-400");
            Players.back().Latitude = at.Lat;
            Players.back().Longitude = at.Lon;
        }
        Watch->Meet(Players.back());
        Take("Alfa1");
        Live(10);
        const auto kinds = Kinds();
        EXPECT_EQ(std::count(kinds.begin(), kinds.end(), "wake turbulence"), static_cast<int>(expected)) << behindNm;
    }
}

TEST_F(Debriefs, MeasureDelayAgainstTheUnhinderedFlight)
{
    // Flown by a pilot of the same class that holds for ten minutes first.
    const PracticeScene scene = test::MakeScene();
    PracticeRandom random(1);
    PilotStart start;
    start.Destination = scene.FindAirport("KBIG");
    start.Position = Along(Field, 330, 30);
    start.AltitudeFt = 6000;
    Pilot pilot(scene, *Grid, AircraftKind::Airliner, start, random);
    const std::size_t index = Add("Alfa1", 0, 0, 0, 0, 0);
    Players[index].GroundSpeedKt = 0;
    for (int second = 0; second < 3600 && pilot.Phase() == PilotPhase::Airborne; ++second) {
        if (second == 60)
            pilot.Obey(ParseInstructions("hold present position").Instructions);
        if (second == 660)
            pilot.Obey(ParseInstructions("resume own navigation").Instructions);
        pilot.Step(random);
        const ReportedPosition report = pilot.Report();
        PlayerRecord& player = Players[index];
        player.Latitude = report.Position.Lat;
        player.Longitude = report.Position.Lon;
        player.AltitudeFt = static_cast<int>(report.AltitudeFt);
        player.GroundSpeedKt = static_cast<std::int16_t>(report.SpeedKt);
        Watch->Refresh(Players, ++Now);
        if (second == 30)
            Take("Alfa1");
    }
    const Debrief debrief = Watch->Judge("S");
    ASSERT_TRUE(debrief.Flights.front().LandedS);
    EXPECT_EQ(debrief.Flights.front().LandedAt, "KBIG");
    EXPECT_EQ(debrief.Landings, 1);
    EXPECT_NEAR(debrief.DelayS, 600, 150) << "a hold ends where it ends";
}

TEST_F(Debriefs, MeasureADepartureFromItsFirstCallToTheTakeOff)
{
    constexpr int KeptWaitingS = 300;
    const PracticeScene scene = test::MakeScene();
    PracticeRandom random(1);
    PilotStart start;
    start.Airport = scene.FindAirport("KBIG");
    start.AsksFirst = true;
    const std::string runway = start.Airport->TakeOffRunway(ClassOf(AircraftKind::Airliner).RunwayFt)->Name;
    Pilot pilot(scene, *Grid, AircraftKind::Airliner, start, random);
    const std::size_t index = Add("Alfa1", 0, 0, 0, 0, 0);
    Watch->Meet(Players[index]);
    int readyFor = 0;
    bool called = false;
    for (int second = 0; second < 2400 && pilot.State().AltitudeFt < 2000; ++second) {
        const std::string request = pilot.Request();
        if (!request.empty() && !std::exchange(called, true))
            Watch->Hear("Alfa1", pilot.FirstCall(), Now);
        if (request == "request taxi")
            pilot.Obey(ParseInstructions("taxi to runway " + runway).Instructions);
        else if (!request.empty() && ++readyFor == KeptWaitingS)
            pilot.Obey(ParseInstructions("cleared for take-off").Instructions);
        pilot.Step(random);
        const ReportedPosition report = pilot.Report();
        Players[index].Latitude = report.Position.Lat;
        Players[index].Longitude = report.Position.Lon;
        Players[index].AltitudeFt = static_cast<int>(report.AltitudeFt);
        Players[index].GroundSpeedKt = static_cast<std::int16_t>(report.SpeedKt);
        Watch->Refresh(Players, ++Now);
        if (second == 1)
            Take("Alfa1");
    }
    const Debrief debrief = Watch->Judge("S");
    ASSERT_EQ(debrief.TakeOffs, 1);
    EXPECT_NEAR(debrief.DelayS, KeptWaitingS, 20) << "it needs no pushback time once it has asked";
}

struct LowCase {
    const char* Name;
    std::vector<const char*> Told;
    bool Answers = true;
    std::size_t Charged = 0;
};
class LowAltitudes : public Debriefs, public testing::WithParamInterface<LowCase> {};

TEST_P(LowAltitudes, AreChargedWhereTheControllerGaveThem)
{
    const LatLon hill = Along(Field, 0, 15);
    Area.TerrainPoints = {{.Lat = hill.Lat, .Lon = hill.Lon, .ElevationFt = 1500}}; // 3500 ft is the minimum from there
    Watch->SetPractice({{}, [](std::string_view name) { return std::string(name == "Alfa1" ? "KBIG" : ""); }});
    const std::size_t low = Add("Alfa1", 0, 30, 6000, 0, 200);
    Add("Bravo2", 180, 30, 2000, 180, 200); // goes nowhere
    Live(3);
    for (const char* told : GetParam().Told) {
        Watch->Hear("ATC", std::string("Alfa1 ") + told, Now);
        Watch->Hear("Alfa1", GetParam().Answers ? "roger, Alfa1" : "unable, we are low, Alfa1", Now);
        Live(2);
    }
    Players[low].AltitudeFt = 2500;
    Live(20);
    EXPECT_EQ(std::ranges::count(Kinds(), "low altitude"), GetParam().Charged);
    Players[low].AltitudeFt = 6000;
    Live(20);
    Players[low].AltitudeFt = 2500;
    Live(20);
    EXPECT_EQ(std::ranges::count(Kinds(), "low altitude"), GetParam().Charged * 2) << "once each time";
}

INSTANTIATE_TEST_SUITE_P(Debrief, LowAltitudes,
                         testing::Values(LowCase{"Given", {"descend 2500"}, true, 1},
                                         LowCase{"GivenWithAnApproach", {"descend 2500", "cleared ILS runway 16"}},
                                         LowCase{"GivenAnotherOne", {"descend 2500", "climb 5000"}},
                                         LowCase{"HighEnough", {"descend 3500"}},
                                         LowCase{"Refused", {"descend 2500"}, false},
                                         LowCase{"NeverGiven", {"turn left heading 270"}}),
                         [](const auto& row) { return std::string(row.param.Name); });

TEST_F(Debriefs, PagesEscapeNamesAndStandOnTheirOwn)
{
    Add("<b>&\"1", 0, 20, 6000, 90, 240, "<script>");
    Live(3);
    Take("<b>&\"1");
    Live(60);
    const Debrief debrief = Watch->Judge("<i>Evening");
    const std::string page = DebriefPage(debrief, TimelineSvg(debrief) + TracksSvg(debrief, Area, *Grid));
    EXPECT_THAT(page, Not(HasSubstr("<b>")));
    EXPECT_THAT(page, Not(HasSubstr("<script")));
    EXPECT_THAT(page, Not(HasSubstr("<i>")));
    EXPECT_THAT(page, HasSubstr("&lt;b&gt;&amp;&quot;1</text>"));
    const auto json = nlohmann::json::parse(DebriefJson(debrief));
    EXPECT_EQ(json["Flights"][0]["Callsign"], "<b>&\"1");
    EXPECT_FALSE(json["Flights"][0]["Track"].empty());
}

TEST(SessionDebriefs, CountTheOwnWordsAloneAndKnowWhereTheSessionIsRecorded)
{
    const auto grid = std::make_unique<MagVarGrid>();
    SessionDebrief session(std::make_shared<const AreaModel>(), *grid, "Practice");
    PlayerTable table;
    table.Append("**Me", 1, PilotRole); // as joining enters the own player
    table.Append("**Other", 2, ObserverRole);
    table.Append("Alfa1", 3, PilotRole);
    const auto say = [&](const char* from, const char* text, double nowS) {
        session.Hear(from, text, table.Players(), 1, nowS);
    };
    session.Refresh(table.Players(), 1, 1);
    say("**Other", "Alfa1 climb 5000", 2);
    say("Alfa1", "climbing 5000, Alfa1", 3);
    say("Gone", "Alfa1 climb 5000", 4);
    EXPECT_EQ(session.Judge().Instructions, 0);
    say("**Me", "Alfa1 brew coffee", 50);
    say("Alfa1", "say again, Alfa1", 51);

    session.Recorded("one.cvr", 0.5, 40);
    session.Recorded("one.cvr", 11, 50.5);
    session.Recorded("two.cvr", 1, 61);
    session.NotRecorded();
    session.Recorded("two.cvr", 1, 81); // again, over the same file
    session.Recorded("two.cvr", 9, 89);
    const Debrief debrief = session.Judge();
    EXPECT_EQ(debrief.NotUnderstood, 1);
    const auto where = [&debrief](double timeS) {
        const auto moment = debrief.MomentOf(timeS);
        return moment ? moment->File.string() + ' ' + ClockText(moment->AtS) : std::string("nowhere");
    };
    EXPECT_EQ(where(39), "nowhere");
    EXPECT_EQ(where(45.5), "one.cvr 0:06");
    EXPECT_EQ(where(61), "nowhere") << "what was there has been replaced";
    EXPECT_EQ(where(85), "two.cvr 0:05");
    EXPECT_EQ(where(90), "nowhere");
    EXPECT_EQ(ItemTable(debrief).Rows.front().back(), "-");
    EXPECT_THAT(DebriefPage(debrief, {}), HasSubstr("In the recording"));
}
} // namespace
} // namespace corvane
