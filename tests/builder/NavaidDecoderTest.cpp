#include "builder/NavaidDecoder.h"

#include "builder/BglScanner.h"
#include "builder/EncodedRecords.h"
#include "tests/builder/BglWriter.h"
#include "tests/builder/HexBytes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvane {
namespace {
using testing::ElementsAre;

const Bytes Lat18 = {0xEF, 0x42, 0x0F}; // 1000175: 18 degrees of 5000875 to the quarter
const Bytes Lon45 = {0x00, 0x00, 0x20}; // an eighth of 2 ^ 24
const Bytes LonMinus45 = {0x00, 0x00, 0xE0};

Bytes Vor(std::string_view ident, std::string_view name, std::uint8_t range = 100)
{
    return NavaidBytes(44, {{1, {range}}, {5, Lat18}, {8, Lon45}, {15, BytesOf(ident)}, {20, BytesOf(name)}});
}

Bytes Ndb(std::string_view ident, const Bytes& frequency, std::uint8_t range = 0)
{
    return NavaidBytes(42, {{1, frequency}, {4, Lat18}, {7, LonMinus45}, {12, {range}}, {13, BytesOf(ident)}});
}

Bytes Block(std::int32_t run)
{
    return Bytes{0x15, 0, 0, 0, 0} + WordBytes({run});
}

/// A VOR section with the channels lowest .. highest, of which one has the block lists given.
Bytes VorFile(int lowest, int highest, int channel, const Bytes& runs)
{
    Bytes file(0x80);
    constexpr std::int32_t Base = 0x80;
    PutI32(file, 0x12, Base);
    file[0x16] = static_cast<std::uint8_t>(lowest);
    file[0x18] = static_cast<std::uint8_t>(highest);
    const auto table = static_cast<std::size_t>(5 * (highest - lowest + 1));
    file.resize(Base + table);
    const auto entry = Base + static_cast<std::size_t>(5 * (channel - lowest));
    file[entry] = 1;
    PutI32(file, entry + 1, static_cast<std::int32_t>(table));
    return file + Block(static_cast<std::int32_t>(table) + 10) + Bytes{0} + runs;
}

Bytes NdbFile(const Bytes& run)
{
    Bytes file(0x80);
    PutI32(file, 0x4E, 0x80);
    return file + Block(10) + Bytes{0} + run;
}

TEST(NavaidDecoder, WritesAVorByteForByte)
{
    EncodedRecords records;
    ASSERT_TRUE(ScanBgl(VorFile(0, 199, 117, Vor(std::string_view("SE\0A", 4), "SEATTLE")), {}, records));
    EXPECT_EQ(records.Vors, HexBytes("'SEATTLE' 'SEA' 0000000000003240 0000000000804640 '113.85' 6f"));
    EXPECT_TRUE(records.Ndbs.empty());
}

std::vector<std::string> Idents(const std::vector<NavaidRecord>& stations)
{
    std::vector<std::string> idents;
    for (const NavaidRecord& station : stations)
        idents.push_back(station.Ident);
    return idents;
}

TEST(NavaidDecoder, StepsOverTheOtherTypesOfARun)
{
    const auto other = [](std::uint8_t type, std::size_t size) {
        Bytes bytes(size, 4); // would be stations if they were read
        bytes[0] = type;
        return bytes;
    };
    RecordList list;
    ASSERT_TRUE(ScanBgl(
        VorFile(10, 10, 10,
                Vor("A", "") + other(5, 54) + other(6, 56) + other(0x20, 17) + Vor("B", "") + Bytes{7} + Vor("C", "")),
        {}, list));
    EXPECT_THAT(Idents(list.Vors), ElementsAre("A", "B"));
    EXPECT_EQ(list.Vors[0].Frequency, "108.5");
}

TEST(NavaidDecoder, ReadsFullFieldsAndClampsRanges)
{
    RecordList list;
    ASSERT_TRUE(ScanBgl(VorFile(0, 0, 0, Vor("ABCDE", "ABCDEFGHIJKLMNOPQRSTUVWX", 255) + Vor("", "", 230)), {}, list));
    EXPECT_EQ(list.Vors.at(0).Ident, "ABCDE");
    EXPECT_EQ(list.Vors.at(0).Name, "ABCDEFGHIJKLMNOPQRSTUVWX");
    EXPECT_EQ(list.Vors.at(0).Frequency, "108");
    EXPECT_EQ(list.Vors.at(0).RangeNm, 255); // 282 does not fit
    EXPECT_EQ(list.Vors.at(1).RangeNm, 254); // 254.3
}

struct NdbFrequencyCase {
    const char* Name;
    Bytes Word;
    const char* Text;
};
class NdbFrequencies : public testing::TestWithParam<NdbFrequencyCase> {};
TEST_P(NdbFrequencies, AreDecimalKilohertz)
{
    RecordList list;
    ASSERT_TRUE(ScanBgl(NdbFile(Ndb("X", GetParam().Word)), {}, list));
    EXPECT_EQ(list.Ndbs.at(0).Frequency, GetParam().Text);
    EXPECT_EQ(list.Ndbs.at(0).Lat, 18);
    EXPECT_EQ(list.Ndbs.at(0).Lon, -45);
}
INSTANTIATE_TEST_SUITE_P(Builder, NdbFrequencies,
                         testing::Values(NdbFrequencyCase{"Half", {0x50, 3, 5}, "350.5"},
                                         NdbFrequencyCase{"Thousands", {0x50, 17, 0}, "1750"},
                                         NdbFrequencyCase{"Tenth", {0x00, 0, 1}, "0.1"},
                                         NdbFrequencyCase{"Nothing", {0x00, 0, 0}, "0"},
                                         NdbFrequencyCase{"DigitsAboveNine", {0xFF, 255, 255}, "25690.5"}),
                         [](const auto& row) { return std::string(row.param.Name); });

TEST(NavaidDecoder, WritesAStationThatTheFileCutsWithTheFieldsOfTheOneBefore)
{
    Bytes file = NdbFile(Ndb("ONE", {0x50, 3, 5}, 100) + Ndb("TWO", {0x60, 3, 5}));
    file.resize(file.size() - 2); // the name field is read first, and the zero behind the file makes up for one byte
    RecordList list;
    ASSERT_TRUE(ScanBgl(file, {}, list));
    EXPECT_THAT(Idents(list.Ndbs), ElementsAre("ONE", "ONE"));
}

struct NavaidOffsetCase {
    const char* Name;
    std::int32_t Section, Run;
};
class NavaidOffsets : public testing::TestWithParam<NavaidOffsetCase> {};
TEST_P(NavaidOffsets, OutsideTheFileEndTheirList)
{
    Bytes file = NdbFile(Ndb("ONE", {0x50, 3, 5}));
    PutI32(file, 0x4E, GetParam().Section);
    PutI32(file, 0x80 + 5, GetParam().Run);
    RecordList list;
    EXPECT_TRUE(ScanBgl(file, {}, list));
    EXPECT_TRUE(list.Ndbs.empty());
}
INSTANTIATE_TEST_SUITE_P(Builder, NavaidOffsets,
                         testing::Values(NavaidOffsetCase{"SectionBeyondTheEnd", 0x7FFFFFFF, 10},
                                         NavaidOffsetCase{"RunBeyondTheEnd", 0x80, 0x7FFFFFFF},
                                         NavaidOffsetCase{"RunBeforeTheStart", 0x80, -0x81}),
                         [](const auto& row) { return std::string(row.param.Name); });
} // namespace
} // namespace corvane
