#include "area/DatabaseLists.h"

#include "core/RecordCodec.h"
#include "tests/area/SmallWorld.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvane {
using testing::ElementsAre;
using testing::HasSubstr;

TEST(DatabaseLists, ListsAirportsByCodeAndName)
{
    SmallWorld world;
    world.AddAirport(MakeAirport("KSEA", 47, -122));
    world.AddAirport(MakeAirport("MPTO", 9, -79));
    world.AddAirport(MakeAirport("KSEA", 1, 1));
    MemorySource airports("airports", world.Airports);
    const auto list = ReadAirportList(airports);
    ASSERT_TRUE(list);
    EXPECT_THAT(*list, ElementsAre("KSEA - Field", "MPTO - Field", "KSEA - Field"));

    MemorySource none("airports", {});
    EXPECT_THAT(*ReadAirportList(none), ElementsAre());
}

TEST(DatabaseLists, NamesEachHighSectorOnceInLetterCase)
{
    std::vector<AirspaceRecord> airspaces;
    for (const char* name : {"PANAMA FIR", "Panama FIR", "BOGOTA FIR", "PANAMA FIR", ""})
        airspaces.push_back(MakeSector(name, 1, 0, 0, 1));
    airspaces.push_back(MakeSector("LOW FIR", 1, 0, 0, 1));
    airspaces.back().Kind = LowSectorKind;
    EXPECT_THAT(SectorNames(airspaces), ElementsAre("PANAMA FIR", "Panama FIR", "BOGOTA FIR", ""));
}

TEST(DatabaseLists, ReadsAsManyAirspacesAsTheSettingsSay)
{
    Bytes file;
    AirspaceRecord sector = MakeSector("PANAMA FIR", 10, 5, -83, -77);
    sector.Points = {{BoundaryKind::Start, 9, -80, 0}, {BoundaryKind::Line, 8, -79, 0}};
    EncodeAirspace(file, sector, 1);
    const std::size_t firstSize = file.size();
    EncodeAirspace(file, MakeSector("BOGOTA FIR", 10, 5, -83, -77), static_cast<std::int64_t>(firstSize) + 1);

    MemorySource source("airspaces", file);
    EXPECT_THAT(*ReadAllAirspaces(source, 0), ElementsAre());
    const auto one = ReadAllAirspaces(source, 1);
    ASSERT_TRUE(one);
    ASSERT_EQ(one->size(), 1U);
    EXPECT_EQ(one->front().Points, sector.Points);
    EXPECT_EQ(ReadAllAirspaces(source, 2)->size(), 2U);

    EXPECT_EQ(ReadAllAirspaces(source, -1).error().What, "airspaces");
    for (const std::int32_t more : {3, 2147483647}) {
        EarlyEnds earlyEnds;
        EXPECT_EQ(ReadAllAirspaces(source, more, &earlyEnds)->size(), 2U);
        EXPECT_EQ(earlyEnds.Warning(),
                  "airspaces: ends too early, so that records are missing; create the database again");
    }
    for (std::size_t size = 0; size < file.size(); ++size) {
        MemorySource cut("airspaces", ByteSpan(file).first(size));
        EarlyEnds earlyEnds;
        EXPECT_TRUE(ReadAllAirspaces(cut, 1, &earlyEnds)) << size;
        EXPECT_EQ(earlyEnds.Files().empty(), size >= firstSize) << size;
    }
}

TEST(DatabaseLists, KeepsTheNavaidsInside)
{
    SmallWorld world;
    world.AddVor("AAA", 10, 1);
    world.AddVor("BBB", -10, 2);
    world.AddVor("CCC", 20, 3);
    const auto north = [](LatLon at) { return at.Lat > 0; };
    MemorySource source("vors", world.Vors);
    EXPECT_THAT(Idents(*ReadNavaids(source, 3, north)), ElementsAre("AAA", "CCC"));
    EXPECT_THAT(Idents(*ReadNavaids(source, 2, north)), ElementsAre("AAA"));
    EXPECT_FALSE(ReadNavaids(source, -3, north));

    const std::size_t record = world.Vors.size() / 3;
    const auto anywhere = [](LatLon) { return true; };
    for (std::size_t size = 0; size < world.Vors.size(); ++size) {
        MemorySource cut("vors", ByteSpan(world.Vors).first(size));
        EarlyEnds earlyEnds;
        const std::size_t read = ReadNavaids(cut, 3, north, &earlyEnds)->size(); // the first and the third
        EXPECT_GE(read, size < record ? 0U : 1U) << size;
        EXPECT_LE(read, size > 2 * record ? 2U : 1U) << size;
        EXPECT_THAT(earlyEnds.Files(), ElementsAre("vors")) << size;
        EXPECT_LE(ReadNavaids(cut, 2147483647, anywhere)->size(), size / 23 + size / record + 1) << size;
    }
    MemorySource two("vors", ByteSpan(world.Vors).first(2 * record + 3));
    EXPECT_THAT(Idents(*ReadNavaids(two, 4, anywhere)), ElementsAre("AAA", "BBB", "", "")) << "blank ones lie at 0, 0";
}
} // namespace corvane
