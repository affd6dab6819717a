#include "tests/world/WorldText.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {
struct ReadNavaids {
    explicit ReadNavaids(const std::string& text) : Text(text), File(Text)
    {
        Status = ReadNavFile(File.Rows,
                             {[this](const NavaidRecord& vor) { Vors.push_back(vor); },
                              [this](const NavaidRecord& ndb) { Ndbs.push_back(ndb); }},
                             Localizers);
    }

    std::string Text;
    WorldText File;
    std::vector<NavaidRecord> Vors;
    std::vector<NavaidRecord> Ndbs;
    LocalizerTable Localizers;
    Result<void> Status;
};

TEST(NavFile, PassesOverWhatItCannotReadAndGoesOn)
{
    const ReadNavaids read("\r\n810 Version\r\n\r\n"
                           "2 91.0 0 0 345 25 0.0 KB NAME NDB\r\n"
                           "2 9.0 0 0 345.5 -3 0.0 KB\r\n"
                           "prose\r\n"
                           "3 10.05 -030.05 120 11795 260 -12.0 KBV  KESTREL   VOR\r\n"
                           "4 10 -30 140 11030 18 90.000 IKB\r\n"
                           "  99  \r\nnothing of this counts\r\n");
    EXPECT_TRUE(read.Status);
    ASSERT_EQ(read.Vors.size(), 1U);
    EXPECT_EQ(read.Vors[0], (NavaidRecord{"KESTREL VOR", "KBV", 10.05, -30.05, "117.95", 255}));
    ASSERT_EQ(read.Ndbs.size(), 1U);
    EXPECT_EQ(read.Ndbs[0], (NavaidRecord{"", "KB", 9, 0, "345.5", 0}));
    ASSERT_EQ(read.File.Passed.size(), 3U);
    EXPECT_EQ(read.File.Passed[0].Line, 4);
    EXPECT_EQ(read.File.Passed[0].Why, "field 1 is \"91.0\", not a latitude");
    EXPECT_EQ(read.File.Passed[1].Why, "begins with \"prose\", not a row's number");
    EXPECT_EQ(read.File.Passed[2].Why, "ends before field 8");
}

struct WrongCase {
    const char* Name;
    const char* Text;
    const char* Why;
};
class OtherKindsOfFile : public testing::TestWithParam<WrongCase> {};

TEST_P(OtherKindsOfFile, AreOneError)
{
    const ReadNavaids read(GetParam().Text);
    ASSERT_FALSE(read.Status);
    EXPECT_EQ(read.Status.error().Text(), std::string("world.txt: ") + GetParam().Why);
}

INSTANTIATE_TEST_SUITE_P(
    World, OtherKindsOfFile,
    testing::Values(WrongCase{"Empty", "", "ends before its second line, the edition"},
                    WrongCase{
                        "Prose", "* Airspaces\nAC D\n",
                        "its second line does not begin with the number of an edition: it is another kind of file"},
                    WrongCase{"CutOff", "I\n810\n3 10 20 120 11795 260 -12.0 KBV\n",
                              "does not end with a row 99: it is cut off, or another kind of file"},
                    WrongCase{"Airports", "I\n1000\n1 10 0 0 AAAA Name\n100 1 2 3\n99\n",
                              "holds no VOR, NDB or localizer: it is another kind of file"}),
    [](const auto& row) { return std::string(row.param.Name); });

TEST(LocalizerTable, GivesEachToTheFirstAirportOfEitherCodeInTheOrderOfTheFile)
{
    ReadNavaids read("I\n1200\n"
                     "4 1 2 0 11030 18 36810.0 IA OTHER ZZ 09L ILS-cat-I\n"
                     "5 1 2 0 11030 18 -90.5 IB AAAA ZZ 027R LDA\n"
                     "4 1 2 0 11030 18 7.5 IC other ZZ\n"
                     "99\n");
    AirportRecord airport;
    airport.Icao = "AAAA";
    RunwayRecord runway;
    runway.Designation = "9L";
    runway.End1Lat = 5;
    runway.ReciprocalDesignation = "27R";
    runway.End2Lat = 6;
    airport.Runways.push_back(runway);
    const auto grid = std::make_unique<MagVarGrid>();
    EXPECT_EQ(read.Localizers.Left(), 3);
    EXPECT_EQ(
        read.Localizers.Take(airport, "OTHER", *grid),
        (std::vector<IlsRecord>{{"IA", 5, 0, 90, "110.3"}, {"IB", 6, 0, 270, "110.3"}, {"IC", 1, 2, 8, "110.3"}}));
    EXPECT_TRUE(read.Localizers.Take(airport, "OTHER", *grid).empty());
    EXPECT_EQ(read.Localizers.Left(), 0);
}
} // namespace
} // namespace corvane
