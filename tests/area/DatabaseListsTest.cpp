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

    EXPECT_EQ(ReadAllAirspaces(source, 3).error(), Fail("airspaces", "ends after 2 of 3 records"));
    EXPECT_EQ(ReadAllAirspaces(source, 2147483647).error().What, "airspaces");
    EXPECT_EQ(ReadAllAirspaces(source, -1).error().What, "airspaces");
    for (std::size_t size = 0; size < file.size(); ++size) {
        MemorySource cut("airspaces", ByteSpan(file).first(size));
        EXPECT_FALSE(ReadAllAirspaces(cut, 2)) << size;
        EXPECT_EQ(bool(ReadAllAirspaces(cut, 1)), size >= firstSize) << size;
    }
}

TEST(DatabaseLists, KeepsTheNavaidsInside)
{
    SmallWorld world;
    world.AddVor("AAA", 10, 1);
    world.AddVor("BBB", -10, 2);
    world.AddVor("CCC", 20, 3);
    const auto north = [](double lat, double) { return lat > 0; };
    MemorySource source("vors", world.Vors);
    EXPECT_THAT(Idents(*ReadNavaids(source, 3, north)), ElementsAre("AAA", "CCC"));
    EXPECT_THAT(Idents(*ReadNavaids(source, 2, north)), ElementsAre("AAA"));
    EXPECT_EQ(ReadNavaids(source, 4, north).error(), Fail("vors", "ends after 3 of 4 records"));
    EXPECT_FALSE(ReadNavaids(source, -3, north));

    for (std::size_t size = 0; size < world.Vors.size(); ++size) {
        MemorySource cut("vors", ByteSpan(world.Vors).first(size));
        EXPECT_FALSE(ReadNavaids(cut, 3, north)) << size;
    }
}
} // namespace corvane
