#include "tracks/ConflictSearch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <random>
#include <utility>
#include <vector>

namespace corvane {
namespace {
using Pairs = std::vector<std::pair<std::uint32_t, std::uint32_t>>;

Pairs AllPairs(const std::vector<Mover>& movers, const AlertOptions& options)
{
    Pairs pairs;
    for (std::uint32_t i = 0; i < movers.size(); ++i)
        for (std::uint32_t j = i + 1; j < movers.size(); ++j)
            if (FindConflict(movers[i], movers[j], options))
                pairs.emplace_back(i, j);
    return pairs;
}

Pairs SearchedPairs(ConflictSearch& search, const std::vector<Mover>& movers, const AlertOptions& options)
{
    Pairs pairs;
    for (const ConflictPair& pair : search.Find(movers, options))
        pairs.emplace_back(pair.First, pair.Second);
    return pairs;
}

struct Sky {
    const char* Name;
    LatLon Center;
    double HalfLat;
    double HalfLon;
    double TopFt;
    double FastestKt;
    double Seconds;
};
class SearchOfSky : public testing::TestWithParam<Sky> {};
TEST_P(SearchOfSky, FindsWhatTryingAllPairsFinds)
{
    const Sky& sky = GetParam();
    std::mt19937 random(7);
    const auto between = [&](double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random);
    };
    AlertOptions options;
    options.ConflictSeconds = sky.Seconds;
    ConflictSearch search;
    std::size_t found = 0;
    for (int round = 0; round < 10; ++round) {
        std::vector<Mover> movers;
        for (int i = 0; i < 250; ++i) {
            const double lat = std::clamp(sky.Center.Lat + between(-sky.HalfLat, sky.HalfLat), -90.0, 90.0);
            const double lon = NormalizeLongitude(sky.Center.Lon + between(-sky.HalfLon, sky.HalfLon));
            const double course =
                between(0, 360); // drawn one by one: compilers evaluate arguments in orders of their own
            const double kt = between(40, sky.FastestKt);
            const double ft = between(0, sky.TopFt);
            movers.push_back(MakeMover({lat, lon}, course, kt, ft, between(-4000, 4000)));
        }
        const Pairs expected = AllPairs(movers, options);
        found += expected.size();
        ASSERT_EQ(SearchedPairs(search, movers, options), expected);
    }
    EXPECT_GT(found, 10U) << "nothing to find";
}
INSTANTIATE_TEST_SUITE_P(Tracks, SearchOfSky,
                         testing::Values(Sky{"OneArea", {47, -122}, 1.5, 2, 40000, 550, 120},
                                         Sky{"Across180", {-17, 180}, 1, 1, 20000, 550, 120},
                                         Sky{"NorthPole", {90, 0}, 1, 180, 20000, 550, 120},
                                         Sky{"NearTheSouthPole", {-88, 179}, 1.9, 120, 20000, 550, 300},
                                         Sky{"FasterThanReal", {60, 0}, 10, 90, 10000, 32767, 300},
                                         Sky{"NowOnly", {0, 0}, 0.3, 0.3, 10000, 550, 0},
                                         Sky{"OneLevel", {0, -180}, 3, 3, 100, 550, 120}),
                         [](const auto& row) { return std::string(row.param.Name); });

struct PairCase {
    const char* Name;
    Mover One;
    Mover Other;
    std::optional<Conflict> Expected;
};
class PairOfTargets : public testing::TestWithParam<PairCase> {};
TEST_P(PairOfTargets, ConflictsAsWorkedOutByHand)
{
    const auto found = FindConflict(GetParam().One, GetParam().Other, {});
    ASSERT_EQ(found.has_value(), GetParam().Expected.has_value());
    if (!found)
        return;
    EXPECT_EQ(found->Violated, GetParam().Expected->Violated);
    EXPECT_NEAR(found->SecondsToClosest, GetParam().Expected->SecondsToClosest, 1e-3);
    EXPECT_NEAR(found->ClosestNm, GetParam().Expected->ClosestNm, 1e-3);
    EXPECT_NEAR(found->ClosestFt, GetParam().Expected->ClosestFt, 1e-3);
}

Mover At(double eastNm, double northNm, double course, double kt, double ft = 5000, double climb = 0)
{
    return MakeMover({northNm / 60, eastNm / 60}, course, kt, ft, climb);
}
// Two at 360 kt head on close by 0.2 nm a second: they are 3 nm apart (20 - 3) / 0.2 = 85 s after 20 nm.
INSTANTIATE_TEST_SUITE_P(
    Tracks, PairOfTargets,
    testing::Values(
        PairCase{"HeadOn", At(0, 0, 90, 360), At(20, 0, 270, 360), Conflict{false, 100, 0, 0}},
        PairCase{"HeadOnTooFar", At(0, 0, 90, 360), At(27.01, 0, 270, 360), std::nullopt}, // 3 nm after 120.05 s
        PairCase{"HeadOnJustInTime", At(0, 0, 90, 360), At(26.99, 0, 270, 360), Conflict{false, 120, 2.99, 0}},
        PairCase{"PassingThreeMilesAbeam", At(0, 0, 90, 360), At(20, 3.001, 270, 360), std::nullopt},
        PairCase{"PassingJustCloser", At(0, 0, 90, 360), At(20, 2.999, 270, 360), Conflict{false, 100, 2.999, 0}},
        PairCase{"NineHundredFeetAbove", At(0, 0, 90, 360), At(2, 0, 90, 360, 5900), std::nullopt},
        PairCase{"JustLessAbove", At(0, 0, 90, 360), At(2, 0, 90, 360, 5899), Conflict{true, 0, 2, 899}},
        PairCase{"SameWaySameSpeed", At(0, 0, 90, 360), At(2.5, 0, 90, 360), Conflict{true, 0, 2.5, 0}},
        PairCase{"Parting", At(0, 0, 270, 360), At(2, 0, 90, 360), Conflict{true, 0, 2, 0}},
        PairCase{"PartingBeyondTheLimit", At(0, 0, 270, 360), At(3.1, 0, 90, 360), std::nullopt},
        // From 2,000 ft above it sinks 10 ft a second: below 900 ft from 110 s on, within 3 nm until 115 s.
        PairCase{"SinkingIntoIt", At(0, 0, 90, 360), At(20, 0, 270, 360, 7000, -600), Conflict{false, 100, 0, 1000}},
        PairCase{"ThroughTheLevelBeforePassing", At(0, 0, 90, 360), At(20, 0, 270, 360, 7000, -3000), std::nullopt},
        PairCase{"AtOnePlace", At(0, 0, 90, 360), At(0, 0, 90, 360), Conflict{true, 0, 0, 0}},
        PairCase{"Across180", MakeMover({0, 179.9}, 90, 360, 5000, 0), MakeMover({0, -179.9}, 270, 360, 5000, 0),
                 Conflict{false, 60, 0, 0}}),
    [](const auto& row) { return std::string(row.param.Name); });

TEST(ConflictSearch, GivesUpACrowdInsteadOfTryingAllItsPairs)
{
    const std::vector<Mover> crowd(3000, MakeMover({10, 10}, 90, 300, 5000, 0)); // 4,498,500 pairs in conflict
    ConflictSearch search;
    EXPECT_EQ(search.Find(crowd, {}).size(), crowd.size() * ConflictSearch::ConflictsPerMover);
}
} // namespace
} // namespace corvane
