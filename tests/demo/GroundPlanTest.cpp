#include "demo/GroundPlan.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <string>
#include <vector>

namespace corvane {
static constexpr ApronStyle LargeApron{.Lanes = 3, .StandsInRow = 10, .TwoRows = true, .Gates = true};

static GroundVector At(const GroundPoint& point)
{
    return {point.East, point.North};
}

/// The segments of the taxiways and of the ways into parking spots.
static std::vector<GroundSegment> TaxiwaySegments(const GroundLayout& ground)
{
    std::vector<GroundSegment> segments;
    for (const GroundPath& path : ground.Paths) {
        const GroundVector start = At(ground.Points.at(static_cast<std::size_t>(path.Start)));
        const auto end = static_cast<std::size_t>(path.End);
        if (path.Kind == GroundPathKind::Parking)
            segments.push_back({start, {ground.Parkings.at(end).East, ground.Parkings.at(end).North}});
        else if (path.Kind == GroundPathKind::Taxiway)
            segments.push_back({start, At(ground.Points.at(end))});
    }
    return segments;
}

/// How many points can be reached from the first one.
static std::size_t Reachable(const GroundLayout& ground)
{
    std::set<std::int32_t> reached{0};
    for (std::size_t before = 0; before != reached.size();) {
        before = reached.size();
        for (const GroundPath& path : ground.Paths) {
            if (path.Kind == GroundPathKind::Parking)
                continue;
            if (reached.contains(path.Start) || reached.contains(path.End))
                reached.insert({path.Start, path.End});
        }
    }
    return reached.size();
}

struct LayoutCase {
    const char* Name;
    std::vector<PlannedRunway> Runways;
    bool Connected;
};
class Layouts : public testing::TestWithParam<LayoutCase> {};

TEST_P(Layouts, TaxiwaysDoNotCutOneAnother)
{
    const GroundLayout ground = PlanGround(GetParam().Runways, LargeApron);
    const std::vector<GroundSegment> segments = TaxiwaySegments(ground);
    for (std::size_t i = 0; i < segments.size(); ++i) {
        for (std::size_t j = i + 1; j < segments.size(); ++j)
            EXPECT_FALSE(SegmentsCross(segments[i], segments[j])) << i << " " << j;
    }
}

TEST_P(Layouts, HaveSixtyGatesRunwayPathsAndValidIndices)
{
    const GroundLayout ground = PlanGround(GetParam().Runways, LargeApron);
    EXPECT_EQ(std::count_if(ground.Parkings.begin(), ground.Parkings.end(),
                            [](const GroundParking& spot) { return spot.Word >= SpotWord::GateA; }),
              60);
    std::set<std::int32_t> runwaysWithPaths;
    for (const GroundPath& path : ground.Paths) {
        const std::size_t ends = path.Kind == GroundPathKind::Parking ? ground.Parkings.size() : ground.Points.size();
        EXPECT_LT(static_cast<std::size_t>(path.Start), ground.Points.size());
        EXPECT_LT(static_cast<std::size_t>(path.End), ends);
        if (path.Kind == GroundPathKind::Runway)
            runwaysWithPaths.insert(path.Name);
        else
            EXPECT_LT(static_cast<std::size_t>(path.Name), ground.Names.size());
    }
    EXPECT_EQ(runwaysWithPaths.size(), GetParam().Runways.size());
    EXPECT_EQ(*runwaysWithPaths.rbegin() + 1, static_cast<std::int32_t>(GetParam().Runways.size()));
    if (GetParam().Connected) {
        EXPECT_EQ(Reachable(ground), ground.Points.size());
    }
}

TEST_P(Layouts, KeepClearOfRunways)
{
    const GroundLayout ground = PlanGround(GetParam().Runways, LargeApron);
    for (const GroundParking& spot : ground.Parkings) {
        for (const PlannedRunway& runway : GetParam().Runways) {
            const double heading = runway.TrueHeading * 3.14159265358979 / 180;
            const GroundVector half = GroundVector{std::sin(heading), std::cos(heading)} * (runway.LengthM / 2);
            EXPECT_GT(DistanceToSegment({spot.East, spot.North}, {runway.Center - half, runway.Center + half}), 150);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(
    Airports, Layouts,
    testing::Values(
        LayoutCase{"One", {{{0, 0}, 70, 3000}}, true},
        LayoutCase{"ThreeParallel", {{{-50, 330}, 180, 2873}, {{175, -50}, 180, 3627}, {{-570, 465}, 180, 2590}}, true},
        LayoutCase{"WideApart", {{{0, -700}, 90, 3600}, {{100, 700}, 91, 3600}}, true},
        LayoutCase{"Crossing", {{{-800, 0}, 10, 3500}, {{-800, 1000}, 100, 2500}}, false}),
    [](const auto& row) { return std::string(row.param.Name); });

TEST(GroundPlan, PutsTaxiwayAndApronBesideTheRunway)
{
    const std::vector<PlannedRunway> runways{{{0, 0}, 0, 1460}}; // due north, paths from -700 to 700
    const GroundLayout ground = PlanGround(runways, {.Lanes = 1, .StandsInRow = 4});
    ASSERT_EQ(ground.Parkings.size(), 4U);
    for (int i = 0; i < 4; ++i) {
        const GroundParking& spot = ground.Parkings[static_cast<std::size_t>(i)];
        EXPECT_EQ(spot.Word, SpotWord::Parking);
        EXPECT_EQ(spot.Number, i + 1);
        EXPECT_NEAR(std::abs(spot.East), 150 + 70 + 40, 1e-6); // taxiway, lane, stand
        EXPECT_NEAR(spot.North, -67.5 + 45 * i, 1e-6);
    }
    // Ends and middle of the runway each with runway point, hold-short point and taxiway point; two points where the
    // links to the apron leave; two links and four stands on the lane.
    EXPECT_EQ(ground.Points.size(), 9U + 2 + 2 + 4);
    EXPECT_EQ(ground.Names, (std::vector<std::string>{"", "A", "A1", "A2", "A3", "B", "C"}));
    EXPECT_EQ(Reachable(ground), ground.Points.size());
}

TEST(GroundPlan, ServesStripsShorterThanTheApron)
{
    const std::vector<PlannedRunway> strip{{{0, 0}, 45, 152}};
    const GroundLayout ground = PlanGround(strip, {.Lanes = 1, .StandsInRow = 4});
    EXPECT_EQ(ground.Parkings.size(), 4U);
    EXPECT_EQ(Reachable(ground), ground.Points.size());
    EXPECT_TRUE(PlanGround({}, LargeApron).Points.empty());
}
} // namespace corvane
