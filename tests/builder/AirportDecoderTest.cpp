#include "builder/AirportDecoder.h"

#include "builder/BglScanner.h"
#include "builder/EncodedRecords.h"
#include "tests/builder/BglWriter.h"
#include "tests/builder/HexBytes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace corvane {
namespace {
using testing::ElementsAre;

constexpr std::int32_t Lat45 = 5000875;   // 45 degrees exactly
constexpr std::int32_t Lon10 = 119304647; // the unit next to 10 degrees
constexpr std::int32_t Tower118 = 0x01181000;

AirportRecord DecodeOne(const Bytes& records, const MagVarGrid& grid = {})
{
    RecordList list;
    EXPECT_TRUE(ScanBgl(AirportFile("Test Field", records), grid, list));
    EXPECT_EQ(list.Airports.size(), 1U);
    return list.Airports.empty() ? AirportRecord() : list.Airports.front();
}

Bytes AirportWithEverything()
{
    const Bytes layout = LayoutList(1, 12, WordBytes({1}) + FloatBytes({0, 0})) +
                         LayoutList(1, 20, FloatBytes({0, 0, 30.48F, 0}) + WordBytes({0x0060C})) +
                         LayoutList(2, 32, TaxiPathElement(0, 0, 0, 0) + TaxiPathElement(1, 0, 0, 0)) +
                         LayoutList(1, 8, TaxiwayName("A"));
    return ReferenceRecord(Lat45, Lon10, 305) + IcaoRecord("ktst") + ComRecord(Tower118, 6, "Test Tower") +
           ComRecord(0x01219000, 5, "") + RunwayOf({Lat45, Lon10, 305, HeadingWord(90), 10000, 150, 1, 9}) +
           IlsOf(Lat45, 0, HeadingWord(90), 0x01103000, "ITST") + GroundLayoutRecord(layout);
}

// Written out from the format; the doubles are those of an independent calculation.
constexpr std::string_view AirportWithEverythingHex =
    "'Test Field' 'KTST' be010000"      // NextPos 446: the record has 445 bytes
    "0000000000804640 00009cffffff2340" // 45 N, 9.999999988358468 E
    "e9030000"                          // 305 m = 1000.66 ft
    "'' '' '121.9' 'Test Tower' '118.1' 'Test Tower' '' '' '' ''"
    "0100 02000000 00000000" // a runway and the blank spare
    "'9L' '27R' 0000000000804640 0000b0ffffff2340"
    "0000000000804640 c3f6800844f62340"    // End1: 9.98098780226008 E
    "0000000000804640 3d09dff6bb092440"    // End2: 10.019012179113469 E
    "e9030000 5100 0501 10270000 96000000" // 81 and 261 degrees magnetic: 9 east
    "'' '' 0000000000000000 0000000000000000 0000000000000000 0000000000000000 0000000000000000 0000000000000000"
    "00000000 0000 0000 00000000 00000000"
    "01000000"
    "0100 02000000 00000000" // an ILS, at the threshold of its heading
    "'ITST' 0000000000804640 c3f6800844f62340 5100 '110.3'"
    "'' 0000000000000000 0000000000000000 0000 ''"
    "01000000"
    "0100 01000000 00000000 01000000 0000000000804640 00009cffffff2340 01000000"
    "0100 01000000 00000000 'GATE A 12' 0000000000804640 00009cffffff2340 64000000 01000000"
    "0100 02000000 00000000 00000000 00000000 00000000 'A' 01000000 00000000 00000000 'Runway 9L' 02000000";

TEST(AirportDecoder, WritesAnAirportWithEverythingByteForByte)
{
    MagVarGrid grid;
    grid.Values.fill(1820); // 9.9976 degrees east
    EncodedRecords records;
    ASSERT_TRUE(ScanBgl(AirportFile("Test Field", AirportWithEverything()), grid, records));
    EXPECT_EQ(records.Airports, HexBytes(AirportWithEverythingHex));
}

TEST(AirportDecoder, WritesAnAirportOfWhichNothingIsKnown)
{
    const AirportRecord airport = DecodeOne(BglRecord(0x77777, 8, {}) + IcaoRecord("LATE"));
    AirportRecord expected;
    expected.Name = "Test Field";
    EXPECT_EQ(airport, expected);
}

struct DesignationCase {
    const char* Name;
    std::int32_t Number, Side;
    const char* First;
    const char* Opposite;
};
class Designations : public testing::TestWithParam<DesignationCase> {};
TEST_P(Designations, CarryNumberAndSide)
{
    const DesignationCase& c = GetParam();
    RunwayWords words;
    words.Number = c.Number;
    words.Side = c.Side;
    const AirportRecord airport = DecodeOne(RunwayOf(words));
    ASSERT_EQ(airport.Runways.size(), 1U);
    EXPECT_EQ(airport.Runways[0].Designation, c.First);
    EXPECT_EQ(airport.Runways[0].ReciprocalDesignation, c.Opposite);
}
INSTANTIATE_TEST_SUITE_P(
    Builder, Designations,
    testing::Values(DesignationCase{"Left", 9, 1, "9L", "27R"}, DesignationCase{"Right", 27, 2, "27R", "9L"},
                    DesignationCase{"None", 36, 0, "36", "18"}, DesignationCase{"Center", 18, 3, "18C", "36C"},
                    DesignationCase{"Helipad", 1, 4, "1H", "19H"}, DesignationCase{"UnknownSide", 5, 9, "5", "23"},
                    DesignationCase{"NegativeSide", 5, -1, "5", "23"}, DesignationCase{"NoNumber", 37, 1, "", ""},
                    DesignationCase{"NegativeNumber", -20, 0, "-20", "-2"}),
    [](const auto& row) { return std::string(row.param.Name); });

TEST(AirportDecoder, KeepsTheDesignationsOfTheRunwayBeforeForOneWithoutNumber)
{
    RunwayWords numbered;
    numbered.Side = 1;
    RunwayWords unnumbered;
    unnumbered.Number = 40;
    const AirportRecord airport = DecodeOne(RunwayOf(numbered) + RunwayOf(unnumbered));
    ASSERT_EQ(airport.Runways.size(), 2U);
    EXPECT_EQ(airport.Runways[1].Designation, "9L");
    EXPECT_EQ(airport.Runways[1].ReciprocalDesignation, "27R");
}

TEST(AirportDecoder, DrawsLongRunwaysSixtyMetresShorter)
{
    const auto lengthDegrees = [](std::int32_t feet) {
        RunwayWords words;
        words.Length = feet;
        const RunwayRecord runway = DecodeOne(RunwayOf(words)).Runways.at(0);
        return runway.End2Lat - runway.End1Lat;
    };
    constexpr double DegreesPerM = 360.0 / 40007000;
    EXPECT_NEAR(lengthDegrees(984), 984 * 0.3048 * DegreesPerM, 1e-12); // 299.9 m
    EXPECT_NEAR(lengthDegrees(985), (985 * 0.3048 - 60) * DegreesPerM, 1e-12);
}

TEST(AirportDecoder, TakesRunwayEndsAcross180Once)
{
    RunwayWords words;
    words.Lon = std::numeric_limits<std::int32_t>::max(); // just west of 180
    words.Heading = HeadingWord(90);
    const RunwayRecord runway = DecodeOne(RunwayOf(words)).Runways.at(0);
    EXPECT_LT(runway.End2Lon, -179.99);
    EXPECT_GT(runway.End1Lon, 179.99);
}

struct IlsCase {
    const char* Name;
    double RunwayHeading, IlsHeading;
    int End; ///< 1 or 2, or 0 for the ILS's own position
};
class IlsPositions : public testing::TestWithParam<IlsCase> {};
TEST_P(IlsPositions, AreTheThresholdOfAMatchingHeading)
{
    const IlsCase& c = GetParam();
    RunwayWords words;
    words.Heading = HeadingWord(c.RunwayHeading);
    const AirportRecord airport = DecodeOne(RunwayOf(words) + IlsOf(Lat45, Lon10, HeadingWord(c.IlsHeading), 0, "I"));
    ASSERT_EQ(airport.Ils.size(), 1U);
    const RunwayRecord& runway = airport.Runways.at(0);
    const double expected = c.End == 0 ? 45 : c.End == 1 ? runway.End1Lat : runway.End2Lat;
    EXPECT_EQ(airport.Ils[0].Lat, expected);
    EXPECT_EQ(airport.Ils[0].Frequency, "0");
}
INSTANTIATE_TEST_SUITE_P(Builder, IlsPositions,
                         testing::Values(IlsCase{"Front", 20, 20.4, 1},
                                         IlsCase{"OffByMoreThanHalfADegree", 20, 20.6, 0},
                                         IlsCase{"BackOfAWesterlyRunway", -90, 90, 2},
                                         // Headings are signed, reciprocals are not: 270 reads -90 here and 270 there.
                                         IlsCase{"BackOfAnEasterlyRunway", 90, -90, 0}),
                         [](const auto& row) { return std::string(row.param.Name); });

TEST(AirportDecoder, ReadsIlsOnlyDirectlyBehindARunway)
{
    const Bytes ils = IlsOf(0, 0, 0, 0, "YES");
    const Bytes notIls = IlsOf(0, 0, 0, 0, "NO", 3);
    const Bytes lonely = IlsOf(0, 0, 0, 0, "NO");
    const AirportRecord airport = DecodeOne(lonely + RunwayOf({}) + notIls + ils + BglRecord(0x10003, 8, {}) + lonely +
                                            BglRecord(0x10005, 8, {}) + IcaoRecord("K\0TST"));
    ASSERT_EQ(airport.Ils.size(), 1U);
    EXPECT_EQ(airport.Ils[0].Ident, "YES");
    EXPECT_EQ(airport.Icao, "K");
}

TEST(AirportDecoder, FillsEachComPairOnce)
{
    const AirportRecord airport =
        DecodeOne(ComRecord(Tower118, 6, "First") + ComRecord(0x01234500, 6, "Second") + ComRecord(0x01212500, 7, "") +
                  ComRecord(0x01190000, 8, "Approach") + ComRecord(0x01241750, 9, "Departure") +
                  ComRecord(0x01100000, 1, "Other") + ComRecord(0, 5, "Ground"));
    EXPECT_EQ(airport.TowerFreq + airport.TowerName, "118.1First");
    EXPECT_EQ(airport.ClearanceFreq + airport.ClearanceName, "121.25Second");
    EXPECT_EQ(airport.ApproachFreq + airport.ApproachName, "119Approach");
    EXPECT_EQ(airport.DepartureFreq + airport.DepartureName, "124.175Departure");
    EXPECT_EQ(airport.GroundFreq + airport.GroundName, "0Ground");
}

struct BrokenRecordCase {
    const char* Name;
    Bytes Broken;
    std::size_t Runways, Ils;
};
class BrokenRecords : public testing::TestWithParam<BrokenRecordCase> {};
TEST_P(BrokenRecords, EndTheAirportWithWhatItHas)
{
    const AirportRecord airport =
        DecodeOne(IcaoRecord("kAbC") + RunwayOf({}) + GetParam().Broken + ComRecord(Tower118, 6, "Too late"));
    EXPECT_EQ(airport.Icao, "KABC");
    EXPECT_EQ(airport.Runways.size(), GetParam().Runways);
    EXPECT_EQ(airport.Ils.size(), GetParam().Ils);
    EXPECT_EQ(airport.TowerName, "");
}
INSTANTIATE_TEST_SUITE_P(
    Builder, BrokenRecords,
    testing::Values(BrokenRecordCase{"ComIsNotBcd", ComRecord(0x0118A000, 6, "x"), 1, 0},
                    BrokenRecordCase{"IlsIsNotBcd", IlsOf(0, 0, 0, 0x0A, "I"), 1, 0},
                    BrokenRecordCase{"ElevationDoesNotFit", ReferenceRecord(0, 0, 0x7FFFFFFF), 1, 0},
                    BrokenRecordCase{"RunwayElevationDoesNotFit", RunwayOf({0, 0, -0x7FFFFFFF}), 1, 0},
                    BrokenRecordCase{"OffTheGrid", RunwayOf({-0x7FFFFFFF}), 1, 0},
                    BrokenRecordCase{"TextBeyondTheFile", WordBytes({0x10006, 100000}), 1, 0},
                    BrokenRecordCase{"DoesNotLeadForward", WordBytes({0x10003, -8}), 1, 0},
                    BrokenRecordCase{"LeadsBackward", WordBytes({0x10003, -40}), 1, 0},
                    BrokenRecordCase{"LeadsBeyondTheFile", WordBytes({0x10003, 0x7FFFFFFF}), 1, 0}),
    [](const auto& row) { return std::string(row.param.Name); });

TEST(AirportDecoder, KeepsTheFieldsSetBeforeAnError)
{
    const AirportRecord airport = DecodeOne(ReferenceRecord(Lat45, Lon10, 0x7FFFFFFF));
    EXPECT_EQ(airport.Lat, 45);
    EXPECT_NEAR(airport.Lon, 10, 1e-6);
    EXPECT_EQ(airport.ElevationFt, 0);
}
} // namespace
} // namespace corvane
