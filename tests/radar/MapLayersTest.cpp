#include "radar/MapLayers.h"

#include "radar/AirportLayers.h"
#include "radar/NavaidLayer.h"
#include "radar/OutlineLayer.h"
#include "radar/RangeRings.h"
#include "tests/radar/OperationText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <set>

namespace corvane {
namespace {
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

constexpr double Nan = std::numeric_limits<double>::quiet_NaN();

/// An area with its grid, flags and view, drawn on a recorder.
struct MapLayers : testing::Test {
    AreaModel Area;
    MagVarGrid Grid;
    DisplayFlags Flags;
    ScopeView View = TenDegreeView();
    RecordingSurface Recorder;

    [[nodiscard]] MapScene Scene() const { return {Area, Grid, View, Flags}; }
    std::vector<std::string> Drawn() const { return OperationTexts(Recorder); }
    std::vector<std::string> Map()
    {
        Recorder.Clear();
        DrawMapLayers(Recorder, Scene());
        EXPECT_EQ(Recorder.State, DrawState{});
        return Drawn();
    }
    /// 1000 x 1000 pixels over a tenth of a degree from (5, 5): 10000 pixels to a degree, level 35.
    void LookClosely()
    {
        View.ViewWest = View.SavedWest = 5;
        View.ViewEast = View.SavedEast = 5.1;
        View.ViewNorth = View.SavedNorth = 5.1;
        View.ViewSouth = View.SavedSouth = 5;
        View.ZoomLevel = 35;
    }
};

AirportRecord Airfield()
{
    AirportRecord airport;
    airport.Name = "Alpha";
    airport.Icao = "AAAA";
    airport.Lat = 5.05;
    airport.Lon = 5.05;
    airport.Parkings = {{"GATE A 1", 5.06, 5.06, 50}};
    airport.TaxiPoints = {{1, 5.05, 5.05}, {1, 5.06, 5.06}};
    airport.TaxiPaths = {{0, 0, 1, "B"}};
    RunwayRecord runway;
    runway.Designation = "9";
    runway.ReciprocalDesignation = "27";
    runway.CenterLat = runway.End1Lat = runway.End2Lat = 5.02;
    runway.CenterLon = 5.05;
    runway.End1Lon = 5.04;
    runway.End2Lon = 5.06;
    airport.Runways = {runway};
    airport.Ils = {{"IAA", 5.05, 5.05, 90, "110.3"}};
    return airport;
}

TEST_F(MapLayers, RangeRingsAreInscribedBetweenTheDiagonals)
{
    DrawRangeRings(Recorder, View); // centred on 5, 5; corners from a separate great-circle calculation
    const std::string pen = " pen 128,128,128 w1 dash";
    EXPECT_THAT(Drawn(), ElementsAre("ellipse 488,488 512,512" + pen, "ellipse 476,476 524,524" + pen,
                                     "ellipse 464,465 535,535" + pen, "ellipse 453,453 547,547" + pen,
                                     "ellipse 441,441 559,559" + pen, "ellipse 429,429 571,571" + pen,
                                     "ellipse 417,418 583,583" + pen, "ellipse 405,406 595,594" + pen,
                                     "ellipse 393,394 606,606" + pen));
    EXPECT_EQ(Recorder.State, DrawState{});
}

TEST_F(MapLayers, OutlinesJoinVisiblePointsOfOnePolyline)
{
    View.OutlineStep = 2;
    const std::vector<OutlinePoint> points = {
        {1, 1}, {1.5, 1.5}, {2, 2}, // 0..2: the odd index is passed over
        {3, 3}, {20, 20},   {4, 4}, // 3..5: off the scope at 4
        {5, 5}, {0, 0},     {6, 6}, // 6..8: joined across the gap; the separator at 7 breaks
        {7, 0}, {7, 7},     {8, 8}, // 9..11: on the prime meridian, but passed over
        {8, 0}, {8.5, 8},   {9, 8}, // 12..14: off the scope (x = 0), so no break either
    };
    DrawWorldOutlines(Recorder, View, points);
    const std::string pen = " pen 128,128,128 w1 solid";
    EXPECT_THAT(Drawn(), ElementsAre("line 100,900 200,800" + pen, "line 200,800 500,500" + pen,
                                     "line 600,400 700,300" + pen, "line 700,300 800,100" + pen));
}

TEST_F(MapLayers, OutlinePointsOnAnAxisLiftThePenWhereTheStrideLands)
{
    View.ViewSouth = -5; // the equator runs across the scope
    View.ViewNorth = 5;
    View.OutlineStep = 1;
    const std::vector<OutlinePoint> points = {{1, 1}, {0, 2}, {1, 3}, {1, 4}};
    DrawWorldOutlines(Recorder, View, points);
    EXPECT_THAT(Drawn(), ElementsAre("line 300,400 400,400 pen 128,128,128 w1 solid"));
    Recorder.Clear();
    View.OutlineStep = 2; // 0 and 2: the point on the equator is passed over
    DrawWorldOutlines(Recorder, View, points);
    EXPECT_THAT(Drawn(), ElementsAre("line 100,400 300,400 pen 128,128,128 w1 solid"));
}

TEST_F(MapLayers, AirportDetailsInOrderWithTheirPens)
{
    LookClosely();
    Area.AreaAirports = {Airfield()};
    Area.AreaNdbs = {{"Ndb", "N", 5.01, 5.01, "350", 30}};
    Area.AreaVors = {{"Vor", "V", 5.01, 5.09, "113.9", 100}};
    EXPECT_THAT(
        Map(),
        ElementsAre("ellipse 595,405 605,395 pen 128,64,64 w1 solid fill 128,64,64",
                    "line 500,500 600,400 pen 192,192,192 w2 solid", // 5149 ft: named at 2574 ft on course 45
                    "text 550,450 255,255,255 B", "line 400,800 600,800 pen 0,192,0 w2 solid",
                    "text 400,800 255,255,255 9", "text 600,800 255,255,255 27",
                    "line 500,500 451,504 pen 255,255,0 w2 solid", "line 451,504 451,496 pen 255,255,0 w2 solid",
                    "line 451,496 500,500 pen 255,255,0 w2 solid", "text 500,500 255,255,255 Alpha - AAAA",
                    "ellipse 95,905 105,895 pen 0,255,0 w1 solid", "ellipse 90,910 110,890 pen 0,255,0 w1 solid",
                    "ellipse 895,905 905,895 pen 0,0,255 w1 solid", "ellipse 890,910 910,890 pen 0,0,255 w1 solid"));
}

TEST_F(MapLayers, VariationTurnsIlsAndTaxiwayNames)
{
    LookClosely();
    Grid.Values.fill(1821); // 10.003 degrees east
    AirportRecord airport = Airfield();
    airport.Runways.clear();
    airport.Parkings.clear();
    Area.AreaAirports = {airport};
    Flags.ShowAirportNames = false;
    EXPECT_THAT(Map(), ElementsAre("line 500,500 600,400 pen 192,192,192 w2 solid",
                                   "text 541,442 255,255,255 B", // along 45 - 10, taken as true
                                   "line 500,500 451,496 pen 255,255,0 w2 solid",
                                   "line 451,496 452,487 pen 255,255,0 w2 solid",
                                   "line 452,487 500,500 pen 255,255,0 w2 solid"));
}

TEST_F(MapLayers, TaxiwayKindsAndDamagedIndexes)
{
    LookClosely();
    AirportRecord airport = Airfield();
    airport.TaxiPoints.push_back({1, 6, 6}); // off the scope
    airport.TaxiPoints.push_back({1, 6, 5.5});
    airport.TaxiPoints.push_back({1, Nan, 5.05});
    constexpr std::int32_t Far = std::numeric_limits<std::int32_t>::max();
    airport.TaxiPaths = {{0, 0, 1, " "},  {0, 0, 1, ""},  {1, 0, 1, "Runway 9"}, {2, 0, 0, "A"},  {3, 0, 1, "X"},
                         {-1, 0, 1, "X"}, {2, 0, 1, "X"}, {0, 0, 5, "X"},        {0, -1, 0, "X"}, {0, Far, 0, "X"},
                         {0, 2, 3, "X"},  {0, 0, 4, "X"}, {1, 0, 2, "half seen"}};
    DrawTaxiways(Recorder, Scene(), airport);
    const std::string pen = " pen 192,192,192 w2 solid";
    EXPECT_THAT(Drawn(),
                ElementsAre("line 500,500 600,400" + pen, "line 500,500 600,400" + pen, "line 500,500 600,400" + pen,
                            "line 500,500 600,400" + pen, "line 500,500 10000,-9000" + pen));
    Recorder.Clear();
    Flags.ShowTaxiwayIds = false;
    DrawTaxiways(Recorder, Scene(), Airfield());
    EXPECT_EQ(Drawn().size(), 1U);
}

TEST_F(MapLayers, RunwaysShowWhenAnyOfThreePointsDoes)
{
    LookClosely();
    AirportRecord airport = Airfield();
    RunwayRecord& runway = airport.Runways[0];
    runway.CenterLon = 4.9;
    runway.End1Lon = 4.8;
    DrawRunways(Recorder, View, airport); // the second end is left on the scope
    EXPECT_THAT(Drawn(), ElementsAre("line -2000,800 600,800 pen 0,192,0 w2 solid", "text -2000,800 255,255,255 9",
                                     "text 600,800 255,255,255 27"));
    Recorder.Clear();
    Recorder.RestoreDefaults();
    runway.End2Lon = 4.9;
    DrawRunways(Recorder, View, airport);
    EXPECT_THAT(Drawn(), IsEmpty());
    EXPECT_EQ(Recorder.State, DrawState{}); // the pen is named after the visibility test
}

TEST_F(MapLayers, GatesLeaveTheFillSolidEvenUnseen)
{
    LookClosely();
    AirportRecord airport = Airfield();
    airport.Parkings[0].Lat = 50;
    DrawGates(Recorder, View, airport);
    EXPECT_THAT(Drawn(), IsEmpty());
    EXPECT_TRUE(Recorder.State.FillSolid);
    EXPECT_EQ(Recorder.State.PenColor, (Color{128, 64, 64}));
}

TEST_F(MapLayers, PenCarriesOverFromTheLastAirspaceToAnIls)
{
    View = StartUpView(1000, 1000, {5, 5}, 30);
    AirportRecord airport = Airfield();
    airport.Lat = airport.Lon = airport.Ils[0].Lat = airport.Ils[0].Lon = 5;
    airport.Runways.clear();
    Area.AreaAirports = {airport};
    AirspaceRecord airspace;
    airspace.CenterLat = airspace.CenterLon = 5;
    Flags.ShowRangeRings = false;
    struct {
        const char* Kind;
        const char* Pen;
    } const cases[] = {{HighSectorKind, "pen 255,255,0 w3 solid"}, {ClassBKind, "pen 255,255,0 w1 dash"}};
    for (const auto& c : cases) {
        airspace.Kind = c.Kind;
        Area.AreaAirspaces = {airspace};
        const auto drawn = Map(); // centre dot, three ILS lines, name
        ASSERT_EQ(drawn.size(), 5U);
        EXPECT_THAT(drawn[1], testing::EndsWith(c.Pen));
    }
}

TEST_F(MapLayers, AirportsOutsideTheSavedRectangleHaveNoDetails)
{
    LookClosely();
    Area.AreaAirports = {Airfield()};
    View.SavedWest = 5.05; // the airport's own pixel column: strictly inside it must be
    EXPECT_THAT(Map(), IsEmpty());
    View.SavedWest = 5.0499;
    EXPECT_THAT(Map(), testing::Not(IsEmpty()));
}

TEST_F(MapLayers, DotsOfAirportsAndStationsFarOut)
{
    View.ZoomLevel = 24;
    Flags.ShowRangeRings = false;
    AirportRecord airport;
    const auto add = [&](double lat, double lon) {
        airport.Lat = lat;
        airport.Lon = lon;
        Area.AreaAirports.push_back(airport);
    };
    add(5, 5);
    add(5, 0);  // x = 0
    add(5, 10); // x = width
    add(9.99, 9.99);
    Area.AreaNdbs = {{"", "", 1, 2, "", 0}, {"", "", 11, 2, "", 0}};
    Area.AreaVors = {{"", "", 3, 4, "", 0}};
    EXPECT_THAT(Map(), ElementsAre("pixel 500,500 255,0,0", "pixel 999,1 255,0,0", "pixel 200,900 0,255,0",
                                   "pixel 400,700 0,0,255"));
}

/// Everything at one point, named by what its operations look like.
std::set<std::string> LayersIn(const std::vector<std::string>& drawn)
{
    struct {
        const char* Layer;
        const char* Start;
        const char* Part;
    } const marks[] = {{"rings", "ellipse", "128,128,128 w1 dash"},
                       {"outlines", "line", "pen 128,128,128 w1"},
                       {"airspaces", "ellipse", "0,255,255"},
                       {"dots", "pixel", " 255,0,0"},
                       {"names", "text", "Alpha - AAAA"},
                       {"runways", "text", " 255,255,255 27"},
                       {"ils", "line", "pen 255,255,0"},
                       {"taxiways", "line", "pen 192,192,192"},
                       {"ids", "text", " 255,255,255 B"},
                       {"gates", "ellipse", "fill 128,64,64"},
                       {"vor-circles", "ellipse", "pen 0,0,255"},
                       {"vor-pixels", "pixel", " 0,0,255"},
                       {"ndb-circles", "ellipse", "pen 0,255,0"},
                       {"ndb-pixels", "pixel", " 0,255,0"}};
    std::set<std::string> layers;
    for (const std::string& line : drawn)
        for (const auto& mark : marks)
            if (line.starts_with(mark.Start) && line.find(mark.Part) != std::string::npos)
                layers.insert(mark.Layer);
    return layers;
}

struct EverythingHere : MapLayers {
    void SetUp() override
    {
        AirportRecord airport = Airfield();
        airport.Lat = airport.Lon = 5;
        airport.Parkings[0].Lat = airport.Parkings[0].Lon = 5;
        airport.TaxiPoints = {{1, 5, 5}, {1, 5, 5}};
        RunwayRecord& runway = airport.Runways[0];
        runway.CenterLat = runway.CenterLon = runway.End1Lat = 5;
        runway.End1Lon = runway.End2Lat = runway.End2Lon = 5;
        airport.Ils[0].Lat = airport.Ils[0].Lon = 5;
        Area.AreaAirports = {airport};
        Area.AreaNdbs = Area.AreaVors = {{"", "", 5, 5, "", 0}};
        Area.AreaAirspaces.resize(1);
        Area.AreaAirspaces[0].Kind = TraconKind;
        Area.AreaAirspaces[0].CenterLat = Area.AreaAirspaces[0].CenterLon = 5;
        Area.OutlinePoints.assign(40, {5, 5});
    }
    std::set<std::string> LayersAt(std::int16_t level)
    {
        View = StartUpView(1000, 1000, {5, 5}, level);
        return LayersIn(Map());
    }
};

TEST_F(EverythingHere, ShowsByZoomLevel)
{
    using Layers = std::set<std::string>;
    const Layers world = {"outlines", "dots", "vor-pixels", "ndb-pixels"};
    const Layers region = {"outlines", "rings", "airspaces", "dots", "vor-pixels", "ndb-pixels"};
    const Layers terminal = {"outlines", "rings", "airspaces", "names", "vor-circles", "ndb-circles"};
    const Layers runways = {"outlines", "rings", "airspaces", "names", "runways", "ils", "vor-circles", "ndb-circles"};
    const Layers ground = {"outlines", "names", "runways",     "ils",        "taxiways",
                           "ids",      "gates", "vor-circles", "ndb-circles"};
    const std::pair<std::int16_t, Layers> cases[] = {{1, world},    {4, world},     {5, region},    {14, region},
                                                     {24, region},  {25, terminal}, {29, terminal}, {30, runways},
                                                     {34, runways}, {35, ground},   {36, ground},   {55, ground}};
    for (const auto& [level, layers] : cases)
        EXPECT_EQ(LayersAt(level), layers) << level;
    View.ZoomLevel = 0;
    EXPECT_THAT(Map(), IsEmpty());
}

TEST_F(EverythingHere, FlagsHideTheirLayerAlone)
{
    struct Case {
        std::string_view Flag;
        std::int16_t Level;
        std::set<std::string> Hidden;
    };
    const Case cases[] = {
        {"Runways", 35, {"runways"}},  {"AirportLocations", 14, {"dots"}}, {"Ndbs", 35, {"ndb-circles"}},
        {"Vors", 14, {"vor-pixels"}},  {"RangeRings", 14, {"rings"}},      {"WorldMap", 1, {"outlines"}},
        {"Tracon", 14, {"airspaces"}}, {"Airspaces", 14, {"airspaces"}},   {"AirportNames", 35, {"names"}},
        {"Gates", 35, {"gates"}},      {"TaxiwayIds", 35, {"ids"}},        {"Taxiways", 35, {"taxiways", "ids"}},
        {"Ils", 35, {"ils"}}};
    ASSERT_EQ(std::size(cases), DisplayFlagNames.size());
    for (std::size_t i = 0; i < DisplayFlagNames.size(); ++i) {
        ASSERT_EQ(DisplayFlagNames[i].Name, cases[i].Flag);
        std::set<std::string> expected = LayersAt(cases[i].Level);
        for (const std::string& layer : cases[i].Hidden)
            EXPECT_EQ(expected.erase(layer), 1U) << cases[i].Flag << " " << layer;
        Flags.*DisplayFlagNames[i].Flag = false;
        EXPECT_EQ(LayersAt(cases[i].Level), expected) << cases[i].Flag;
        Flags.*DisplayFlagNames[i].Flag = true;
    }
}

TEST_F(EverythingHere, DamagedPositionsDrawNothing)
{
    for (const double bad : {Nan, std::numeric_limits<double>::infinity(), 1e300, -1e300, 91.0}) {
        AirportRecord& airport = Area.AreaAirports[0];
        airport.Lat = airport.Runways[0].End1Lat = airport.Ils[0].Lat = airport.Parkings[0].Lat = bad;
        Area.AreaNdbs[0].Lat = Area.AreaVors[0].Lat = Area.AreaAirspaces[0].CenterLat = bad;
        Area.OutlinePoints.assign(40, {bad, 5});
        for (const std::int16_t level : std::array<std::int16_t, 4>{1, 14, 25, 35})
            EXPECT_THAT(LayersAt(level), testing::IsSubsetOf({"rings"})) << bad << " " << level;
    }
}

TEST_F(EverythingHere, EmptyAreasScopesAndUnplacedViewsAreQuiet)
{
    View = StartUpView(0, 0, {5, 5}, 36);
    EXPECT_THAT(Map(), IsEmpty());
    View = StartUpView(1000, 1000, {Nan, Nan}, 14);
    EXPECT_THAT(Map(), IsEmpty());
    Area = {};
    EXPECT_EQ(LayersAt(14), std::set<std::string>{"rings"});
    EXPECT_THAT(LayersAt(36), IsEmpty());
}
} // namespace
} // namespace corvane
