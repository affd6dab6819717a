#include "core/Geodesy.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {
struct DistanceCase {
    const char* Name;
    double Lat1, Lon1, Lat2, Lon2;
    int Nm;
    int Ft;
};
class Distances : public testing::TestWithParam<DistanceCase> {};
TEST_P(Distances, AreWholeMilesAndFeet)
{
    const DistanceCase& c = GetParam();
    EXPECT_EQ(DistanceNm(c.Lat1, c.Lon1, c.Lat2, c.Lon2), c.Nm);
    EXPECT_EQ(DistanceFt(c.Lat1, c.Lon1, c.Lat2, c.Lon2), c.Ft);
    EXPECT_EQ(DistanceNm(c.Lat2, c.Lon2, c.Lat1, c.Lon1), c.Nm);
}
INSTANTIATE_TEST_SUITE_P(Geodesy, Distances,
                         testing::Values(DistanceCase{"SamePoint", 47, -122, 47, -122, 0, 0},
                                         DistanceCase{"TwoMiles", 10, 20, 10 + 2.0 / 60, 20, 2, 12160},
                                         DistanceCase{"SixMilesExceedFeet", 10, 20, 10.1, 20, 6, 32767},
                                         DistanceCase{"OneDegreeOfMeridian", 0, 0, 1, 0, 60, 32767},
                                         DistanceCase{"AcrossTheDateLine", 0, 179.5, 0, -179.5, 60, 32767},
                                         DistanceCase{"BelowOneRadian", 0, 0, 57, 0, 3420, 32767},
                                         DistanceCase{"AboveOneRadian", 0, 0, 58, 0, 3480, 32767},
                                         DistanceCase{"Antipodes", 0, 0, 0, 180, 10800, 32767},
                                         DistanceCase{"PoleToPole", 90, 0, -90, 0, 10800, 32767}),
                         [](const auto& row) { return std::string(row.param.Name); });

struct CourseCase {
    const char* Name;
    double Lat1, Lon1, Lat2, Lon2;
    int Course;
};
class TrueCourses : public testing::TestWithParam<CourseCase> {};
TEST_P(TrueCourses, RoundUpToTheNextWholeDegree)
{
    const CourseCase& c = GetParam();
    EXPECT_EQ(TrueCourse(c.Lat1, c.Lon1, c.Lat2, c.Lon2), c.Course);
}
INSTANTIATE_TEST_SUITE_P(Geodesy, TrueCourses,
                         testing::Values(CourseCase{"SamePoint", 47, -122, 47, -122, 360},
                                         CourseCase{"East", 47, -122, 47, -121, 90},   // initially 89.6
                                         CourseCase{"NorthEast", 10, 10, 11, 11, 45},  // initially 44.4
                                         CourseCase{"SouthWest", 11, 11, 10, 10, 225}, // initially 224.6
                                         CourseCase{"AcrossTheDateLine", 10, 179, 11, -179, 63},
                                         CourseCase{"JustEastOfNorth", 0, 0, 10, 0.01, 1}),
                         [](const auto& row) { return std::string(row.param.Name); });

TEST(Normalization, TakesOneTurnOnly)
{
    EXPECT_EQ(NormalizeLongitude(181), -179);
    EXPECT_EQ(NormalizeLongitude(180), 180);
    EXPECT_EQ(NormalizeLongitude(-180), 180);
    EXPECT_EQ(NormalizeLongitude(540), 180);
    EXPECT_EQ(NormalizeLongitude(-540), -180 + 0); // -540 + 360: one pass leaves it at the edge
    EXPECT_EQ(NormalizeCourse(-10), 350);
    EXPECT_EQ(NormalizeCourse(370), 10);
    EXPECT_EQ(NormalizeCourse(360), 360);
    EXPECT_EQ(NormalizeCourse(0), 0);
    EXPECT_EQ(NormalizeCourse(725), 365);
}
} // namespace
} // namespace corvane
