#include "radar/BlockPlacer.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace corvane {
namespace {
constexpr PixelBox WholeScope{0, 0, 1000, 1000};
constexpr BlockSize Size{60, 26};

struct LeaderCase {
    std::int32_t Direction;
    ScopePoint End;
    PixelBox Box;
};
class Leader : public testing::TestWithParam<LeaderCase> {};
TEST_P(Leader, PointsToItsKeyAndTheBlockLooksBackAtTheTarget)
{
    const auto& [direction, end, box] = GetParam();
    const BlockToPlace block{1, {500, 500}, Size, std::nullopt};
    for (const bool automatic : {false, true}) {
        BlockPlacer placer;
        const auto places = placer.Place(std::span(&block, 1), {WholeScope, {}, {}}, {automatic, direction, 30}, 0,
                                         PlacementOccasion::Refresh);
        EXPECT_EQ(places[0].LeaderEnd, end);
        EXPECT_EQ(places[0].Box, box);
        EXPECT_EQ(places[0].Direction, direction);
    }
    EXPECT_EQ(DirectionOf({500, 500}, end), direction);
}
INSTANTIATE_TEST_SUITE_P(
    Blocks, Leader,
    testing::Values(LeaderCase{9, {521, 479}, {521, 453, 581, 479}}, LeaderCase{6, {530, 500}, {530, 487, 590, 513}},
                    LeaderCase{3, {521, 521}, {521, 521, 581, 547}}, LeaderCase{2, {500, 530}, {470, 530, 530, 556}},
                    LeaderCase{1, {479, 521}, {419, 521, 479, 547}}, LeaderCase{4, {470, 500}, {410, 487, 470, 513}},
                    LeaderCase{7, {479, 479}, {419, 453, 479, 479}}, LeaderCase{8, {500, 470}, {470, 444, 530, 470}}),
    [](const auto& row) { return "Key" + std::to_string(row.param.Direction); });

struct LineCase {
    const char* Name;
    ScopePoint From;
    ScopePoint To;
    bool Meets;
};
class LineAndBox : public testing::TestWithParam<LineCase> {};
TEST_P(LineAndBox, Meet)
{
    EXPECT_EQ(LineMeetsBox(GetParam().From, GetParam().To, {10, 10, 20, 20}), GetParam().Meets);
    EXPECT_EQ(LineMeetsBox(GetParam().To, GetParam().From, {10, 10, 20, 20}), GetParam().Meets);
}
INSTANTIATE_TEST_SUITE_P(Blocks, LineAndBox,
                         testing::Values(LineCase{"Through", {0, 0}, {30, 30}, true},
                                         LineCase{"EndsInside", {0, 15}, {12, 15}, true},
                                         LineCase{"StopsShort", {0, 15}, {9, 15}, false},
                                         LineCase{"TouchesTheFirstColumn", {10, 0}, {10, 30}, true},
                                         LineCase{"PassesBehindTheLast", {20, 0}, {20, 30}, false},
                                         LineCase{"CutsACornerOff", {0, 18}, {18, 0}, false},
                                         LineCase{"APointInside", {15, 15}, {15, 15}, true},
                                         LineCase{"APointOutside", {5, 15}, {5, 15}, false}),
                         [](const auto& row) { return std::string(row.param.Name); });

class Placing : public testing::Test {
protected:
    void Target(std::uint64_t track, ScopePoint at) { blocks.push_back({track, at, Size, std::nullopt}); }
    std::vector<BlockPlace> Place(PlacementOccasion occasion = PlacementOccasion::Refresh)
    {
        const auto places = placer.Place(blocks, {WholeScope, costly, cheap}, {true, 9, 30}, now, occasion);
        now += 1;
        return {places.begin(), places.end()};
    }
    static std::int64_t Shared(const std::vector<BlockPlace>& places)
    {
        std::int64_t area = 0;
        for (std::size_t i = 0; i < places.size(); ++i)
            for (std::size_t k = 0; k < i; ++k)
                area += SharedArea(places[i].Box, places[k].Box);
        return area;
    }

