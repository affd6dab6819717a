#include "builder/TaxiwayDecoder.h"

#include "builder/BglScanner.h"
#include "builder/PathNames.h"
#include "core/NumberText.h"
#include "tests/builder/BglWriter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <random>

namespace corvane {
namespace {
using testing::ElementsAre;

/// The airport lies at 45 N on the zero meridian and has the runways 9L and 36.
AirportRecord DecodeLayout(const Bytes& lists, const Bytes& behind = {})
{
    RunwayWords left;
    left.Side = 1;
    RunwayWords north;
    north.Number = 36;
    RecordList list;
    const Bytes records = ReferenceRecord(5000875, 0, 0) + RunwayOf(left) + RunwayOf(north) +
                          GroundLayoutRecord(lists) + behind + IcaoRecord("END");
    EXPECT_TRUE(ScanBgl(AirportFile("Test", records), {}, list));
    return list.Airports.at(0);
}

std::vector<std::string> PathNamesOf(const AirportRecord& airport)
{
    std::vector<std::string> names;
    for (const TaxiPath& path : airport.TaxiPaths)
        names.push_back(path.Name);
    return names;
}

struct ParkingCase {
    const char* Name;
    std::int32_t Word;
    std::int32_t Number, NameIndex;
    const char* Text;
};
class ParkingWords : public testing::TestWithParam<ParkingCase> {};
TEST_P(ParkingWords, GiveNumberAndName)
{
    const ParkingWord word = SplitParkingWord(GetParam().Word);
    EXPECT_EQ(word.Number, GetParam().Number);
    EXPECT_EQ(word.NameIndex, GetParam().NameIndex);
    EXPECT_EQ(ParkingNameText(word.NameIndex), GetParam().Text);
}
INSTANTIATE_TEST_SUITE_P(
    Builder, ParkingWords,
    testing::Values(ParkingCase{"GateA", 0x0060C, 12, 12, "GATE A"}, ParkingCase{"GateZ", 37, 0, 37, "GATE Z"},
                    ParkingCase{"PastGateZ", 38, 0, 38, ""}, ParkingCase{"NoName", 5 * 128, 5, 0, ""},
                    ParkingCase{"Parking", 129, 1, 1, "PARKING"}, ParkingCase{"North", 3 * 128 + 2, 3, 2, "N PARKING"},
                    ParkingCase{"NorthWest", 9, 0, 9, "NW PARKING"}, ParkingCase{"Gate", 10, 0, 10, "GATE"},
                    ParkingCase{"Dock", 11, 0, 11, "DOCK"}, ParkingCase{"HalfToEvenDown", 2 * 128 + 64, 2, 64, ""},
                    ParkingCase{"HalfToEvenUp", 128 + 64, 2, -64, ""},
                    ParkingCase{"HighIndexIsTheNextNumber", 128 + 100, 2, -28, ""},
                    ParkingCase{"UpperDigitsAreNotUsed", static_cast<std::int32_t>(0xFFF0060CU), 12, 12, "GATE A"}),
    [](const auto& row) { return std::string(row.param.Name); });

Bytes Spot(std::int32_t word, float radius = 0)
{
    return FloatBytes({0, 0, radius, 0}) + WordBytes({word});
}

TEST(GroundLayout, NamesParkingSpotsAfterTheOneBeforeWhereTheyHaveNoName)
{
    const AirportRecord airport =
        DecodeLayout(LayoutList(2, 20, Spot(5 * 128) + Spot(0x0060C)) + LayoutList(0, 0, {}),
                     GroundLayoutRecord(LayoutList(3, 20, Spot(7 * 128) + Spot(3 * 128 + 2) + Spot(4 * 128 + 40))));
    std::vector<std::string> names;
    for (const ParkingRecord& spot : airport.Parkings)
        names.push_back(spot.Name);
    EXPECT_THAT(names, ElementsAre("GATE A 7", "N PARKING 3", "N PARKING 4")); // the second list replaced the first
    EXPECT_EQ(DecodeLayout(LayoutList(1, 20, Spot(5 * 128))).Parkings.at(0).Name, " 5");
}

TEST(GroundLayout, PlacesOffsetsOnEachAxisAlone)
{
    const AirportRecord airport = DecodeLayout(
        LayoutList(2, 12, WordBytes({7}) + FloatBytes({-1852, 0}) + WordBytes({-1}) + FloatBytes({0, 1852 * 60})));
    ASSERT_EQ(airport.TaxiPoints.size(), 2U);
    EXPECT_EQ(airport.TaxiPoints[0].Kind, 7);
    EXPECT_EQ(airport.TaxiPoints[0].Lat, 45);
    EXPECT_NEAR(airport.TaxiPoints[0].Lon, -1 / 60.0 / std::sqrt(0.5), 1e-7);
    EXPECT_EQ(airport.TaxiPoints[1].Kind, -1);
    EXPECT_NEAR(airport.TaxiPoints[1].Lat, 46, 1e-12);
    EXPECT_EQ(airport.TaxiPoints[1].Lon, 0);
}

TEST(GroundLayout, OffsetsAreThoseOfTheDestinationDigitForDigit)
{
    std::mt19937 random(1);
    std::uniform_real_distribution<double> latitude(-89, 89);
    std::uniform_real_distribution<double> longitude(-180, 180);
    std::uniform_real_distribution<double> offset(-6000, 6000);
    for (int i = 0; i < 20000; ++i) {
        const double lat = latitude(random);
        const double lon = longitude(random);
        const double m = offset(random);
        const MetricOffsets offsets({lat, lon});
        ASSERT_EQ(offsets.OffsetToLon(m), DestinationM({lat, lon}, m > 0 ? 90 : 270, m).Lon) << lat << ' ' << m;
        ASSERT_EQ(offsets.OffsetToLat(m), DestinationM({lat, lon}, m > 0 ? 0 : 180, m).Lat) << lat << ' ' << m;
    }
}

TEST(GroundLayout, NamesTaxiwaysAndRunwaysButNotParkingPaths)
{
    const Bytes paths = TaxiPathElement(0, 1, 2, 1) + TaxiPathElement(1, 3, 4, 1) + TaxiPathElement(2, 5, 6, 0) +
                        TaxiPathElement(0, 7, 8, 9) + TaxiPathElement(0, 7, 8, -1);
    const AirportRecord airport =
        DecodeLayout(LayoutList(0, 12, {}) + LayoutList(5, 32, paths) + LayoutList(-1, 20, {}) +
                     LayoutList(2, 8, TaxiwayName("A") + TaxiwayName(std::string_view("B\0003", 3))));
    EXPECT_THAT(PathNamesOf(airport), ElementsAre("B3", "Runway 36", "0", "9", "-1"));
    EXPECT_EQ(airport.TaxiPaths[2].StartPoint, 5);
    EXPECT_EQ(airport.TaxiPaths[2].EndPoint, 6);
    EXPECT_EQ(airport.Icao, "END");
}

TEST(GroundLayout, LeavesNumbersWithoutANamesList)
{
    EXPECT_THAT(PathNamesOf(DecodeLayout(LayoutList(1, 32, TaxiPathElement(1, 0, 0, 1)) + LayoutList(5, 24, {}))),
                ElementsAre("1"));
}

struct LayoutErrorCase {
    const char* Name;
    Bytes Lists;
    std::size_t Points, Spots;
    std::vector<std::string> Paths;
};
class LayoutErrors : public testing::TestWithParam<LayoutErrorCase> {};
TEST_P(LayoutErrors, EndTheAirportWithWhatItHas)
{
    const LayoutErrorCase& c = GetParam();
    const AirportRecord airport = DecodeLayout(c.Lists);
    EXPECT_EQ(airport.TaxiPoints.size(), c.Points);
    EXPECT_EQ(airport.Parkings.size(), c.Spots);
    EXPECT_EQ(PathNamesOf(airport), c.Paths);
    EXPECT_EQ(airport.Icao, "");
}
const Bytes Point = WordBytes({1}) + FloatBytes({0, 0});
const float NotANumber = std::numeric_limits<float>::quiet_NaN();
INSTANTIATE_TEST_SUITE_P(
    Builder, LayoutErrors,
    testing::Values(
        LayoutErrorCase{"CountDoesNotFit", LayoutList(1, 12, Point) + LayoutList(32768, 12, {}), 1, 0, {}},
        LayoutErrorCase{
            "NotANumber", LayoutList(3, 12, Point + WordBytes({2}) + FloatBytes({0, NotANumber}) + Point), 3, 0, {}},
        LayoutErrorCase{"RadiusDoesNotFit", LayoutList(1, 20, Spot(1, 1e30F)), 0, 1, {}},
        LayoutErrorCase{
            "NoSuchRunway",
            LayoutList(3, 32, TaxiPathElement(1, 0, 0, 0) + TaxiPathElement(1, 0, 0, 2) + TaxiPathElement(1, 0, 0, 1)) +
                LayoutList(0, 8, {}),
            0,
            0,
            {"Runway 9L", "2", "1"}},
        LayoutErrorCase{
            "NegativeRunway", LayoutList(1, 32, TaxiPathElement(1, 0, 0, -1)) + LayoutList(0, 8, {}), 0, 0, {"-1"}}),
    [](const auto& row) { return std::string(row.param.Name); });

/// The file ends behind the layout's lists.
AirportRecord DecodeCutLayout(const Bytes& lists)
{
    BglWriter bgl;
    const std::int32_t directory = bgl.Append(BglWriter::Directory({{"Cut", 0}}) + WordBytes({0, 0}));
    const std::int32_t data =
        bgl.Append(WordBytes({1, 0, 1, 0}) + ReferenceRecord(5000875, 0, 0) + GroundLayoutRecord(lists));
    PutI32(bgl.Content, static_cast<std::size_t>(directory) + 24 + 12, data);
    bgl.SetChains(directory, 0);
    RecordList list;
    EXPECT_TRUE(ScanBgl(bgl.Content, {}, list));
    return list.Airports.at(0);
}

TEST(GroundLayout, HasAsManyElementsAsItClaims)
{
    // The file ends 5 bytes into the second element: that one is an error, and the rest stays blank.
    const auto cut = DecodeCutLayout(LayoutList(32767, 12, Point + WordBytes({5}) + Bytes{1})).TaxiPoints;
    ASSERT_EQ(cut.size(), 32767U);
    EXPECT_EQ(cut[0].Lat, 45);
    EXPECT_EQ(cut[1].Kind, 5);
    EXPECT_EQ(cut[1].Lat, 0);
    EXPECT_EQ(cut[32766].Lat, 0);
    // It ends one byte short of the second element's end, which the zero behind the file makes up for: no error, and
    // the elements past the end are those of zeros, at the airport.
    Bytes spots = Spot(1) + Spot(0x0060C);
    spots.pop_back();
    const auto whole = DecodeCutLayout(LayoutList(4, 20, spots)).Parkings;
    ASSERT_EQ(whole.size(), 4U);
    EXPECT_EQ(whole[1].Name, "GATE A 12");
    EXPECT_EQ(whole[3].Name, "GATE A 0");
    EXPECT_EQ(whole[3].Lat, 45);
    const Bytes paths = TaxiPathElement(0, 0, 0, 0) + TaxiPathElement(0, 0, 0, 1) + TaxiPathElement(1, 0, 0, 0);
    EXPECT_THAT(PathNamesOf(DecodeCutLayout(LayoutList(3, 32, paths) + LayoutList(0x7FFFFFFF, 8, TaxiwayName("A")))),
                ElementsAre("A", "1", "0"));
}

struct NamingCase {
    const char* Name;
    std::vector<std::string> Taxiways;
    std::vector<std::string> Paths;
    std::vector<std::string> Named;
};
class TaxiwayNaming : public testing::TestWithParam<NamingCase> {};
TEST_P(TaxiwayNaming, FindsNamesThatAreNumbersAgain)
{
    std::vector<TaxiPath> paths;
    for (const std::string& name : GetParam().Paths)
        paths.push_back({0, 0, 0, name});
    PathNames names(paths, static_cast<std::int64_t>(GetParam().Taxiways.size()));
    for (const std::string& name : GetParam().Taxiways)
        names.NameNext(name);
    names.Finish();
    std::vector<std::string> named;
    for (const TaxiPath& path : paths)
        named.push_back(path.Name);
    EXPECT_EQ(named, GetParam().Named);
}
INSTANTIATE_TEST_SUITE_P(
    Builder, TaxiwayNaming,
    testing::Values(NamingCase{"Plain", {"A", "B"}, {"0", "1", "1", "2"}, {"A", "B", "B", "2"}},
                    NamingCase{"LaterNumber", {"2", "B", "C"}, {"0", "1", "2"}, {"C", "B", "C"}},
                    NamingCase{"ChainOfNumbers", {"1", "2", "9"}, {"0", "1", "2"}, {"9", "9", "9"}},
                    NamingCase{"EarlierNumber", {"A", "0"}, {"1"}, {"0"}}, NamingCase{"OwnNumber", {"0"}, {"0"}, {"0"}},
                    NamingCase{"ZeroInFront", {"01", "B"}, {"0", "01"}, {"01", "01"}},
                    NamingCase{"EmptyName", {""}, {"0", ""}, {"", ""}}),
    [](const auto& row) { return std::string(row.param.Name); });

TEST(TaxiwayNaming, WritesNumbersWhoseTurnDoesNotCome)
{
    std::vector<TaxiPath> paths = {{0, 0, 0, "0"}, {0, 0, 0, "2"}, {1, 0, 0, "0"}};
    PathNames names(paths, 3);
    names.NameNext("2");
    names.Finish();
    EXPECT_EQ(paths[0].Name, "2");
    EXPECT_EQ(paths[1].Name, "2");
    EXPECT_EQ(paths[2].Name, "0");
}
} // namespace
} // namespace corvane
