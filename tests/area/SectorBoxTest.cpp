#include "area/SectorBox.h"

#include "tests/area/SmallWorld.h"

#include <gtest/gtest.h>

#include <limits>

namespace corvane {
namespace {
struct FoldCase {
    const char* Name;
    std::vector<SectorBox> Pieces; // bounds only
    SectorBox Box;
};
class Folding : public testing::TestWithParam<FoldCase> {};
} // namespace

TEST_P(Folding, TakesPiecesInOrder)
{
    SectorBox box;
    for (const SectorBox& piece : GetParam().Pieces)
        box.FoldIn(MakeSector("S", piece.North, piece.South, piece.West, piece.East));
    EXPECT_EQ(box, GetParam().Box);
}

INSTANTIATE_TEST_SUITE_P(
    SectorBox, Folding,
    testing::Values(FoldCase{"None", {}, {0, 0, 0, 0}}, FoldCase{"One", {{20, 10, -80, -70}}, {20, 10, -80, -70}},
                    FoldCase{"OneBelowZero", {{-10, -20, -80, -70}}, {-10, -20, -80, -70}},
                    FoldCase{"TwoOverlapping", {{20, 10, -80, -70}, {25, 15, -75, -65}}, {25, 10, -80, -65}},
                    FoldCase{"EmptyPieceFirst", {{0, 0, 0, 0}, {-10, -20, 5, 7}}, {-10, -20, 5, 7}},
                    FoldCase{"EmptyPieceLater", {{-10, -20, 5, 7}, {0, 0, 0, 0}}, {0, -20, 0, 7}},
                    FoldCase{"CrossingAlone", {{20, 10, 170, -170}}, {20, 10, 170, -170}},
                    FoldCase{
                        "CrossingReplacesLongitudes", {{20, 10, 100, 120}, {30, 15, 170, -170}}, {30, 10, 170, -170}},
                    // Into a box that crosses already, west and east go by plain minimum and maximum.
                    FoldCase{"PlainIntoCrossing", {{20, 10, 170, -170}, {30, 15, 160, 175}}, {30, 10, 160, 175}},
                    FoldCase{"CrossingIntoCrossing", {{20, 10, 170, -170}, {30, 15, 165, -175}}, {30, 10, 165, -170}}),
    [](const auto& row) { return std::string(row.param.Name); });

namespace {
struct InsideCase {
    const char* Name;
    SectorBox Box;
    double Lat, Lon;
    bool Contains;
    bool Touches;
};
class Inside : public testing::TestWithParam<InsideCase> {};
constexpr SectorBox Plain{20, 10, -80, -70};
constexpr SectorBox Crossing{20, 10, 170, -170};
constexpr double Nan = std::numeric_limits<double>::quiet_NaN();
} // namespace

TEST_P(Inside, DependsOnTheEdge)
{
    EXPECT_EQ(GetParam().Box.Contains({GetParam().Lat, GetParam().Lon}), GetParam().Contains);
    EXPECT_EQ(GetParam().Box.Touches({GetParam().Lat, GetParam().Lon}), GetParam().Touches);
}

INSTANTIATE_TEST_SUITE_P(SectorBox, Inside,
                         testing::Values(InsideCase{"Middle", Plain, 15, -75, true, true},
                                         InsideCase{"NorthEdge", Plain, 20, -75, false, true},
                                         InsideCase{"SouthEdge", Plain, 10, -75, false, true},
                                         InsideCase{"WestEdge", Plain, 15, -80, false, true},
                                         InsideCase{"EastEdge", Plain, 15, -70, false, true},
                                         InsideCase{"Outside", Plain, 15, -69.9, false, false},
                                         InsideCase{"CrossingWest", Crossing, 15, 175, true, true},
                                         InsideCase{"CrossingEast", Crossing, 15, -175, true, true},
                                         InsideCase{"CrossingNorthEdge", Crossing, 20, 175, true, true},
                                         InsideCase{"CrossingWestEdge", Crossing, 15, 170, true, true},
                                         InsideCase{"CrossingDateLine", Crossing, 15, -180, true, true},
                                         InsideCase{"CrossingFarSide", Crossing, 15, 0, false, false},
                                         InsideCase{"CrossingPastTheTurn", Crossing, 15, 181, false, false},
                                         InsideCase{"CrossingAbove", Crossing, 20.1, 175, false, false},
                                         InsideCase{"NoWidth", {20, 10, 5, 5}, 15, 5, false, false},
                                         InsideCase{"NoNumber", Plain, Nan, -75, false, false},
                                         InsideCase{"NoNumberAcross", Crossing, 15, Nan, false, false}),
                         [](const auto& row) { return std::string(row.param.Name); });

TEST(SectorBox, CenterLiesHalfWayBetweenTheCorners)
{
    // From 0, 0 to 0, 3: 180 miles of equator, 90 of them are 1.5 degrees.
    const LatLon onEquator = SectorBox{0, 0, 0, 3}.Center();
    EXPECT_NEAR(onEquator.Lat, 0, 0.03); // the course is a whole degree
    EXPECT_NEAR(onEquator.Lon, 1.5, 0.001);
    // An odd distance of 181 miles halves to 90.5, which rounds to the even 90; 183 halve to 91.5, which round to 92.
    EXPECT_NEAR((SectorBox{0, 0, 0, 181.0 / 60}.Center().Lon), 90.0 / 60, 0.001);
    EXPECT_NEAR((SectorBox{0, 0, 0, 183.0 / 60}.Center().Lon), 92.0 / 60, 0.001);

    const LatLon crossing = SectorBox{1, -1, 178, -178}.Center();
    EXPECT_NEAR(crossing.Lat, 0, 0.05);
    EXPECT_NEAR(std::abs(crossing.Lon), 180, 0.05);

    const LatLon empty = SectorBox{}.Center();
    EXPECT_EQ(empty.Lat, 0);
    EXPECT_EQ(empty.Lon, 0);
}
} // namespace corvane
