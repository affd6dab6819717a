#include "builder/BglScanner.h"

#include "builder/EncodedRecords.h"
#include "tests/builder/SampleBgl.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace corvane {
namespace {
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> AirportNames(const RecordList& list)
{
    std::vector<std::string> names;
    for (const AirportRecord& airport : list.Airports)
        names.push_back(airport.Name);
    return names;
}

struct HeaderCase {
    const char* Name;
    std::size_t At;
    std::int32_t Value;
    bool OfInterest;
};
class Headers : public testing::TestWithParam<HeaderCase> {};
TEST_P(Headers, TellWhetherAFileIsLoaded)
{
    Bytes header(BglHeaderSize);
    PutI32(header, GetParam().At, GetParam().Value);
    EXPECT_EQ(BglOfInterest(header), GetParam().OfInterest);
    EXPECT_FALSE(BglOfInterest(ByteSpan(header).first(GetParam().At + 3)));
}
INSTANTIATE_TEST_SUITE_P(Builder, Headers,
                         testing::Values(HeaderCase{"Nothing", 0, 1, false}, HeaderCase{"Vors", 0x12, 1, true},
                                         HeaderCase{"NegativeVors", 0x12, -1, false}, HeaderCase{"Ndbs", 0x4E, 1, true},
                                         HeaderCase{"Chains", 0x76, static_cast<std::int32_t>(0x87654321U), true},
                                         HeaderCase{"OtherMark", 0x76, static_cast<std::int32_t>(0x87654320U), false}),
                         [](const auto& row) { return std::string(row.param.Name); });

TEST(BglScanner, WalksEveryDirectoryOfChainA)
{
    BglWriter bgl;
    const std::int32_t data = bgl.AppendAirport(IcaoRecord("X"));
    const std::int32_t otherData = bgl.Append(WordBytes({1, 0, 2, 0})); // its third word is not 1
    const Bytes otherEntries =
        BglRecord(0x30001, 24, {{20, 3}},
                  BglRecord(0x30009, 16, {}) + BglRecord(0x30002, 16, {{8, 0x50002}, {12, data}}, BytesOf("KIND")) +
                      BglRecord(0x30002, 16, {{8, 0x50001}, {12, data}}, BytesOf("C")));
    bgl.SetChains(bgl.Append(BglWriter::Directory({{"A", data}, {"NO", otherData}, {"B", data}}) + otherEntries +
                             BglRecord(0x30003, 8, {}) + BglWriter::Directory({{"ENDED", data}})),
                  0);
    RecordList list;
    ASSERT_TRUE(ScanBgl(bgl.Content, {}, list));
    EXPECT_THAT(AirportNames(list), ElementsAre("A", "B", "C"));
}

TEST(BglScanner, NeedsTheChainsToBePresent)
{
    Bytes file = AirportFile("A", {});
    PutI32(file, 0x90, 2);
    RecordList list;
    ASSERT_TRUE(ScanBgl(file, {}, list));
    EXPECT_THAT(list.Airports, IsEmpty());
}

TEST(BglScanner, GoesOnBehindTheDirectoriesInsideChainB)
{
    const Bytes sector = Boundary(StartRecord(0, 0, 0, 9000));
    BglWriter bgl;
    const std::int32_t data = bgl.AppendAirport({});
    bgl.SetChains(0, bgl.Append(BoundaryList(sector) + BglWriter::Directory({{"A", data}}) +
                                BglWriter::Directory({{"B", data}}) + BoundaryList(sector + sector) +
                                BglRecord(1, 16, {{8, 3}}, sector) + BglRecord(9, 8, {}) + BoundaryList(sector)));
    RecordList list;
    ASSERT_TRUE(ScanBgl(bgl.Content, {}, list));
    EXPECT_THAT(AirportNames(list), ElementsAre("A", "B"));
    EXPECT_EQ(list.Airspaces.size(), 3U);
}

struct FatalCase {
    const char* Name;
    std::int32_t Data;
};
class FatalDirectories : public testing::TestWithParam<FatalCase> {};
TEST_P(FatalDirectories, FailNamingTheFile)
{
    BglWriter bgl;
    bgl.SetChains(bgl.Append(BglWriter::Directory({{"A", GetParam().Data}})), 0);
    RecordList list;
    const Result<void> scanned = ScanBgl(bgl.Content, {}, list, "bad.bgl");
    ASSERT_FALSE(scanned);
    EXPECT_EQ(scanned.error().What, "bad.bgl");
    EXPECT_EQ(scanned.error().Why, "the airport directory entry at byte 192 leads outside the file's 209 bytes");
    EXPECT_THAT(list.Airports, IsEmpty());
}
INSTANTIATE_TEST_SUITE_P(Builder, FatalDirectories,
                         testing::Values(FatalCase{"BeforeTheFile", -1}, FatalCase{"AcrossTheEnd", 207},
                                         FatalCase{"AtTheEnd", 209}),
                         [](const auto& row) { return std::string(row.param.Name); });

TEST(BglScanner, StopsCleanlyWhereverTheFileIsCut) // with the address sanitizer on
{
    const Bytes whole = FileWithAllKinds();
    RecordList all;
    ASSERT_TRUE(ScanBgl(whole, {}, all));
    ASSERT_EQ(all.Airports.size(), 2U);
    ASSERT_EQ(all.Airspaces.size(), 2U);
    ASSERT_EQ(all.Vors.size(), 1U);
    ASSERT_EQ(all.Ndbs.size(), 1U);
    for (std::size_t n = 0; n <= whole.size(); ++n) {
        const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(n)); // ends where its memory ends
        RecordList list;
        static_cast<void>(ScanBgl(cut, {}, list));
        EXPECT_LE(list.Airports.size(), 2U) << n;
        EXPECT_LE(list.Airspaces.size(), 2U) << n;
    }
}