    BlockPlacer placer;
    std::vector<BlockToPlace> blocks;
    std::vector<PixelBox> costly;
    std::vector<PixelBox> cheap;
    double now = 100;
};

TEST_F(Placing, MovesABlockOnlyAfterTwoRefreshesAndThenNotForFiveSeconds)
{
    Target(1, {300, 500});
    Target(2, {500, 500});
    EXPECT_EQ(Place()[1].Direction, 9);
    blocks[0].Target = {490, 510}; // the blocks overlap from now on
    EXPECT_GT(Shared(Place()), 0) << "one refresh is not enough";
    std::vector<BlockPlace> places = Place(); // moves at 102
    EXPECT_EQ(Shared(places), 0);
    const std::size_t moved = places[0].Direction == 9 ? 1 : 0;
    EXPECT_EQ(places[1 - moved].Direction, 9) << "one gives way, not both";
    const BlockPlace before = places[moved];

    costly = {before.Box}; // in the way of the one that has moved
    for (now = 103; now < 107;)
        EXPECT_EQ(Place()[moved], before) << "at " << now - 1;
    EXPECT_NE(Place()[moved], before) << "five seconds have passed";
}

TEST_F(Placing, OneRefreshOfOverlapIsForgotten)
{
    Target(1, {300, 500});
    Target(2, {500, 500});
    Place();
    for (int i = 0; i < 4; ++i) {
        blocks[0].Target = {490, 510};
        EXPECT_EQ(Place()[0].Direction, 9);
        blocks[0].Target = {300, 500};
        EXPECT_EQ(Place()[0].Direction, 9);
    }
    blocks[0].Target = {490, 510};
    for (int i = 0; i < 4; ++i)
        EXPECT_GT(Shared(Place(PlacementOccasion::Between)), 0) << "a block that is dragged pushes nothing about";
    EXPECT_EQ(Shared(Place(PlacementOccasion::OtherView)), 0) << "another view does not wait";
}

TEST_F(Placing, KeepsOffDotsNotesAndNamesButNeverFromAFreePlace)
{
    Target(1, {500, 500});
    const PixelBox specified{521, 453, 581, 479};
    const auto directionBeside = [&](std::vector<PixelBox> costlyBoxes, std::vector<PixelBox> cheapBoxes) {
        placer.Clear();
        costly = std::move(costlyBoxes);
        cheap = std::move(cheapBoxes);
        const BlockPlace place = Place()[0];
        for (const PixelBox& box : costly)
            EXPECT_EQ(SharedArea(box, place.Box), 0);
        return place.Direction;
    };
    EXPECT_EQ(directionBeside({{581, 453, 700, 479}}, {{521, 479, 600, 490}}), 9) << "neighbours touch, and no more";
    EXPECT_NE(directionBeside({specified}, {}), 9);
    EXPECT_NE(directionBeside({}, {{540, 460, 700, 473}}), 9) << "a name";
    EXPECT_EQ(directionBeside({{0, 0, 515, 1000}, {600, 0, 1000, 1000}, {0, 490, 1000, 1000}, {0, 0, 1000, 440}},
                              {{540, 460, 700, 473}}),
              9)
        << "a name is cheaper than all else";
    Target(2, {550, 465}); // a dot at the specified place
    EXPECT_NE(directionBeside({}, {}), 9);
}

TEST_F(Placing, StaysOnTheScopeAndOffWhatAControllerPlaced)
{
    Target(1, {990, 10});
    Target(2, {500, 500});
    Target(3, {500, 520});
    blocks[2].Manual = ManualPlace{std::nullopt, {21, -67}}; // at 521,453: the second one's specified place
    std::vector<BlockPlace> places = Place();
    EXPECT_EQ(SharedArea(places[0].Box, WholeScope), places[0].Box.Area());
    EXPECT_EQ(places[2].Box, (PixelBox{521, 453, 581, 479}));
    EXPECT_EQ(places[2].LeaderEnd, (ScopePoint{521, 479})) << "the corner nearest to its target";
    EXPECT_EQ(places[2].Direction, 9);
    EXPECT_EQ(Shared(places), 0);
    blocks[2].Manual = ManualPlace{4, {}};
    EXPECT_EQ(Place()[2].Direction, 4);
    blocks[2].Size = {};
    EXPECT_TRUE(Place()[2].Box.Empty());
}

TEST_F(Placing, MakesRoomInACrowdTheSameWayEachTime)
{
    std::mt19937 random(7);
    std::uniform_int_distribution<std::int32_t> pixel(350, 650);
    for (std::uint64_t track = 1; track <= 30; ++track)
        Target(track, {pixel(random), pixel(random)});
    BlockPlacer fixed;
    const auto stacked = fixed.Place(blocks, {WholeScope, {}, {}}, {false, 9, 30}, 0, PlacementOccasion::Refresh);
    const std::int64_t before = Shared({stacked.begin(), stacked.end()});
    ASSERT_GT(before, 2000);
    const std::vector<BlockPlace> first = Place();
    EXPECT_LE(Shared(first) * 20, before);
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(Place(), first) << "what does not move stays";
    placer.Clear();
    EXPECT_EQ(Place(), first);
}
} // namespace
} // namespace corvane
