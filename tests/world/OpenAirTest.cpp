#include "tests/world/WorldText.h"
#include "world/OpenAirValues.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {
struct LimitCase {
    const char* Text;
    std::optional<std::int32_t> Feet;
};

TEST(OpenAirLimits, AreFeet)
{
    const std::vector<LimitCase> cases = {{"FL95", 9500},
                                          {"FL 195", 19500},
                                          {"fl65", 6500},
                                          {"FL9999", 999900},
                                          {"FL10000", std::nullopt},
                                          {"FL", std::nullopt},
                                          {"FL6.5", std::nullopt},
                                          {"3500 ft", 3500},
                                          {"3500FT AMSL", 3500},
                                          {"3500FTAMSL", 3500},
                                          {"2500ft MSL", 2500},
                                          {"2500 MSL", 2500},
                                          {"1000 ft AGL", 1000},
                                          {"100m GND", 328},
                                          {"300M", 984},
                                          {"1500 m", 4921},
                                          {"1500 M MSL", 4921},
                                          {"4500", 4500},
                                          {"0", 0},
                                          {"GND", 0},
                                          {"SFC", 0},
                                          {"gnd", 0},
                                          {"UNL", 99999},
                                          {"UNLIM", 99999},
                                          {"Unlimited", 99999},
                                          {"5000 STD", 5000},
                                          {"4500 ft QNH", 4500},
                                          {"999999", 999999},
                                          {"1000000", std::nullopt},
                                          {"", std::nullopt},
                                          {"-100", std::nullopt},
                                          {"100m AGL/423m MSL", std::nullopt},
                                          {"ft", std::nullopt},
                                          {"MSL", std::nullopt},
                                          {"10 miles", std::nullopt}};
    for (const LimitCase& row : cases)
        EXPECT_EQ(LimitFt(row.Text), row.Feet) << row.Text;
}

TEST(OpenAirPlaces, HaveManyForms)
{
    constexpr double Lat = 48 + 12 / 60.0 + 30 / 3600.0;
    constexpr double Lon = 16 + 30 / 60.0;
    for (const char* const text :
         {"48:12:30 N 016:30:00 E", "48:12:30N 016:30:00E", "48:12:30.0 N, 16:30:0 E", "48:12.500N 016:30.000E",
          "48:12:30N 16:29:60E", "481230N 0163000E", "4812.5N 01630E", "48.2083333333N 16.5E", "48.2083333333 16.5",
          "48.2083333333,+16.5", "48:12:30n016:30:00e"}) {
        const std::optional<LatLon> place = OnePlace(text);
        ASSERT_TRUE(place) << text;
        EXPECT_NEAR(place->Lat, Lat, 1e-9) << text;
        EXPECT_NEAR(place->Lon, Lon, 1e-9) << text;
    }
    EXPECT_EQ(OnePlace("10:00:00 S 7:30:00 W"), (LatLon{-10, -7.5}));
    EXPECT_EQ(OnePlace("10:59:60 S 7:30:00 W"), (LatLon{-11, -7.5}));
    for (const char* const text :
         {"", "5", "48:12:30 N", "91:00:00 N 016:30:00 E", "48:12:30 N 180:00:01 E", "48:61:00 N 016:30:00 E",
          "48:11:90 N 016:30:00 E", "48:12:30 E 016:30:00 N", "48:12:30 N 016:30:00 E x", "48::30 N 016:30:00 E",
          "1:2:3:4 N 5 E", "-48 N 16 E", "12345678N 0163000E", "48 N 16", ":N :E", "N E"})
        EXPECT_FALSE(OnePlace(text)) << text;
}

struct KindCase {
    const char* Class;
    const char* Type;
    const char* Kind; ///< empty: left out
};