TEST(BglScanner, SurvivesEveryDamagedByte)
{
    constexpr std::size_t Blanks = std::size_t{4} * 32767 * 32; // ground elements behind the file's end
    const Bytes whole = FileWithAllKinds();
    for (std::size_t n = 0; n < whole.size(); ++n) {
        for (const std::uint8_t damage : Bytes{0x00, 0x01, 0x7F, 0x80, 0xFF}) {
            Bytes damaged = whole;
            damaged[n] = damage;
            EncodedRecords records;
            static_cast<void>(ScanBgl(damaged, {}, records));
            EXPECT_LT(records.ByteCount(), 100 * whole.size() + Blanks) << n;
        }
    }
}

struct BombCase {
    const char* Name;
    Bytes File;
};
class Bombs : public testing::TestWithParam<BombCase> {};
TEST_P(Bombs, AreRefusedForNamingTheirRecordsOverAndOver)
{
    EncodedRecords records;
    const Result<void> scanned = ScanBgl(GetParam().File, {}, records, "bomb.bgl");
    ASSERT_FALSE(scanned);
    EXPECT_THAT(scanned.error().Why, testing::StartsWith("names its records over and over"));
    EXPECT_LT(records.ByteCount(), 100 * (GetParam().File.size() + 100'000));
}

/// Thousands of directory entries that name one large airport.
Bytes AirportBomb()
{
    constexpr std::int32_t Points = 30000;
    BglWriter bgl;
    const Bytes points(static_cast<std::size_t>(Points) * 12);
    const std::int32_t data = bgl.AppendAirport(GroundLayoutRecord(LayoutList(Points, 12, points)));
    bgl.SetChains(bgl.Append(BglWriter::Directory(std::vector(5000, std::pair(std::string("BOMB"), data)))), 0);
    return bgl.Content;
}

/// Directory entries that name one tiny airport, whose layout claims thousands of points behind the file's end.
Bytes BlankBomb()
{
    BglWriter bgl;
    const std::vector entries(5, std::pair(std::string("BOMB"), 0));
    const std::int32_t directory = bgl.Append(BglWriter::Directory(entries) + WordBytes({0, 0}));
    const std::int32_t data = bgl.Append(WordBytes({1, 0, 1, 0}) + GroundLayoutRecord(LayoutList(32767, 32, {})));
    const std::size_t entrySize = (BglWriter::Directory(entries).size() - 24) / entries.size();
    for (std::size_t i = 0; i < entries.size(); ++i)
        PutI32(bgl.Content, static_cast<std::size_t>(directory) + 24 + i * entrySize + 12, data);
    bgl.SetChains(directory, 0);
    return bgl.Content;
}

/// An airport whose many layout records each name the same thousands of paths anew.
Bytes PathBomb()
{
    constexpr std::int32_t Paths = 30000;
    Bytes records = GroundLayoutRecord(LayoutList(Paths, 32, Bytes(static_cast<std::size_t>(Paths) * 32)));
    for (int i = 0; i < 20000; ++i)
        records = std::move(records) + GroundLayoutRecord(LayoutList(1, 8, TaxiwayName("0")));
    return AirportFile("BOMB", records);
}

/// Block list entries that all name one long run of stations.
Bytes NavaidBomb()
{
    constexpr std::size_t Blocks = 20000;
    Bytes file(0x80);
    PutI32(file, 0x4E, 0x80);
    Bytes block = Bytes{0x15, 0, 0, 0, 0} + WordBytes({static_cast<std::int32_t>(Blocks * 9 + 1)});
    for (std::size_t i = 0; i < Blocks; ++i)
        file.insert(file.end(), block.begin(), block.end());
    file.push_back(0);
    for (int i = 0; i < 5000; ++i)
        file = std::move(file) + NavaidBytes(42, {});
    return file;
}

/// Boundary lists a few bytes apart, each of which walks the whole rest of the file.
Bytes OverlappingListsBomb()
{
    BglWriter bgl;
    Bytes heads;
    for (int i = 0; i < 20000; ++i)
        heads =
            std::move(heads) + WordBytes({1, 8, 4, 0}); // each is a list's record and a record of the lists before it
    bgl.SetChains(0, bgl.Append(heads + Bytes(7)));
    return bgl.Content;
}

INSTANTIATE_TEST_SUITE_P(Builder, Bombs,
                         testing::Values(BombCase{"Airport", AirportBomb()}, BombCase{"Blanks", BlankBomb()},
                                         BombCase{"Paths", PathBomb()}, BombCase{"Navaids", NavaidBomb()},
                                         BombCase{"OverlappingLists", OverlappingListsBomb()}),
                         [](const auto& row) { return std::string(row.param.Name); });

TEST(BglScanner, IsNotHeldUpByCountsThatTheFileCannotHold)
{
    BglWriter bgl;
    const std::int32_t data = bgl.AppendAirport({});
    Bytes directory = BglWriter::Directory({{"A", data}});
    PutI32(directory, 20, 0x7FFFFFFF);
    bgl.SetChains(bgl.Append(directory + Bytes(7)), 0); // no number reaches over the end
    RecordList list;
    EXPECT_TRUE(ScanBgl(bgl.Content, {}, list));
    EXPECT_THAT(AirportNames(list), ElementsAre("A"));
}
} // namespace
} // namespace corvane
