#include "radar/AirspaceLayer.h"

#include "tests/radar/OperationText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace corvane {
namespace {
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr BoundaryPoint Start(double lat, double lon)
{
    return {BoundaryKind::Start, lat, lon, 0};
}
constexpr BoundaryPoint ArcCenter(double lat, double lon)
{
    return {BoundaryKind::ArcCenter, lat, lon, 0};
}
constexpr BoundaryPoint Circle(std::int32_t nm)
{
    return {BoundaryKind::Circle, 0, 0, nm};
}
constexpr BoundaryPoint LineTo(double lat, double lon)
{
    return {BoundaryKind::Line, lat, lon, 0};
}
constexpr BoundaryPoint Clockwise(double lat, double lon)
{
    return {BoundaryKind::ClockwiseArc, lat, lon, 0};
}
constexpr BoundaryPoint CounterClockwise(double lat, double lon)
{
    return {BoundaryKind::CounterClockwiseArc, lat, lon, 0};
}

AirspaceRecord Airspace(const char* kind, std::vector<BoundaryPoint> points, double lat = 5, double lon = 5)
{
    AirspaceRecord airspace;
    airspace.ComName = "Center";
    airspace.Kind = kind;
    airspace.CenterLat = lat;
    airspace.CenterLon = lon;
    airspace.Points = std::move(points);
    return airspace;
}

struct AirspaceLayer : testing::Test {
    AreaModel Area;
    MagVarGrid Grid;
    DisplayFlags Flags;
    ScopeView View = TenDegreeView();
    RecordingSurface Recorder;

