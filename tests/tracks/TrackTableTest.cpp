#include "tracks/TrackTable.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace corvane {
namespace {
const MemberKey Pilot{7, "N7"};

TrackReport ReportAt(double time, double eastNm, double northNm = 0, std::int32_t altitudeFt = 5000)
{
    return {time, {northNm / 60, eastNm / 60}, altitudeFt, 360, 45};
}

struct CourseCase {
    const char* Name;
    std::vector<TrackReport> Reports;
    double Now;
    double Course;
    double ClimbFtPerMin;
    TrackTrend Trend;
};
class CourseMadeGood : public testing::TestWithParam<CourseCase> {};
TEST_P(CourseMadeGood, ComesFromTheLastTenSeconds)
{
    TrackTable table;
    for (const TrackReport& report : GetParam().Reports)
        table.Report(Pilot, report);
    const auto track = table.Find(Pilot, GetParam().Now);
    ASSERT_TRUE(track);
    EXPECT_NEAR(track->Course, GetParam().Course, 1e-6);
    EXPECT_NEAR(track->ClimbFtPerMin, GetParam().ClimbFtPerMin, 1e-6);
    EXPECT_EQ(track->Trend, GetParam().Trend);
    EXPECT_DOUBLE_EQ(track->Age, GetParam().Now - GetParam().Reports.back().Time);
}
constexpr auto Level = TrackTrend::Level;
INSTANTIATE_TEST_SUITE_P(
    Tracks, CourseMadeGood,
    testing::Values(
        CourseCase{"HeadingOfASingleReport", {ReportAt(0, 0)}, 0, 45, 0, Level},
        CourseCase{"TwoSecondsApart", {ReportAt(0, 0), ReportAt(2, 0.2)}, 2, 90, 0, Level},
        CourseCase{"LessThanTwoSeconds", {ReportAt(0, 0), ReportAt(1.9, 0.2)}, 2, 45, 0, Level},
        CourseCase{"TooNear", {ReportAt(0, 0), ReportAt(5, 0.0199, 0, 6000)}, 5, 45, 0, Level},
        CourseCase{"JustFarEnough", {ReportAt(0, 0), ReportAt(5, -0.0201)}, 5, 270, 0, Level},
        CourseCase{"TenSecondsAgoCounts", {ReportAt(0, 0, 0.5), ReportAt(1, 0), ReportAt(10, 0, 1)}, 10, 0, 0, Level},
        CourseCase{"OlderDoesNot", {ReportAt(0, 5), ReportAt(1, 0), ReportAt(10, 0, -1)}, 10.5, 180, 0, Level},
        CourseCase{"SilentForEightSeconds", {ReportAt(0, 0), ReportAt(3, 1)}, 10, 90, 0, Level},
        CourseCase{"SilentForTooLong", {ReportAt(0, 0), ReportAt(3, 1)}, 10.1, 45, 0, Level},
        CourseCase{"ClimbOf300", {ReportAt(0, 0), ReportAt(10, 1, 0, 5050)}, 10, 90, 300, Level},
        CourseCase{"ClimbOf306", {ReportAt(0, 0), ReportAt(10, 1, 0, 5051)}, 10, 90, 306, TrackTrend::Climbing},
        CourseCase{"Descent", {ReportAt(0, 0), ReportAt(5, 1, 0, 4900)}, 5, 90, -1200, TrackTrend::Descending},
        CourseCase{"ReportsThatGoBackAreLeftOut",
                   {ReportAt(3, 0), ReportAt(5, 1), ReportAt(1, 5), ReportAt(5, 1)},
                   5,
                   90,
                   0,
                   Level},
        CourseCase{"Across180", {{0, {0, 179.99}, 5000, 360, 45}, {5, {0, -179.99}, 5000, 360, 45}}, 5, 90, 0, Level}),
    [](const auto& row) { return std::string(row.param.Name); });

TEST(TrackTable, HoldsNoMoreThanItsOptionsNeed)
{
    TrackTable table({.HistoryDots = 3, .HistorySeconds = 5, .StaleSeconds = 0});
    for (int i = 0; i <= 20000; ++i) // a hundred a second
        table.Report(Pilot, ReportAt(i / 100.0, i / 1000.0));
    EXPECT_EQ(table.HistoryDots(Pilot).size(), 3U);
    EXPECT_LE(table.ReportsHeld(), 110U);
    EXPECT_NEAR(table.Find(Pilot, 200)->Course, 90, 1e-6);
}

TEST(TrackTable, DotsStayWhereTheyWereLeft)
{
    TrackTable table({.HistoryDots = 2, .HistorySeconds = 5, .StaleSeconds = 0});
    const auto miles = [&] {
        std::vector<double> east;
        for (const LatLon& dot : table.HistoryDots(Pilot))
            east.push_back(std::nearbyint(dot.Lon * 60));
        return east;
    };
    for (int second = 0; second <= 12; ++second)
        table.Report(Pilot, ReportAt(second, second));
    EXPECT_THAT(miles(), testing::ElementsAre(10, 5));
    for (int second = 13; second <= 15; ++second)
        table.Report(Pilot, ReportAt(second, second));
    EXPECT_THAT(miles(), testing::ElementsAre(10, 5)) << "the dot at the target itself is none";
    table.Report(Pilot, ReportAt(16, 16));
    EXPECT_THAT(miles(), testing::ElementsAre(15, 10));
    table.SetOptions({.HistoryDots = 1, .HistorySeconds = 5, .StaleSeconds = 0});
    EXPECT_THAT(miles(), testing::ElementsAre(15));
    table.SetOptions({});
    EXPECT_THAT(miles(), testing::IsEmpty());
}

TEST(TrackTable, GrowsStaleAtItsTimeAndNeverByItselfGone)
{
    TrackTable table({.HistoryDots = 0, .HistorySeconds = 5, .StaleSeconds = 10});
    table.Report(Pilot, ReportAt(100, 0));
    EXPECT_FALSE(table.Find(Pilot, 109.9)->Stale);
    EXPECT_TRUE(table.Find(Pilot, 110)->Stale);
    EXPECT_TRUE(table.Find(Pilot, 1e9)->Stale);
    table.SetOptions({}); // 0 seconds: never
    EXPECT_FALSE(table.Find(Pilot, 1e9)->Stale);
}

TEST(TrackTable, TellsMembersApartByIdAndNameAndForgetsThoseWhoLeft)
{
    TrackTable table;
    const MemberKey sameId{7, "N8"};
    table.Report(Pilot, ReportAt(0, 0));
    table.Report(sameId, ReportAt(0, 1));
    const TrackId first = table.Find(Pilot, 0)->Id;
    EXPECT_NE(first, table.Find(sameId, 0)->Id);
    const std::vector<MemberKey> left{sameId};
    table.KeepOnly(left);
    EXPECT_FALSE(table.Find(Pilot, 0));
    table.Report(Pilot, ReportAt(1, 0));
    EXPECT_NE(first, table.Find(Pilot, 1)->Id) << "who comes again is new";
}

TEST(TrackTable, PassesOverWhatCannotBe)
{
    constexpr double Nan = std::numeric_limits<double>::quiet_NaN();
    TrackTable table;
    for (const LatLon& nowhere : {LatLon{Nan, 0}, LatLon{0, Nan}, LatLon{90.1, 0}, LatLon{0, 180.1}, LatLon{1e300, 0}})
        table.Report(Pilot, {0, nowhere, 0, 0, 0});
    table.Report(Pilot, ReportAt(Nan, 0));
    EXPECT_EQ(table.size(), 0U);
}

TEST(TrackState, RunsAheadAlongItsCourse)
{
    TrackState state;
    state.Last.Position = {0, 179.95};
    state.Last.GroundSpeedKt = 360;
    state.Course = 90;
    const LatLon ahead = PositionAhead(state, 60); // 6 nm: a tenth of a degree
    EXPECT_NEAR(ahead.Lat, 0, 1e-9);
    EXPECT_NEAR(ahead.Lon, -179.95, 1e-9);
}
} // namespace
} // namespace corvane