TEST(OpenAirKinds, FollowTheTypeAndThenTheClass)
{
    const std::vector<KindCase> cases = {{"A", "", ClassBKind},
                                         {"B", "", ClassBKind},
                                         {"C", "", ClassCKind},
                                         {"D", "", ClassDKind},
                                         {"CTR", "", ClassDKind},
                                         {"E", "", ""},
                                         {"R", "", ""},
                                         {"FIR", "", HighSectorKind},
                                         {"UNC", "FIR", HighSectorKind},
                                         {"C", "UIR", HighSectorKind},
                                         {"G", "ACC_SECTOR", HighSectorKind},
                                         {"D", "CTA", TraconKind},
                                         {"C", "TMA", TraconKind},
                                         {"C", "CTR", ClassCKind},
                                         {"A", "CTR", ClassBKind},
                                         {"E", "CTR", ClassDKind},
                                         {"UNC", "CTR", ClassDKind},
                                         {"C", "RMZ", ""},
                                         {"D", "R", ""},
                                         {"C", "NONE", ClassCKind},
                                         {"UNC", "NONE", ""}};
    for (const KindCase& row : cases)
        EXPECT_EQ(OpenAirKind(row.Class, row.Type).value_or(""), row.Kind) << row.Class << " " << row.Type;
}

struct ReadAirspaces {
    explicit ReadAirspaces(const std::string& text) : Text(text), File(Text)
    {
        Status = ReadOpenAirFile(File.Lines, File.Log, LeftOut, Remarks,
                                 [this](const AirspaceRecord& a) { Airspaces.push_back(a); }, {});
    }

    std::string Text;
    WorldText File;
    AirspacesLeftOut LeftOut;
    OpenAirRemarks Remarks;
    std::vector<AirspaceRecord> Airspaces;
    Result<void> Status;
};

const std::string Limits = "AN Zone\nAL GND\nAH FL65\n";
const std::string Triangle = "DP 10:00:00N 020:00:00E\nDP 11:00:00N 020:00:00E\nDP 10:00:00N 021:00:00E\n";

struct MistakeCase {
    const char* Name;
    std::string Commands; ///< behind AC D
    const char* Why;      ///< empty: it is kept
};
class OpenAirMistakes : public testing::TestWithParam<MistakeCase> {};

TEST_P(OpenAirMistakes, LeaveOutTheirAirspaceAlone)
{
    const ReadAirspaces read("AC D\n" + Limits + Triangle + "AC D\n" + GetParam().Commands + "\nAC D\n" + Limits +
                             Triangle);
    EXPECT_TRUE(read.Status);
    const std::string why = GetParam().Why;
    EXPECT_EQ(read.Airspaces.size(), why.empty() ? 3U : 2U);
    if (!why.empty()) {
        ASSERT_EQ(read.File.Passed.size(), 1U);
        EXPECT_TRUE(read.File.Passed[0].OfAirspace);
        EXPECT_EQ(read.File.Passed[0].Line, 8); // its AC
        EXPECT_NE(read.File.Passed[0].Why.find(": " + why), std::string::npos) << read.File.Passed[0].Why;
        EXPECT_EQ(read.LeftOut.Unreadable, 1);
    }
}

const std::string Center = "V X=10:00:00N 020:00:00E\n";