    AirspaceLayer() { View.ZoomLevel = 14; }
    [[nodiscard]] MapScene Scene() const { return {Area, Grid, View, Flags}; }
    std::vector<std::string> Layer()
    {
        Recorder.Clear();
        Recorder.RestoreDefaults();
        DrawAirspaces(Recorder, Scene());
        return OperationTexts(Recorder);
    }
    std::vector<std::string> Highlight(const PositionRecord& selection)
    {
        Recorder.Clear();
        Recorder.RestoreDefaults();
        DrawAirspaceHighlight(Recorder, Scene(), selection);
        EXPECT_EQ(Recorder.State, DrawState{});
        return OperationTexts(Recorder);
    }
};

// The rectangles' corners come from a separate great-circle calculation: 85 nm is round(sqrt(2) x 60), the diagonal of
// a square with half side 60.
TEST_F(AirspaceLayer, WalksEveryKindOfBoundary)
{
    Area.AreaAirspaces = {Airspace(HighSectorKind, {Start(2, 2),
                                                    LineTo(2, 3),
                                                    ArcCenter(5, 5),
                                                    Circle(20),
                                                    LineTo(6, 5),
                                                    Clockwise(5, 6),
                                                    CounterClockwise(6, 5),
                                                    {static_cast<BoundaryKind>(9), 1, 1, 1},
                                                    LineTo(2, 2)})};
    const std::string pen = " pen 0,255,255 w3 solid";
    EXPECT_THAT(Layer(), ElementsAre("ellipse 495,505 505,495 pen 0,255,255 w1 solid fill 0,255,255",
                                     "line 200,800 300,800" + pen, "ellipse 476,476 524,524" + pen,
                                     "line 300,800 500,400" + pen, // the circle leaves the position where it was
                                     "arc 399,400 600,600 600,500 500,400" + pen, // clockwise: from the end back
                                     "arc 399,400 600,600 600,500 500,400" + pen, "line 500,400 200,800" + pen));
}

TEST_F(AirspaceLayer, ArcsTakeEachCornerFromItsOwnEnd)
{
    // 120 nm (119.54) to the end: its corner lies 170 nm out; 60 nm to the start: 85 nm
    Area.AreaAirspaces = {Airspace(ClassBKind, {ArcCenter(5, 5), Start(6, 5), CounterClockwise(5, 7)})};
    EXPECT_THAT(Layer(), testing::Contains("arc 399,400 701,701 500,400 700,500 pen 0,255,255 w1 dash"));
    Area.AreaAirspaces = {Airspace(ClassBKind, {ArcCenter(5, 5), Start(5, 7), Clockwise(6, 5)})};
    EXPECT_THAT(Layer(), testing::Contains("arc 298,300 600,600 500,400 700,500 pen 0,255,255 w1 dash"));
}

TEST_F(AirspaceLayer, KeepsTheArcCenterButNotThePosition)
{
    Area.AreaAirspaces = {Airspace(ClassBKind, {ArcCenter(5, 5), Start(3, 3)}, 4, 4),
                          Airspace(ClassBKind, {Circle(20), LineTo(1, 1)}, 4, 4)};
    const auto drawn = Layer();
    ASSERT_THAT(drawn, SizeIs(4));
    EXPECT_THAT(drawn[2], testing::StartsWith("ellipse 476,476 524,524"));
    EXPECT_THAT(drawn[3], testing::StartsWith("line 0,1000 100,900")); // from 0, 0
    Area.AreaAirspaces.erase(Area.AreaAirspaces.begin());
    EXPECT_THAT(Layer()[1], testing::StartsWith("ellipse -24,976 24,1024")); // a new call starts at 0, 0
}

struct PenCase {
    const char* Name;
    const char* Kind;
    const char* Dot; ///< the colour
    const char* Outline;
};
class AirspacePens : public AirspaceLayer, public testing::WithParamInterface<PenCase> {};
TEST_P(AirspacePens, DependOnKindAndControl)
{
    Area.AreaMode = ControlMode::Sector;
    Area.AreaName = "Center"; // the facility's name, as every airspace here has it
    Area.AreaAirspaces = {Airspace(GetParam().Kind, {Start(1, 1), LineTo(2, 2)})};
    const std::string dot = GetParam().Dot;
    const auto drawn = Layer();
    ASSERT_THAT(drawn, SizeIs(2));
    EXPECT_EQ(drawn[0], "ellipse 495,505 505,495 pen " + dot + " w1 solid fill " + dot);
    EXPECT_EQ(drawn[1], std::string("line 100,900 200,800 pen ") + GetParam().Outline);
}
INSTANTIATE_TEST_SUITE_P(AirspaceLayer, AirspacePens,
                         testing::Values(PenCase{"High", HighSectorKind, "192,0,192", "192,0,192 w3 solid"},
                                         PenCase{"Tracon", TraconKind, "192,0,192", "0,255,255 w1 solid"},
                                         PenCase{"ClassB", ClassBKind, "192,0,192", "0,255,255 w1 dash"},
                                         PenCase{"ClassC", ClassCKind, "192,0,192", "0,255,255 w1 dash"},
                                         PenCase{"Other", ClassDKind, "192,0,192", "192,0,192 w1 solid"}),
                         [](const auto& row) { return std::string(row.param.Name); });

TEST_F(AirspaceLayer, OnlyTheControlledSectorIsMagenta)
{
    Area.AreaName = "Center";
    Area.AreaAirspaces = {Airspace(HighSectorKind, {})};
    Area.AreaMode = ControlMode::Airport;
    EXPECT_THAT(Layer(), ElementsAre("ellipse 495,505 505,495 pen 0,255,255 w1 solid fill 0,255,255"));
    Area.AreaMode = ControlMode::Sector;
    Area.AreaAirspaces[0].ComName = "center"; // exactly equal it must be
    EXPECT_THAT(Layer(), ElementsAre("ellipse 495,505 505,495 pen 0,255,255 w1 solid fill 0,255,255"));
}

TEST_F(AirspaceLayer, CirclesOfOtherKindsStayFilled)
{
    Area.AreaAirspaces = {Airspace(ClassDKind, {ArcCenter(5, 5), Circle(20)}),
                          Airspace(TraconKind, {ArcCenter(5, 5), Circle(20)})};
    const auto drawn = Layer();
    EXPECT_EQ(drawn[1], "ellipse 476,476 524,524 pen 0,255,255 w1 solid fill 0,255,255");
    EXPECT_EQ(drawn[3], "ellipse 476,476 524,524 pen 0,255,255 w1 solid");
}

TEST_F(AirspaceLayer, SkipsLowSectorsHiddenTraconsAndCentersOffTheScope)
{
    Area.AreaAirspaces = {Airspace(LowSectorKind, {}), Airspace(TraconKind, {}), Airspace(ClassBKind, {}, 5, 0),
                          Airspace(ClassBKind, {Start(5, 5), LineTo(6, 6)}, 5, 10)};
    Flags.ShowTracon = false;
    EXPECT_THAT(Layer(), IsEmpty());
    Flags.ShowTracon = true;
    EXPECT_THAT(Layer(), SizeIs(1));
}

TEST_F(AirspaceLayer, HighlightsTheLastOfEqualCenters)
{
    Area.AreaAirspaces = {Airspace(ClassBKind, {Start(1, 1), LineTo(2, 2)}),
                          Airspace(LowSectorKind, {Start(3, 3), LineTo(4, 4)}), // hidden, but not when selected
                          Airspace(HighSectorKind, {}, 5, 5.000001)};
    EXPECT_THAT(Highlight({"Current Selected Airspace", LowSectorKind, 5, 5}),
                ElementsAre("ellipse 495,505 505,495 pen 255,255,0 w1 solid fill 255,255,0",
                            "line 300,700 400,600 pen 255,255,0 w1 solid"));
    EXPECT_THAT(Highlight({"", LowSectorKind, 5, 5}), IsEmpty());
    EXPECT_THAT(Highlight({"Current Selected Airspace", "", 5, 5}), IsEmpty());
    EXPECT_THAT(Highlight({"Current Selected Airspace", LowSectorKind, 5, 6}), IsEmpty());
}

TEST_F(AirspaceLayer, HighlightNeedsNoCenterOnTheScope)
{
    Area.AreaAirspaces = {Airspace(HighSectorKind, {Start(1, 1), LineTo(2, 2)}, 50, 50)};
    EXPECT_THAT(Layer(), IsEmpty());
    EXPECT_THAT(Highlight({"Current Selected Airspace", HighSectorKind, 50, 50}),
                ElementsAre("ellipse 4995,-3995 5005,-4005 pen 255,255,0 w1 solid fill 255,255,0",
                            "line 100,900 200,800 pen 255,255,0 w3 solid"));
}

TEST_F(AirspaceLayer, DamagedPointsBreakTheOutlineOnly)
{
    constexpr double Nan = std::numeric_limits<double>::quiet_NaN();
    constexpr std::int32_t Huge = std::numeric_limits<std::int32_t>::max();
    Area.AreaAirspaces = {Airspace(ClassBKind, {Start(1, 1), LineTo(Nan, 2), LineTo(3, 3), LineTo(4, 4),
                                                ArcCenter(5, 1e300), Circle(20), Clockwise(6, 6), LineTo(7, 7)})};
    const std::string pen = " pen 0,255,255 w1 dash";
    EXPECT_THAT(Layer(), ElementsAre("ellipse 495,505 505,495 pen 0,255,255 w1 solid fill 0,255,255",
                                     "line 300,700 400,600" + pen, "line 600,400 700,300" + pen));
    Area.AreaAirspaces = {Airspace(ClassBKind, {ArcCenter(5, 5), Circle(Huge), Circle(-Huge)})};
    EXPECT_THAT(Layer(), SizeIs(3));
}
} // namespace
} // namespace corvane
