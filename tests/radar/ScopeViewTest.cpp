#include "radar/ScopeView.h"

#include "core/Geodesy.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace corvane {
namespace {
constexpr double Nan = std::numeric_limits<double>::quiet_NaN();
constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr std::int32_t Highest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t Lowest = std::numeric_limits<std::int32_t>::min();

/// 8 x 8 pixels over 0..8 degrees: pixel ties are exact.
ScopeView PixelADegreeView()
{
    ScopeView view;
    view.ViewEast = 8;
    view.ViewNorth = 8;
    view.ScopeWidthPx = 8;
    view.ScopeHeightPx = 8;
    return view;
}

/// 165 east to 175 west on 800 x 400 pixels, split at 5 west.
ScopeView CrossingView()
{
    ScopeView view;
    view.ViewWest = 0;
    view.ViewEast = 20;
    view.ViewNorth = 10;
    view.ViewSouth = 0;
    view.ScopeWidthPx = 800;
    view.ScopeHeightPx = 400;
    RecenterView(view, {5, 175});
    return view;
}

struct ProjectCase {
    const char* Name;
    double Lat, Lon;
    std::int32_t X, Y;
};
std::string CaseName(const testing::TestParamInfo<ProjectCase>& row)
{
    return row.param.Name;
}

class NormalView : public testing::TestWithParam<ProjectCase> {};
TEST_P(NormalView, MapsDegreesToPixels)
{
    const ScopePoint at = ProjectToScope(PixelADegreeView(), {GetParam().Lat, GetParam().Lon});
    EXPECT_EQ(at, (ScopePoint{GetParam().X, GetParam().Y}));
}
INSTANTIATE_TEST_SUITE_P(Projection, NormalView,
                         testing::Values(ProjectCase{"TopLeft", 8, 0, 0, 0}, ProjectCase{"BottomRight", 0, 8, 8, 8},
                                         ProjectCase{"TiesToEvenDown", 7.5, 0.5, 0, 0},
                                         ProjectCase{"TiesToEvenUp", 6.5, 1.5, 2, 2},
                                         ProjectCase{"TiesToEvenAgain", 5.5, 2.5, 2, 2},
                                         ProjectCase{"TiesOutside", 8.5, -0.5, 0, 0},
                                         ProjectCase{"FarOutside", 90, -180, -180, -82},
                                         ProjectCase{"HeldToThirtyTwoBits", 1e12, 1e12, Highest, Lowest},
                                         ProjectCase{"Infinite", -Infinity, -Infinity, Lowest, Highest},
                                         ProjectCase{"NotANumber", Nan, Nan, 0, 0}),
                         CaseName);

class ViewAcross180 : public testing::TestWithParam<ProjectCase> {};
TEST_P(ViewAcross180, SplitsOppositeItsCenter)
{
    const ScopePoint at = ProjectToScope(CrossingView(), {GetParam().Lat, GetParam().Lon});
    EXPECT_EQ(at, (ScopePoint{GetParam().X, GetParam().Y}));
}
INSTANTIATE_TEST_SUITE_P(
    Projection, ViewAcross180,
    testing::Values(ProjectCase{"WestEdge", 5, 165, 0, 200}, ProjectCase{"East", 5, 170, 200, 200},
                    ProjectCase{"JustWestOf180", 0, 179, 560, 400}, ProjectCase{"JustEastOf180", 10, -179, 640, 0},
                    ProjectCase{"EightyFivePercent", 5, -178, 680, 200}, ProjectCase{"LeftOfTheView", 5, 164, -40, 200},
                    ProjectCase{"SplitCountsAsWest", 5, -5, -6800, 200},
                    ProjectCase{"JustPastTheSplit", 5, -6, 7560, 200}, ProjectCase{"OffTheMap", 5, 190, 0, 0},
                    ProjectCase{"NotANumber", 5, Nan, 0, 0}),
    CaseName);

TEST(Projection, OfAnEmptyViewIsTheCorner)
{
    EXPECT_EQ(ProjectToScope(ScopeView{}, {10, 10}), ScopePoint{});
    ScopeView noSize = PixelADegreeView();
    noSize.ScopeWidthPx = 0;
    noSize.ScopeHeightPx = 0;
    EXPECT_FALSE(InsideScope(noSize, ProjectToScope(noSize, {4, 4})));
    EXPECT_EQ(DegreesAtPixel(noSize, {5, 5}), (ScopeDegrees{0, 8}));
}

TEST(InsideScope, LeavesOutTheFirstRowAndColumn)
{
    const ScopeView view = CrossingView();
    EXPECT_TRUE(InsideScope(view, {1, 1}));
    EXPECT_TRUE(InsideScope(view, {799, 399}));
    for (const ScopePoint out : {ScopePoint{0, 1}, {1, 0}, {800, 1}, {1, 400}, {-1, 5}})
        EXPECT_FALSE(InsideScope(view, out)) << out.X << "," << out.Y;
}

TEST(OnEarth, EndsAtPolesAndDateLine)
{
    EXPECT_TRUE(OnEarth({90, -180}));
    EXPECT_TRUE(OnEarth({-90, 180}));
    for (const auto& [lat, lon] : {std::pair{90.001, 0.0}, {0.0, 180.001}, {Nan, 0.0}, {0.0, Nan}, {Infinity, 0.0}})
        EXPECT_FALSE(OnEarth({lat, lon})) << lat << "," << lon;
}

TEST(VisiblePixel, AgreesWithProjectionAndInsideTest)
{
    std::mt19937 random(5);
    std::uniform_real_distribution<double> lon(-180, 180);
    std::uniform_real_distribution<double> lat(-90, 90);
    std::uniform_int_distribution<int> edge(-1, 801);
    for (int i = 0; i < 20000; ++i) {
        ScopeView view = CrossingView();
        RecenterView(view, {i % 2 == 0 ? 85 : lat(random), i % 3 == 0 ? 175 : lon(random)});
        const double x = i % 2 == 0 ? lon(random) : NormalizeLongitude(view.ViewWest + edge(random) * 0.025);
        const double y = i % 2 == 0 ? lat(random) : view.ViewNorth - edge(random) * 0.025;
        const ScopePoint at = ProjectToScope(view, {y, x});
        const auto expected = InsideScope(view, at) && OnEarth({y, x}) ? std::optional(at) : std::nullopt;
        ASSERT_EQ(VisiblePixel(view, {y, x}).has_value(), expected.has_value())
            << y << "," << x << " " << view.ViewWest;
        ASSERT_EQ(VisiblePixel(view, {y, x}).value_or(at), at);
    }
}

TEST(StartUp, EndsSixteenDegreesWideAtLevel14)
{
    const ScopeView view = StartUpView(1024, 768, {47.4, -122.3});
    EXPECT_EQ(view.ZoomLevel, 14);
    EXPECT_EQ(view.OutlineStep, 5);
    EXPECT_NEAR(view.ViewEast - view.ViewWest, 291.9998 * std::pow(0.8, 13), 1e-9);
    EXPECT_NEAR((view.ViewNorth + view.ViewSouth) / 2, 47.4, 1e-9);
    EXPECT_NEAR((view.ViewWest + view.ViewEast) / 2, -122.3, 1e-9);
    EXPECT_EQ(view.SavedWest, view.ViewWest);
    EXPECT_EQ(view.SavedSouth, view.ViewSouth);
}

TEST(Zoom, StopsAtBothEnds)
{
    ScopeView view = StartUpView(800, 600, {0, 0});
    for (int press = 0; press < 41; ++press)
        ZoomIn(view);
    EXPECT_EQ(view.ZoomLevel, 55);
    const ScopeView closest = view;
    ZoomIn(view);
    EXPECT_EQ(view, closest);
    ZoomTo(view, -3);
    EXPECT_EQ(view.ZoomLevel, 1);
    const ScopeView world = view;
    ZoomOut(view);
    EXPECT_EQ(view, world);
}

struct StrideCase {
    std::int16_t First; ///< level to go to
    std::int16_t Then;
    std::int16_t OutlineStep;
};
class OutlineStride : public testing::TestWithParam<StrideCase> {};
TEST_P(OutlineStride, FollowsTheStepsTaken)
{
    ScopeView view = InitialView(800, 600);
    ZoomTo(view, GetParam().First);
    ZoomTo(view, GetParam().Then);
    EXPECT_EQ(view.OutlineStep, GetParam().OutlineStep);
}
INSTANTIATE_TEST_SUITE_P(Zoom, OutlineStride,
                         testing::Values(StrideCase{1, 1, 18}, StrideCase{2, 2, 17}, StrideCase{14, 14, 5},
                                         StrideCase{16, 16, 3}, StrideCase{55, 55, 3},
                                         StrideCase{17, 16, 4}, // it grows again sooner than it shrank
                                         StrideCase{18, 14, 7}, StrideCase{55, 14, 8}, StrideCase{55, 1, 18}));

TEST(Zoom, SavesTheRectangleBelowLevel36)
{
    ScopeView view = StartUpView(800, 600, {20, 10}, 35);
    const ScopeView at35 = view;
    EXPECT_EQ(view.SavedEast, view.ViewEast);
    ZoomIn(view);
    EXPECT_EQ(view.SavedEast, at35.ViewEast);
    EXPECT_LT(view.ViewEast, at35.ViewEast);
    RecenterView(view, {20, 20});
    EXPECT_NEAR(view.SavedEast, at35.ViewEast + 10, 1e-9); // moved along, as wide as it was
}

TEST(Zoom, InThenOutRestoresAnyView)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> lon(-180, 180);
    std::uniform_real_distribution<double> lat(-90, 90);
    std::uniform_int_distribution<int> level(1, 54);
    for (int i = 0; i < 500; ++i) {
        const auto zoom = static_cast<std::int16_t>(level(random));
        const ScopeView before = StartUpView(1000, 700, {lat(random), lon(random)}, zoom);
        ScopeView view = before;
        ZoomIn(view);
        ZoomOut(view);
        EXPECT_NEAR(NormalizeLongitude(view.ViewWest - before.ViewWest), 0, 1e-9);
        EXPECT_NEAR(NormalizeLongitude(view.ViewEast - before.ViewEast), 0, 1e-9);
        EXPECT_NEAR(view.ViewNorth, before.ViewNorth, 1e-9);
        EXPECT_NEAR(view.ViewSouth, before.ViewSouth, 1e-9);
        EXPECT_EQ(view.ZoomLevel, zoom);
    }
}

