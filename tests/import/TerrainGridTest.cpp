#include "import/TerrainGrid.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {
struct CellCase {
    const char* Name;
    double EveryNm;
    LatLon First;
    LatLon Second;
    bool SameCell;
};
class TerrainGridCells : public testing::TestWithParam<CellCase> {};

TEST_P(TerrainGridCells, TellsWhetherTwoSamplesShareACell)
{
    TerrainGrid grid(GetParam().EveryNm);
    EXPECT_TRUE(grid.Add(GetParam().First, 1));
    EXPECT_TRUE(grid.Add(GetParam().Second, 2));
    EXPECT_EQ(grid.CellCount(), GetParam().SameCell ? 1U : 2U);
}

// At 60 NM a row is one degree high. The row from 0 to 1 degree has floor(360 cos 0.5) = 359 cells of 1.0028 degrees,
// that from 60 to 61 floor(360 cos 60.5) = 177 cells of 2.034 degrees, that at a pole floor(360 cos 89.5) = 3.
INSTANTIATE_TEST_SUITE_P(Import, TerrainGridCells,
                         testing::Values(CellCase{"WithinADegree", 60, {0.1, -179.9}, {0.9, -179.1}, true},
                                         CellCase{"JustInTheFirstCell", 60, {0.5, -180}, {0.5, -178.998}, true},
                                         CellCase{"JustInTheSecondCell", 60, {0.5, -180}, {0.5, -178.997}, false},
                                         CellCase{"AcrossAParallel", 60, {0.999, 10}, {1.0, 10}, false},
                                         CellCase{"WiderFarNorth", 60, {60.5, -180}, {60.5, -177.97}, true},
                                         CellCase{"ThePoleBelongsToTheLastRow", 60, {90, 0}, {89.5, 59}, true},
                                         CellCase{"BothSidesOf180AreOneLine", 60, {10.5, -180}, {10.5, 180}, true},
                                         CellCase{"TheLastCellEndsAt180", 60, {10.5, 179.999}, {10.5, -179.999}, false},
                                         CellCase{"SmallCells", 0.1, {0.0001, -180}, {0.0001, -179.998}, false}),
                         [](const auto& row) { return std::string(row.param.Name); });

TEST(TerrainGrid, KeepsTheHighestOfACellAndGoesFromSouthToNorthAndWestToEast)
{
    TerrainGrid grid(60);
    grid.Add({10.5, 20.5}, 100);
    grid.Add({10.6, 20.4}, 300);
    grid.Add({10.7, 20.3}, 300); // as high as the one before, which stays
    grid.Add({10.5, 10.5}, -7);
    grid.Add({-10.5, 100.5}, 5);
    grid.Add({10.5, 20.5}, 200);
    const auto peaks = grid.Peaks();
    ASSERT_EQ(peaks.size(), 3U);
    EXPECT_EQ(peaks[0].Position, (LatLon{-10.5, 100.5}));
    EXPECT_EQ(peaks[1].Position, (LatLon{10.5, 10.5}));
    EXPECT_EQ(peaks[1].ElevationM, -7);
    EXPECT_EQ(peaks[2].Position, (LatLon{10.6, 20.4}));
    EXPECT_EQ(peaks[2].ElevationM, 300);
}
} // namespace
} // namespace corvane
