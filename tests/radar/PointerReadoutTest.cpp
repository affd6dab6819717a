#include "radar/PointerReadout.h"

#include "radar/RecordingSurface.h"
#include "tests/radar/OperationText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace corvane {
namespace {
using testing::ElementsAre;
using testing::IsEmpty;

/// What of a position record the tests compare.
testing::Matcher<PositionRecord> Position(const char* name, const char* kind, double lat, double lon)
{
    return testing::AllOf(testing::Field(&PositionRecord::Name, name), testing::Field(&PositionRecord::Kind, kind),
                          testing::Field(&PositionRecord::Lat, lat), testing::Field(&PositionRecord::Lon, lon));
}

TEST(Pointer, IsKeptAsDeliveredAndNormalized)
{
    PointerState state;
    MovePointer(state, {183, -12.5F});
    EXPECT_THAT(state.PointerPositionRaw, Position("Mouse Position in Radar Screen", "Fix point", -12.5, 183));
    EXPECT_THAT(state.PointerPosition, Position("Mouse Position in Radar Screen", "Fix point", -12.5, -177));
    MovePointer(state, {0.1F, 0.2F}); // single precision, widened
    EXPECT_EQ(state.PointerPosition.Lon, 0.10000000149011612);
    EXPECT_EQ(state.PointerPosition.Lat, 0.20000000298023224);
}

TEST(Pointer, MovementHidesThePanelAndClearsTheSelection)
{
    PointerState state;
    state.PanelText = "NDB ID: ABC";
    state.SelectedAirspace = {"Current Selected Airspace", "Airspace Class B", 1, 2};
    MovePointer(state, {5, 5});
    EXPECT_EQ(state.PanelText, "");
    EXPECT_THAT(state.SelectedAirspace, Position("", "", 0, 0));

    state.SelectedAirspace = {"Current Selected Airspace", "", 1, 2}; // an airspace without a kind is none
    MovePointer(state, {5, 5});
    EXPECT_THAT(state.SelectedAirspace, Position("Current Selected Airspace", "", 1, 2));
}

TEST(Pointer, MeasuresWhileTheLeftButtonIsHeld)
{
    PointerState state;
    PressLeftButton(state, {181, 47});
    EXPECT_TRUE(state.MeasureActive);
    EXPECT_EQ(state.FixLat, 47);
    EXPECT_EQ(state.FixLon, -179);
    ReleaseLeftButton(state);
    EXPECT_FALSE(state.MeasureActive);
    EXPECT_EQ(state.FixLat, 0);
    EXPECT_EQ(state.FixLon, 0);
}

TEST(Pointer, RightClickCentresOnTheNormalizedLongitude)
{
    EXPECT_EQ(RecenterPosition({183, 12}), (LatLon{12, -177}));
}

class Measurement : public testing::Test {
protected:
    std::vector<std::string> Drawn(LatLon fix, LatLon pointer)
    {
        surface.Clear();
        DrawMeasurement(surface, view, grid, fix, pointer);
        EXPECT_EQ(surface.State, DrawState());
        return OperationTexts(surface);
    }

    MagVarGrid grid;
    ScopeView view = TenDegreeView();
    RecordingSurface surface;
};

// To 7 miles north and 0.6 west the course is 355.1 degrees; 4 miles along it is 0.0665 north and 0.0047 west.
TEST_F(Measurement, IsADottedLineWithItsReadoutHalfWay)
{
    EXPECT_THAT(Drawn({5, 5}, {5 + 7.0 / 60, 4.99}), ElementsAre("line 500,500 499,488 pen 0,192,0 w1 dot",
                                                                 "text 500,493 255,255,255 Dist: 7 nm  Course: 356 *"));
}

TEST_F(Measurement, HalvesAnOddDistanceToEven)
{
    EXPECT_EQ(Drawn({5, 5}, {5 + 5.0 / 60, 4.99}).at(1), "text 500,497 255,255,255 Dist: 5 nm  Course: 354 *");
}

TEST_F(Measurement, ShowsTheMagneticCourseButFollowsTheTrueOne)
{
    grid.Values.fill(1821); // 10 degrees east
    EXPECT_EQ(Drawn({5, 5}, {5 + 7.0 / 60, 4.99}).at(1), "text 500,493 255,255,255 Dist: 7 nm  Course: 346 *");
}

TEST_F(Measurement, OfNoDistanceReadsCourse360)
{
    EXPECT_EQ(Drawn({5, 5}, {5, 5}).at(1), "text 500,500 255,255,255 Dist: 0 nm  Course: 360 *");
}

TEST_F(Measurement, CrossesTheDateLine)
{
    view.ViewWest = 175;
    view.ViewEast = -175;
    view.ViewCenter.Lon = 180;
    PointerState state;
    PressLeftButton(state, {179, 5});
    MovePointer(state, {181, 5});
    DrawMeasurement(surface, view, grid, state);
    const auto drawn = OperationTexts(surface); // 120 miles times the cosine of 5 degrees; half-way at 180
    ASSERT_EQ(drawn.size(), 2U);
    EXPECT_EQ(drawn[0], "line 400,500 600,500 pen 0,192,0 w1 dot");
    EXPECT_EQ(drawn[1], "text 500,500 255,255,255 Dist: 120 nm  Course: 90 *");
}

TEST_F(Measurement, IsDrawnOnlyWhileTheButtonIsHeld)
{
    DrawMeasurement(surface, view, grid, PointerState());
    EXPECT_THAT(surface.Operations(), IsEmpty());
}

TEST_F(Measurement, SurvivesPolesAndMissingNumbers)
{
    constexpr double Nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(Drawn({90, 0}, {5, 5}).size(), 2U);
    EXPECT_EQ(Drawn({Nan, 5}, {5, Nan}).size(), 2U);
    view = ScopeView();
    EXPECT_EQ(Drawn({5, 5}, {6, 6}).size(), 2U);
}
} // namespace
} // namespace corvane