TEST(Recenter, CrossesTheDateLine)
{
    const ScopeView view = CrossingView();
    EXPECT_EQ(view.ViewWest, 165);
    EXPECT_EQ(view.ViewEast, -175);
    ScopeView back = view;
    RecenterView(back, {80, -20});
    EXPECT_EQ(back.ViewWest, -30);
    EXPECT_EQ(back.ViewEast, -10);
    EXPECT_EQ(back.ViewNorth, 85);
    EXPECT_EQ(back.ViewSouth, 75);
}

TEST(PointerDegrees, GoOnAbove180)
{
    const ScopeView view = CrossingView();
    EXPECT_EQ(UserScaleRight(view), 185);
    EXPECT_EQ(DegreesAtPixel(view, {720, 100}), (ScopeDegrees{183, 7.5}));
    EXPECT_EQ(DegreesAtPixel(view, {-40, 500}), (ScopeDegrees{164, -2.5})); // a held button leaves the scope
    EXPECT_EQ(PixelAtDegrees(view, 183, 7.5), (ScopePoint{720, 100}));
}

TEST(PointerDegrees, ProjectBackToTheirPixel)
{
    std::mt19937 random(11);
    std::uniform_real_distribution<double> lon(-180, 180);
    std::uniform_real_distribution<double> lat(-80, 80);
    std::uniform_int_distribution<int> level(1, 30); // closer in, single precision is coarser than a pixel
    std::uniform_int_distribution<std::int32_t> x(0, 1000);
    std::uniform_int_distribution<std::int32_t> y(0, 700);
    for (int i = 0; i < 2000; ++i) {
        const auto view = StartUpView(1000, 700, {lat(random), lon(random)}, static_cast<std::int16_t>(level(random)));
        const ScopePoint pixel{x(random), y(random)};
        const ScopeDegrees at = DegreesAtPixel(view, pixel);
        const ScopePoint back = ProjectToScope(view, {at.Y, NormalizeLongitude(at.X)});
        EXPECT_NEAR(back.X, pixel.X, 1) << view.ViewWest << " " << view.ViewEast << " " << at.X;
        EXPECT_NEAR(back.Y, pixel.Y, 1);
    }
}
} // namespace
} // namespace corvane
