#include "session/PlayerPropertiesModel.h"

#include "tests/session/SessionFixture.h"

#include <gmock/gmock.h>

#include <functional>
#include <limits>

namespace corvane {
namespace {
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* NotThereBox =
    "i: The player you had selected is not currently in the session, select another player.";
constexpr const char* RangeBox = "w: The cruise altitude must be a number of feet from -32768 to 32767.";

class EditorTest : public testing::Test {
protected:
    EditorTest()
    {
        HostMember.Host("Traffic");
        EXPECT_TRUE(CreateSessionObjects(Factory, Session));
        EXPECT_TRUE(Session.SessionPeer->InitializeConnection(InMemoryProvider::ConnectionAddress));
        EXPECT_TRUE(Session.SessionPeer->Open(HostMember.Sessions().front(), OpenJoin));
        Session.OwnPlayerId = *Session.SessionPeer->CreatePlayer("**ATC", "Player");
        Players.Append("**ATC", Session.OwnPlayerId, PilotRole);
        Players.Append("Ann", 11, PilotRole);
        Players.Append("Watcher", 12, ObserverRole);
        Players.Append("**ATC", 13, PilotRole); // bears the controller's name
        Players.Append("Bob", 14, PilotRole);
        Players.Append("Ann", 15, PilotRole);
        Editor.Load();
    }

