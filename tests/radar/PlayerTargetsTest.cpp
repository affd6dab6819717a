#include "radar/PlayerTargets.h"

#include "radar/RecordingSurface.h"
#include "tests/radar/OperationText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace corvane {
namespace {
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr std::int32_t OwnId = 7;

PlayerRecord Pilot(std::string_view name, double lat, double lon)
{
    PlayerRecord player;
    player.Name = name;
    player.PlayerId = 100;
    player.Role = PilotRole;
    player.Latitude = lat;
    player.Longitude = lon;
    return player;
}

class Targets : public testing::Test {
protected:
    void Draw(bool measureActive = false)
    {
        surface.Clear();
        const MapScene scene{area, grid, view, flags};
        DrawTargets(surface, scene, {players, OwnId, "**Tower"}, measureActive, memory);
        EXPECT_EQ(surface.State, DrawState());
    }
    std::vector<std::string> Drawn(bool measureActive = false)
    {
        Draw(measureActive);
        return OperationTexts(surface);
    }

    AreaModel area;
    MagVarGrid grid;
    ScopeView view = TenDegreeView();
    DisplayFlags flags;
    std::vector<PlayerRecord> players;
    TargetMemory memory;
    RecordingSurface surface; // text 13 pixels high
};

TEST_F(Targets, AreDotVectorLeaderAndTwoLines)
{
    players = {Pilot("N123", 5, 5), Pilot("D-EABC", 9.9, 0.2)};
    players[0].MagHeading = 90;
    players[0].AltitudeFt = 4500;
    players[0].GroundSpeedKt = 120;
    players[1].AltitudeFt = -12;
    EXPECT_THAT(Drawn(),
                ElementsAre("ellipse 495,505 505,495 pen 0,192,0 w1 solid fill 0,192,0", //
                            "line 500,500 515,500 pen 0,192,0 w1 solid",                 //
                            "line 500,500 521,479 pen 0,192,0 w1 solid",
                            "text 521,453 0,192,0 N123  Hdg: 90*  Alt: 4500ft",
                            "text 521,466 0,192,0 GS: 120kts  Min Alt: -None-",
                            "ellipse 15,15 25,5 pen 0,192,0 w1 solid fill 0,192,0",
                            "line 20,10 20,-5 pen 0,192,0 w1 solid", //
                            "line 20,10 41,-11 pen 0,192,0 w1 solid", "text 41,-37 0,192,0 D-EABC  Hdg: 0*  Alt: -12ft",
                            "text 41,-24 0,192,0 GS: 0kts  Min Alt: -None-"));
}

TEST_F(Targets, KeepWidthAndStyleOfThePenButSetItsColour)
{
    players = {Pilot("N1", 5, 5)};
    surface.State.PenColor = {255, 0, 0};
    surface.State.PenWidth = 3;
    surface.State.Style = PenStyle::Dash;
    EXPECT_EQ(Drawn().at(1), "line 500,500 500,485 pen 0,192,0 w3 dash");
}

TEST_F(Targets, LeaveOutObserversAndTheControllersOwnEntry)
{
    players = {Pilot("Watcher", 5, 5), Pilot("MyId", 5, 5), Pilot("**Tower", 5, 5), Pilot("**tower", 5, 5)};
    players[0].Role = ObserverRole;
    players[1].PlayerId = OwnId;
    EXPECT_THAT(Drawn(), SizeIs(5)); // only the last: names are compared exactly
    EXPECT_EQ(Drawn().at(3), "text 521,453 0,192,0 **tower  Hdg: 0*  Alt: 0ft");
}

struct HeadingCase {
    double MagHeading;
    int Variation; // grid value, 1821 = 10 degrees
    ScopePoint End;
};
TEST_F(Targets, PointAlongTheTrueHeading)
{
    constexpr HeadingCase Cases[] = {
        {0, 0, {500, 485}},       {360, 0, {500, 485}},    {90, 0, {515, 500}},   {180, 0, {500, 515}},
        {270, 0, {485, 500}},     {45, 0, {511, 489}},     {225, 0, {489, 511}},  {80, 1821, {515, 500}},
        {100, -1821, {515, 500}}, {355, 1821, {501, 485}}, {89.5, 0, {515, 500}}, // half to even: 90
    };
    for (const HeadingCase& c : Cases) {
        grid.Values.fill(static_cast<std::int16_t>(c.Variation));
        players = {Pilot("N1", 5, 5)};
        players[0].MagHeading = c.MagHeading;
        Draw();
        EXPECT_EQ(surface.Operations()[1].Points[1], c.End) << c.MagHeading << " " << c.Variation;
    }
}

struct EdgeCase {
    double Lat;
    double Lon;
    bool Shown;
};
TEST_F(Targets, AreDrawnFromTheSecondPixelOn)
{
    constexpr double Nan = std::numeric_limits<double>::quiet_NaN();
    constexpr double Infinity = std::numeric_limits<double>::infinity();
    constexpr EdgeCase Cases[] = {{5, 0, false},   {5, 0.01, true}, {5, 9.99, true},      {5, 10, false},
                                  {10, 5, false},  {9.99, 5, true}, {0.01, 5, true},      {0, 5, false},
                                  {Nan, 5, false}, {5, Nan, false}, {Infinity, 5, false}, {5, -Infinity, false}};
    for (const EdgeCase& c : Cases) {
        players = {Pilot("N1", c.Lat, c.Lon)};
        EXPECT_EQ(!Drawn().empty(), c.Shown) << c.Lat << " " << c.Lon;
    }
}

TEST_F(Targets, SurviveAnEmptyScopeAndPositionsOffTheMap)
{
    players = {Pilot("N1", 5, 5)};
    view = ScopeView();
    EXPECT_THAT(Drawn(), IsEmpty());
    view = TenDegreeView();
    view.ScopeWidthPx = 0;
    EXPECT_THAT(Drawn(), IsEmpty());
    view = TenDegreeView();
    view.ViewNorth = 100; // a view may reach beyond the pole, a position may not
    players = {Pilot("N1", 95, 5)};
    EXPECT_THAT(Drawn(), IsEmpty());
    players.clear();
    EXPECT_THAT(Drawn(), IsEmpty());
}

class TargetsOverTerrain : public Targets {
protected:
    TargetsOverTerrain()
    {
        AirportRecord airport;
        airport.Icao = "EDAA";
        airport.Lat = 5;
        airport.Lon = 5;
        area.AreaAirports = {airport};
        area.TerrainPoints = {{5.3, 5, 3200}};
        for (const double lat : {5.3, 5.1, 11.0}) {
            players.push_back(Pilot("N1", lat, 5));
            players.back().FlightRules = 1;
            players.back().DestinationIcao = "edaa";
            players.back().MinimumAltitudeFt = 77;
        }
        players[2].DestinationIcao.clear();
    }
};

TEST_F(TargetsOverTerrain, ShowAndStoreTheMinimumAltitude)
{
    EXPECT_EQ(Drawn().at(4), "text 521,436 0,192,0 GS: 0kts  Min Alt: 5200ft");
    EXPECT_EQ(players[0].MinimumAltitudeFt, 5200);
    EXPECT_EQ(players[1].MinimumAltitudeFt, 2000);
    EXPECT_EQ(players[2].MinimumAltitudeFt, 77); // off the scope: its last value stays

    players[0].FlightRules = 0;
    EXPECT_EQ(Drawn().at(4), "text 521,436 0,192,0 GS: 0kts  Min Alt: -None-");
    EXPECT_EQ(players[0].MinimumAltitudeFt, 0);
}

TEST_F(TargetsOverTerrain, KeepTheMinimumAltitudeWhileMeasuring)
{
    EXPECT_EQ(Drawn(true).at(4), "text 521,436 0,192,0 GS: 0kts  Min Alt: 77ft");
    EXPECT_EQ(players[0].MinimumAltitudeFt, 77);
}

TEST(TargetTexts, AreRewrittenWhenAFieldShownChanges)
{
    TargetTexts texts;
    PlayerRecord target = Pilot("N1", 0, 0);
    EXPECT_EQ(texts.LinesFor(target, 2).Line1, "N1  Hdg: 0*  Alt: 0ft");
    target.Name = "N2";
    EXPECT_EQ(texts.LinesFor(target, 2).Line1, "N2  Hdg: 0*  Alt: 0ft");
    target.MagHeading = 12.5;
    EXPECT_EQ(texts.LinesFor(target, 2).Line1, "N2  Hdg: 12.5*  Alt: 0ft");
    target.AltitudeFt = 300;
    EXPECT_EQ(texts.LinesFor(target, 2).Line1, "N2  Hdg: 12.5*  Alt: 300ft");
    target.GroundSpeedKt = 99;
    EXPECT_EQ(texts.LinesFor(target, 2).Line2, "GS: 99kts  Min Alt: -None-");
    target.MinimumAltitudeFt = 2500;
    EXPECT_EQ(texts.LinesFor(target, 2).Line2, "GS: 99kts  Min Alt: 2500ft");
}
} // namespace
} // namespace corvane
