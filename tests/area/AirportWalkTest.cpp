#include "area/AirportWalk.h"

#include "tests/area/SmallWorld.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace corvane {
using testing::ElementsAre;
using testing::HasSubstr;

namespace {
struct Walked {
    std::vector<std::string> Icaos;
    std::vector<std::string> EarlyEnds;
    Result<void> Outcome;
};
} // namespace

static Walked Walk(const Bytes& file)
{
    MemorySource source("walked.dat", file);
    Walked walked;
    EarlyEnds earlyEnds;
    walked.Outcome = WalkAirports(
        source, [&](const AirportHead& head, const RecordExtent&) { walked.Icaos.emplace_back(head.Icao); },
        &earlyEnds);
    walked.EarlyEnds = earlyEnds.Files();
    return walked;
}

static Bytes ThreeAirports()
{
    SmallWorld world;
    for (const char* icao : {"AAAA", "BBBB", "CCCC"})
        world.AddAirport(MakeAirport(icao, 1, 2));
    return world.Airports;
}

// Records of equal length, each with NextPos behind its 2 + 5 bytes of name and 2 + 4 bytes of ICAO code.
static constexpr std::size_t NextPosAt = 13;

TEST(AirportWalk, EndsAtTheFileAndAtRecordsWithoutNameOrCode)
{
    EXPECT_THAT(Walk({}).Icaos, ElementsAre());
    EXPECT_THAT(Walk(ThreeAirports()).Icaos, ElementsAre("AAAA", "BBBB", "CCCC"));

    for (std::string AirportRecord::*field : {&AirportRecord::Name, &AirportRecord::Icao}) {
        SmallWorld world;
        world.AddAirport(MakeAirport("AAAA", 1, 2));
        AirportRecord blank = MakeAirport("BBBB", 1, 2);
        (blank.*field).clear();
        world.AddAirport(blank);
        world.AddAirport(MakeAirport("CCCC", 1, 2));
        const Walked walked = Walk(world.Airports);
        EXPECT_TRUE(walked.Outcome);
        EXPECT_THAT(walked.Icaos, ElementsAre("AAAA"));
    }
}

TEST(AirportWalk, RefusesPositionsThatDoNotLeadForward)
{
    const Bytes whole = ThreeAirports();
    const auto record = static_cast<std::int32_t>(whole.size() / 3);
    for (const std::int32_t position : {0, 1, record, record + 1, -5, std::numeric_limits<std::int32_t>::min()}) {
        Bytes file = whole;
        ByteWriter(file).PatchI32(static_cast<std::size_t>(record) + NextPosAt, position); // the second record's
        const Walked walked = Walk(file);
        ASSERT_FALSE(walked.Outcome) << position;
        EXPECT_EQ(walked.Outcome.error().What, "walked.dat");
        EXPECT_THAT(walked.Outcome.error().Why, HasSubstr(std::to_string(position)));
        EXPECT_THAT(walked.Icaos, ElementsAre("AAAA"));
    }
}

TEST(AirportWalk, FollowsNextPosOverBytesThatBelongToNoRecord)
{
    SmallWorld world;
    world.AddAirport(MakeAirport("AAAA", 1, 2));
    ByteWriter(world.Airports).WriteZeros(7);
    ByteWriter(world.Airports).PatchI32(NextPosAt, static_cast<std::int32_t>(world.Airports.size()) + 1);
    world.AddAirport(MakeAirport("BBBB", 1, 2));
    EXPECT_THAT(Walk(world.Airports).Icaos, ElementsAre("AAAA", "BBBB"));
}

TEST(AirportWalk, EndsWithTheRecordInWhichTheFileDoes)
{
    const Bytes whole = ThreeAirports();
    const std::size_t record = whole.size() / 3;
    for (std::size_t size = 0; size <= whole.size(); ++size) {
        const Walked walked = Walk(Bytes(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)));
        EXPECT_TRUE(walked.Outcome) << size;
        const bool hasName = size % record >= NextPosAt;
        EXPECT_EQ(walked.Icaos.size(), size / record + (hasName ? 1 : 0)) << size;
        EXPECT_EQ(walked.EarlyEnds.empty(), size % record == 0) << size;
    }
    for (const std::int32_t position :
         {static_cast<std::int32_t>(whole.size()) + 2, std::numeric_limits<std::int32_t>::max()}) {
        Bytes file = whole;
        ByteWriter(file).PatchI32(record + NextPosAt, position); // the second record's
        const Walked walked = Walk(file);
        EXPECT_THAT(walked.Icaos, ElementsAre("AAAA", "BBBB"));
        EXPECT_THAT(walked.EarlyEnds, ElementsAre("walked.dat"));
    }
}

TEST(AirportWalk, ReadsTheLongestNamesAndWholeRecords)
{
    AirportRecord airport = MakeAirport("AAAA", 47.5, -122.25);
    airport.Name = std::string(65535, 'n');
    airport.TaxiPoints = {{1, 2, 3}};
    SmallWorld world;
    world.AddAirport(airport);
    world.AddAirport(airport);

    MemorySource source("walked.dat", world.Airports);
    std::vector<RecordExtent> extents;
    ASSERT_TRUE(WalkAirports(source, [&](const AirportHead& head, const RecordExtent& extent) {
        EXPECT_EQ(head.Name, airport.Name);
        EXPECT_EQ(head.Lon, -122.25);
        extents.push_back(extent);
    }));
    ASSERT_EQ(extents.size(), 2U);
    const Result<AirportRecord> read = ReadAirportAt(source, extents[1]);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->TaxiPoints, airport.TaxiPoints);

    const Result<AirportRecord> cut = ReadAirportAt(source, {extents[1].Offset, extents[1].Size - 1});
    ASSERT_TRUE(cut);
    EXPECT_EQ(cut->Name, airport.Name);
    EXPECT_EQ(cut->TaxiPoints, airport.TaxiPoints); // only the last list's count is cut
}
} // namespace corvane