    InMemoryNetwork Network;
    InMemoryProvider Factory{Network};
    Member HostMember{Network};
    SessionState Session;
    PlayerTable Players;
    ScriptedBoxes Boxes;
    int Changes = 0;
    PlayerPropertiesModel Editor{Session, Players, Boxes, [this] { ++Changes; }};
};

TEST_F(EditorTest, OffersTheOtherPilots)
{
    EXPECT_THAT(Editor.Names(), ElementsAre("Ann", "Bob", "Ann"));
    EXPECT_EQ(Editor.Fields(), FlightPlanFields{});
    Changes = 0;
    Editor.Save({}); // nothing is picked
    Editor.Discard();
    EXPECT_EQ(Changes, 0) << "what was typed stays";
    EXPECT_EQ(Editor.Center(), std::nullopt);
    EXPECT_THAT(Boxes.Shown, IsEmpty());
}

TEST_F(EditorTest, ShowsAndStoresAFlightPlan)
{
    PlayerRecord& bob = Players.Players()[4];
    bob.AircraftTitle = "B737";
    bob.AircraftType = "Jet Plane";
    bob.FlightRules = 1;
    bob.CruiseAltitude = -100;
    Editor.Pick(1);
    EXPECT_EQ(Editor.Fields(), (FlightPlanFields{"Bob", "B737", "Jet Plane", "", "", true, "-100"}));
    FlightPlanFields typed = Editor.Fields();
    typed.DepartureIcao = "  ksea ";
    typed.DestinationIcao = "-None-";
    typed.Ifr = false;
    typed.CruiseAltitude = " 900 ft";
    Editor.Save(typed);
    EXPECT_EQ(bob.DepartureIcao, "ksea");
    EXPECT_EQ(bob.DestinationIcao, "-None-");
    EXPECT_EQ(bob.FlightRules, 0);
    EXPECT_EQ(bob.CruiseAltitude, 900);
    EXPECT_EQ(Editor.Fields(), FlightPlanFields{});
    EXPECT_EQ(Editor.Selected(), 1U) << "the selection stays";
}

TEST_F(EditorTest, OfTwoOfOneNameTheLaterIsMeant)
{
    for (const std::size_t item : {0U, 2U}) {
        Players.Players()[5].CruiseAltitude = 0;
        Editor.Pick(item);
        FlightPlanFields typed = Editor.Fields();
        typed.CruiseAltitude = "5000";
        Editor.Save(typed);
        EXPECT_EQ(Players.Players()[1].CruiseAltitude, 0);
        EXPECT_EQ(Players.Players()[5].CruiseAltitude, 5000);
    }
}

TEST_F(EditorTest, APilotThatLeftIsReportedByEveryButtonOnceTheListIsRebuilt)
{
    const std::vector<std::size_t> last{Players.PlayerCount()};
    for (const std::function<void()>& press : std::initializer_list<std::function<void()>>{
             [this] { Editor.Pick(3); }, [this] { Editor.Save(Editor.Fields()); }, [this] { Editor.Discard(); },
             [this] { EXPECT_EQ(Editor.Center(), std::nullopt); }}) {
        Players.Append("Passing", 16, PilotRole);
        Editor.Load();
        Editor.Pick(3);
        Players.Remove(last);
        Players.Append("Coming", 17, PilotRole);
        Boxes.WhileOpen = [this] {
            EXPECT_THAT(Editor.Names(), ElementsAre("Ann", "Bob", "Ann", "Coming"));
            EXPECT_EQ(Editor.Selected(), std::nullopt);
            EXPECT_EQ(Editor.Fields(), FlightPlanFields{});
            EXPECT_EQ(Changes, 1) << "and shown";
        };
        Changes = 0;
        Boxes.Shown.clear();
        press();
        EXPECT_THAT(Boxes.Shown, ElementsAre(NotThereBox));
        Players.Remove(last);
    }
}

TEST_F(EditorTest, DiscardingStoresNothing)
{
    Editor.Pick(1);
    Editor.Discard();
    EXPECT_EQ(Editor.Fields(), FlightPlanFields{});
    EXPECT_EQ(Players.Players()[4].DepartureIcao, "");
}

TEST_F(EditorTest, CentersOnThePilot)
{
    Players.Players()[4].Latitude = 47;
    Players.Players()[4].Longitude = -122;
    Editor.Pick(1);
    EXPECT_EQ(Editor.Center(), (LatLon{47, -122}));
}

struct AltitudeCase {
    const char* Name;
    const char* Typed;
    std::optional<int> Stored; ///< nothing: refused
};
class CruiseAltitudes : public EditorTest, public testing::WithParamInterface<AltitudeCase> {};
TEST_P(CruiseAltitudes, AreRoundedOrRefused)
{
    Players.Players()[4].CruiseAltitude = 1;
    Editor.Pick(1);
    FlightPlanFields typed = Editor.Fields();
    typed.CruiseAltitude = GetParam().Typed;
    typed.DepartureIcao = "KSEA";
    Editor.Save(typed);
    EXPECT_EQ(Players.Players()[4].CruiseAltitude, GetParam().Stored.value_or(1));
    EXPECT_EQ(Players.Players()[4].DepartureIcao, GetParam().Stored ? "KSEA" : "");
    if (!GetParam().Stored) {
        EXPECT_THAT(Boxes.Shown, ElementsAre(RangeBox));
        EXPECT_EQ(Editor.Fields(), typed);
    }
}
INSTANTIATE_TEST_SUITE_P(
    PlayerPropertiesModel, CruiseAltitudes,
    testing::Values(AltitudeCase{"FlightLevel", "FL350", 0}, AltitudeCase{"Blank", "   ", 0},
                    AltitudeCase{"HalfToEven", "100.5", 100}, AltitudeCase{"NextHalfToEven", "101.5", 102},
                    AltitudeCase{"Highest", "32767.4", 32767}, AltitudeCase{"TooHigh", "32768", std::nullopt},
                    AltitudeCase{"RoundsTooHigh", "32767.5", std::nullopt}, AltitudeCase{"Lowest", "-32768", -32768},
                    AltitudeCase{"TooLow", "-32769", std::nullopt}),
    [](const auto& row) { return std::string(row.param.Name); });

struct NumberCase {
    const char* Text;
    double Value;
};
TEST(LeadingNumbers, AreReadAsFarAsTheyGo)
{
    for (const NumberCase& c :
         {NumberCase{"900 ft", 900}, NumberCase{"+12", 12}, NumberCase{"- 5", -5}, NumberCase{"12 000", 12000},
          NumberCase{".5", .5}, NumberCase{"5.", 5}, NumberCase{"1.2.3", 1.2}, NumberCase{"3E4", 3},
          NumberCase{"1D2", 1}, NumberCase{"--5", 0}, NumberCase{"+-5", 0}, NumberCase{"5-3", 5}, NumberCase{"", 0},
          NumberCase{"-", 0}, NumberCase{".", 0}, NumberCase{"&H10", 0}, NumberCase{"inf", 0}, NumberCase{"nan", 0}})
        EXPECT_EQ(LeadingNumber(c.Text), c.Value) << c.Text;
    EXPECT_EQ(LeadingNumber(std::string(400, '9')), std::numeric_limits<double>::infinity());
    EXPECT_EQ(LeadingNumber("0." + std::string(400, '0') + "1"), 0);
}
} // namespace
} // namespace corvane