INSTANTIATE_TEST_SUITE_P(
    World, OpenAirMistakes,
    testing::Values(MistakeCase{"NoName", "AL GND\nAH FL65\n" + Triangle, "it has no name"},
                    MistakeCase{"NoUpperLimit", "AN Z\nAL GND\n" + Triangle, "it has no upper limit"},
                    MistakeCase{"UpperLimitAlone", "AN Z\nAH FL65\n" + Triangle, "it has no lower limit"},
                    MistakeCase{"TwoCorners", Limits + "DP 10:00:00N 020:00:00E\nDP 11:00:00N 020:00:00E\n",
                                "it has fewer than three points"},
                    MistakeCase{"TwoCornersClosed",
                                Limits + "DP 10:00:00N 020:00:00E\nDP 11:00:00N 020:00:00E\nDP 10:00:00N 020:00:00E\n",
                                "it has fewer than three points"},
                    MistakeCase{"PlaceForRadius", Limits + Center + "DC 10:00:00N 020:00:00E\n", "DC is"},
                    MistakeCase{"RadiusOfNothing", Limits + Center + "DC 0\n", "DC is"},
                    MistakeCase{"RadiusBeyondTheEarth", Limits + Center + "DC 5401\n", "DC is"},
                    MistakeCase{"CenterBehindItsArc", Limits + "DA 5,0,90\n" + Center, "an arc has no centre"},
                    MistakeCase{"CenterOfTheAirspaceBefore", Limits + "DC 5\n", "a circle has no centre"},
                    MistakeCase{"ArcOfTwoNumbers", Limits + Center + "DA 5,90\n", "DA is"},
                    MistakeCase{"LimitOfProse", "AN Z\nAL low\nAH FL65\n" + Triangle, "the lower limit is \"low\""},
                    MistakeCase{"FrequencyOfProse", Limits + "AF ask\n" + Triangle, "the frequency is \"ask\""},
                    MistakeCase{"FrequencyWithUnit", Limits + "AF 130.125 MHz\n" + Triangle, ""},
                    MistakeCase{"TwoCircles", Limits + Center + "DC 5\nDC 6\n", ""},
                    MistakeCase{"ClosedTwice", Limits + Triangle + "DP 10:00:00N 020:00:00E\nDP 10:00:00N 020:00:00E\n",
                                ""},
                    MistakeCase{"AnyCase", "an Zone\nal gnd\nah fl65\n" + Triangle + "sp 1,2\ndy\n", ""}),
    [](const auto& row) { return std::string(row.param.Name); });

TEST(OpenAir, TellsProseFromCommands)
{
    const ReadAirspaces read("Airspaces of nowhere\nAC D * comment\n" + Limits + "Here it goes round\n" + Triangle +
                             "AC R\nnonsense\n");
    EXPECT_EQ(read.Airspaces.size(), 1U);
    EXPECT_EQ(read.LeftOut.ByClass, (std::map<std::string, std::int64_t>{{"R", 1}}));
    ASSERT_EQ(read.File.Passed.size(), 3U);
    EXPECT_EQ(read.File.Passed[1].Why, "begins with \"Here\", which is no command");
    EXPECT_FALSE(ReadAirspaces("nothing of the kind\n").Status);
}

TEST(OpenAir, OutlinesAreClosedLinesInSmallSteps)
{
    const ReadAirspaces read("AC D\n" + Limits + Triangle + "AC D\n" + Limits + Center + "DC 6\n");
    ASSERT_EQ(read.Airspaces.size(), 2U);
    const std::vector<BoundaryPoint>& triangle = read.Airspaces[0].Points;
    ASSERT_EQ(triangle.size(), 4U);
    EXPECT_EQ(triangle[0].Kind, BoundaryKind::Start);
    EXPECT_EQ(triangle[3], (BoundaryPoint{BoundaryKind::Line, 10, 20, 0}));
    const AirspaceRecord& circle = read.Airspaces[1];
    EXPECT_EQ(circle.Points.size(), 181U); // steps of 2 degrees
    EXPECT_DOUBLE_EQ(circle.North, 10.1);
    EXPECT_DOUBLE_EQ(circle.South, 9.9);
    EXPECT_NEAR(circle.CenterLat, 10, 0.02); // whole miles, as the builder has it
}

TEST(OpenAir, BoxesGoAcross180AndAroundPoles)
{
    const ReadAirspaces read("AC D\n" + Limits + "V X=88:00:00N 000:00:00E\nDC 300\nAC D\n" + Limits +
                             "V X=-10 180\nDC 60\n");
    ASSERT_EQ(read.Airspaces.size(), 2U);
    EXPECT_EQ(read.Airspaces[0].North, 90);
    EXPECT_EQ(read.Airspaces[0].West, -180);
    EXPECT_EQ(read.Airspaces[0].East, 180);
    EXPECT_GT(read.Airspaces[1].West, 178);
    EXPECT_LT(read.Airspaces[1].East, -178);
}
} // namespace
} // namespace corvane
