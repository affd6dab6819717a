#include "area/AreaLoad.h"

#include "core/AtomicFile.h"
#include "core/DatabaseFiles.h"
#include "tests/area/SmallWorld.h"
#include "tests/core/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <limits>

namespace corvane {
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

static constexpr double Nan = std::numeric_limits<double>::quiet_NaN();

static Result<void> LoadAirport(SmallWorld& world, std::string_view entry, AreaModel& area,
                                EarlyEnds* earlyEnds = nullptr)
{
    AreaFiles files = world.Files();
    UnwatchedProgress progress;
    return LoadAirportArea(files, world.Counts, entry, world.AllAirspaces, area, progress, earlyEnds);
}

static Result<void> LoadSector(SmallWorld& world, std::string_view name, AreaModel& area)
{
    AreaFiles files = world.Files();
    UnwatchedProgress progress;
    return LoadSectorArea(files, world.Counts, name, world.AllAirspaces, area, progress);
}

/// Around KSEA at 47 N 122 W; one degree of latitude is 60 miles.
static SmallWorld Northwest()
{
    SmallWorld world;
    AirportRecord withApproach = MakeAirport("KNEA", 47.5, -122);
    withApproach.ApproachName = "Seattle Approach";
    withApproach.ApproachFreq = "119.2";
    world.AddAirport(MakeAirport("KFAR", 50, -122));
    world.AddAirport(withApproach);
    world.AddAirport(MakeAirport("KSEA", 47, -122));
    world.AddAirport(MakeAirport("KEDG", 48.5, -122)); // 90 miles
    world.AddAirport(MakeAirport("KOUT", 47 + 91.0 / 60, -122));
    world.AddVor("SEA", 47, -122.1);
    world.AddVor("FAR", -47, 58);
    world.AddNdb("OUT", 0, 0);
    world.AddNdb("NDB", 46, -122);
    world.AddTerrain(46.5, -122, 1000);
    world.AddTerrain(45.5, -122, 2000); // 90 miles
    world.AddTerrain(45.4, -122, 3000);
    world.AddMapEntry(1 << 30, -(1 << 30)); // 45 N 90 W
    world.AddMapEntry(1 << 30, 1 << 30);
    return world;
}

TEST(AirportArea, HoldsWhatLiesWithin90MilesInFileOrder)
{
    SmallWorld world = Northwest();
    AreaModel area;
    ASSERT_TRUE(LoadAirport(world, "KSEA - Field", area));
    EXPECT_EQ(area.AreaName, "KSEA - Field");
    EXPECT_EQ(area.AreaMode, ControlMode::Airport);
    EXPECT_EQ(area.AreaCenter.Lat, 47);
    EXPECT_EQ(area.AreaCenter.Lon, -122);
    EXPECT_THAT(Idents(area.AreaAirports), ElementsAre("KNEA", "KSEA", "KEDG"));
    EXPECT_THAT(Idents(area.AreaVors), ElementsAre("SEA"));
    EXPECT_THAT(Idents(area.AreaNdbs), ElementsAre("NDB"));
    EXPECT_THAT(Titles(area.AreaAirspaces), ElementsAre("TRACON (Departure/Approach) Seattle Approach"));
    EXPECT_THAT(area.TerrainPoints, ElementsAre(TerrainPoint{46.5, -122, 1000}, TerrainPoint{45.5, -122, 2000}));
    EXPECT_THAT(area.OutlinePoints, ElementsAre(OutlinePoint{0, 0}, OutlinePoint{45, -90}));
}

TEST(AirportArea, TakesAirspacesOfAnyKindThatStrictlyContainTheCenter)
{
    SmallWorld world = Northwest();
    world.AllAirspaces = {MakeSector("Around", 48, 46, -123, -121),        MakeSector("NorthBound", 47, 46, -123, -121),
                          MakeSector("SouthBound", 48, 47, -123, -121),    MakeSector("WestBound", 48, 46, -122, -121),
                          MakeSector("EastBound", 48, 46, -123, -122),     MakeSector("Crossing", 48, 46, 170, -121),
                          MakeSector("ClassB", 47.1, 46.9, -122.1, -121.9)};
    world.AllAirspaces.back().Kind = ClassBKind;
    AreaModel area;
    ASSERT_TRUE(LoadAirport(world, "KSEA - Field", area));
    EXPECT_THAT(Titles(area.AreaAirspaces), ElementsAre("ARTCC/FIR (HIGH) Around", "Airspace Class B ClassB",
                                                        "TRACON (Departure/Approach) Seattle Approach"));
    EXPECT_THAT(world.AllAirspaces, IsEmpty());
}

TEST(AirportArea, TakesTheLastOfEqualEntriesAndComparesExactly)
{
    SmallWorld world;
    world.AddAirport(MakeAirport("AAAA", 1, 2));
    world.AddAirport(MakeAirport("AAAA", 30, 40));
    world.AddAirport(MakeAirport("aaaa", 50, 60));
    AreaModel area;
    ASSERT_TRUE(LoadAirport(world, "AAAA - Field", area));
    EXPECT_EQ(area.AreaCenter.Lat, 30);
    EXPECT_THAT(Idents(area.AreaAirports), ElementsAre("AAAA"));
}

TEST(AirportArea, MeasuresFromTheOldCenterWhenNoAirportHasTheEntry)
{
    SmallWorld world = Northwest();
    AreaModel area;
    area.AreaName = "before";
    area.AreaCenter = {50, -122};
    for (const char* entry : {"KSEA", "KSEA - Fiel", "KSEA - Field ", "ksea - Field", ""}) {
        ASSERT_TRUE(LoadAirport(world, entry, area));
        EXPECT_EQ(area.AreaName, "before");
        EXPECT_EQ(area.AreaMode, ControlMode::None);
        EXPECT_THAT(Idents(area.AreaAirports), ElementsAre("KFAR", "KEDG", "KOUT")) << entry;
    }
}

TEST(AirportArea, ReplacesThePreviousAreaAsAWhole)
{
    SmallWorld world = Northwest();
    AreaModel area;
    ASSERT_TRUE(LoadAirport(world, "KSEA - Field", area));
    SmallWorld empty;
    empty.AddAirport(MakeAirport("MPTO", 9, -79));
    ASSERT_TRUE(LoadAirport(empty, "MPTO - Field", area));
    EXPECT_THAT(Idents(area.AreaAirports), ElementsAre("MPTO"));
    EXPECT_THAT(area.AreaVors, IsEmpty());
    EXPECT_THAT(area.AreaAirspaces, IsEmpty());
    EXPECT_THAT(area.TerrainPoints, IsEmpty());
    EXPECT_THAT(area.OutlinePoints, IsEmpty());
}

TEST(AirportArea, SpansTheDateLine)
{
    SmallWorld world;
    world.AddAirport(MakeAirport("WEST", -17, 179.5));
    world.AddAirport(MakeAirport("EAST", -17, -179.5));
    world.AddAirport(MakeAirport("FARR", -17, 177));
    world.AddTerrain(-17, -179.9, 10);
    AreaModel area;
    ASSERT_TRUE(LoadAirport(world, "WEST - Field", area));
    EXPECT_THAT(Idents(area.AreaAirports), ElementsAre("WEST", "EAST"));
    EXPECT_EQ(area.TerrainPoints.size(), 1U);
}

TEST(AirportArea, LeavesOutObjectsWithoutAPosition)
{
    SmallWorld world = Northwest();
    world.AddAirport(MakeAirport("KNAN", Nan, -122));
    world.AddVor("NAN", 47, Nan);
    world.AddTerrain(Nan, Nan, 5);
    AreaModel area;
    ASSERT_TRUE(LoadAirport(world, "KSEA - Field", area));
    EXPECT_EQ(area.AreaAirports.size(), 3U);
    EXPECT_EQ(area.AreaVors.size(), 1U);
    EXPECT_EQ(area.TerrainPoints.size(), 2U);

    const Result<void> loaded = LoadAirport(world, "KNAN - Field", area);
    ASSERT_FALSE(loaded);
    EXPECT_EQ(loaded.error(), Fail("airports", "gives no position for KNAN - Field"));
    EXPECT_EQ(area.AreaName, "KSEA - Field");
}

TEST(SectorArea, HoldsWhatLiesInTheBoxAndItsNeighbours)
{
    SmallWorld world;
    world.AddAirport(MakeAirport("INSI", 12, -75));
    world.AddAirport(MakeAirport("EDGE", 25, -75));
    world.AddAirport(MakeAirport("OUTS", 30, -75));
    world.AddVor("VOR", 11, -79);
    world.AddNdb("NDB", 11, -81);
    world.AddTerrain(24.9, -65.1, 50);
    world.AddTerrain(10, -70, 60);
    AirspaceRecord touching = MakeSector("Touching", 40, 25, -80, -65);
    touching.Points = {
        {BoundaryKind::Start, 40, -70, 0}, {BoundaryKind::Line, 25, -65, 0}, {BoundaryKind::Line, 24, -66, 0}};
    AirspaceRecord apart = MakeSector("Apart", 40, 25, -80, -65);
    apart.Points = {{BoundaryKind::Start, 25.1, -65, 0}};
    AirspaceRecord sameName = touching;
    sameName.ComName = "sector one";
    AirspaceRecord low = touching;
    low.Kind = LowSectorKind;
    world.AllAirspaces = {touching, MakeSector("Sector One", 20, 10, -80, -70), apart, sameName,
                          low,      MakeSector("Sector One", 25, 15, -75, -65)};
    AreaModel area;
    ASSERT_TRUE(LoadSector(world, "Sector One", area));
    EXPECT_EQ(area.AreaName, "Sector One");
    EXPECT_EQ(area.AreaMode, ControlMode::Sector);
    EXPECT_THAT(Idents(area.AreaAirports), ElementsAre("INSI"));
    EXPECT_THAT(Idents(area.AreaVors), ElementsAre("VOR"));
    EXPECT_THAT(area.AreaNdbs, IsEmpty());
    EXPECT_THAT(Titles(area.AreaAirspaces),
                ElementsAre("ARTCC/FIR (HIGH) Sector One", "ARTCC/FIR (HIGH) Sector One", "ARTCC/FIR (HIGH) Touching"));
    EXPECT_THAT(area.TerrainPoints, ElementsAre(TerrainPoint{24.9, -65.1, 50}));
    EXPECT_THAT(world.AllAirspaces, IsEmpty());
    // Half way from 25 N 80 W to 10 N 65 W: the mean latitude and longitude, but for the great circle's bulge.
    EXPECT_NEAR(area.AreaCenter.Lat, 17.5, 0.5);
    EXPECT_NEAR(area.AreaCenter.Lon, -72.5, 0.5);
}

TEST(SectorArea, WithoutPiecesIsEmptyAtTheOrigin)
{
    SmallWorld world;
    world.AddAirport(MakeAirport("ORIG", 0, 0));
    world.AddTerrain(0, 0, 1);
    world.AddMapEntry(1 << 20, 1 << 20);
    world.AllAirspaces = {MakeSector("Other", 1, -1, -1, 1)};
    world.AllAirspaces[0].Points = {{BoundaryKind::Start, 0, 0, 0}};
    AreaModel area;
    area.AreaCenter.Lat = 5;
    ASSERT_TRUE(LoadSector(world, "OTHER", area)); // names are told apart by letter case
    EXPECT_EQ(area.AreaName, "OTHER");
    EXPECT_EQ(area.AreaCenter.Lat, 0);
    EXPECT_EQ(area.AreaCenter.Lon, 0);
    EXPECT_THAT(area.AreaAirports, IsEmpty());
    EXPECT_THAT(area.AreaAirspaces, IsEmpty());
    EXPECT_THAT(area.TerrainPoints, IsEmpty());
    EXPECT_EQ(area.OutlinePoints.size(), 2U); // the window is widened all the same
}

TEST(SectorArea, RefusesBoundsThatAreNoNumbers)
{
    SmallWorld world;
    world.AllAirspaces = {MakeSector("S", 1, Nan, 0, 1)};
    AreaModel area;
    EXPECT_FALSE(LoadSector(world, "S", area));
    EXPECT_EQ(world.AllAirspaces.size(), 1U);
}

TEST(AreaLoads, TellEachStepBeforeItAndCountItAfter)
{
    SmallWorld world = Northwest();
    AreaFiles files = world.Files();
    AreaModel area;
    RecordedProgress airport;
    ASSERT_TRUE(LoadAirportArea(files, world.Counts, "KSEA - Field", world.AllAirspaces, area, airport));
    EXPECT_THAT(airport.Heard,
                ElementsAre("Getting selected airport's information...", "+1", "Getting area's airports...", "+1",
                            "Getting area's VORs...", "+1", "Getting area's NDBs...", "+1",
                            "Getting area's airspaces...", "+1", "Getting surrounding TRACON airspaces...", "+1",
                            "Getting terrain info...", "+1", "Getting world's outlines...", "+1"));
    RecordedProgress sector;
    ASSERT_TRUE(LoadSectorArea(files, world.Counts, "S", world.AllAirspaces, area, sector));
    EXPECT_THAT(sector.Heard,
                ElementsAre("Getting ARTCC/FIR sector's information...", "+1", "Getting ARTCC/FIR sector's airports...",
                            "+1", "Getting ARTCC/FIR sector's VORs...", "+1", "Getting ARTCC/FIR sector's NDBs...",
                            "+1", "Get all the surrounding ARTCC/FIR airspaces...", "+1", "Getting TRACON airspaces...",
                            "+1", "Getting terrain info...", "+1", "Getting world's outlines...", "+1"));
}

TEST(AreaLoads, SucceedWhereverADatabaseFileIsCutAndTellWhich)
{
    const SmallWorld whole = Northwest();
    for (Bytes SmallWorld::*file : {&SmallWorld::Airports, &SmallWorld::Vors, &SmallWorld::Ndbs}) {
        for (std::size_t size = 0; size < (whole.*file).size(); ++size) {
            SmallWorld world = Northwest();
            world.AllAirspaces = {MakeSector("S", 48, 46, -123, -121)};
            (world.*file).resize(size);
            AreaModel area;
            area.AreaName = "before";
            area.AreaVors.resize(7);
            EarlyEnds earlyEnds;
            ASSERT_TRUE(LoadAirport(world, "KSEA - Field", area, &earlyEnds)) << size;
            EXPECT_NE(area.AreaVors.size(), 7U) << "the area is a new one";
            EXPECT_TRUE(LoadSector(world, "S", area)) << size;
            if (file != &SmallWorld::Airports) { // they may end between two records, which nobody counts
                EXPECT_THAT(earlyEnds.Files(), ElementsAre(file == &SmallWorld::Vors ? "vors" : "ndbs"));
            }
        }
    }
}

TEST(AreaLoads, SurviveEveryDamagedByte)
{
    const SmallWorld whole = Northwest();
    for (Bytes SmallWorld::*file : {&SmallWorld::Airports, &SmallWorld::Vors, &SmallWorld::Terrain}) {
        for (std::size_t i = 0; i < (whole.*file).size(); ++i) {
            for (const int value : {0x00, 0x7F, 0xFF}) {
                SmallWorld world = whole;
                (world.*file)[i] = static_cast<std::uint8_t>(value);
                AreaModel area;
                static_cast<void>(LoadAirport(world, "KSEA - Field", area)); // an area or an error, no more is promised
            }
        }
    }
}

namespace {
class AreaFolder : public testing::Test {
protected:
    AreaFolder()
    {
        World = Northwest();
        Write(AirportsFileName, World.Airports);
        Write(VorsFileName, World.Vors);
        Write(NdbsFileName, World.Ndbs);
    }

    void Write(std::string_view name, const Bytes& content) const
    {
        ASSERT_TRUE(WriteFileAtomically(Folder / name, content));
    }
    Result<void> Load(AreaModel& area)
    {
        UnwatchedProgress progress;
        return LoadAirportArea(Folder, World.Counts, "KSEA - Field", World.AllAirspaces, area, progress);
    }

    TemporaryFolder Temporary;
    const std::filesystem::path Folder = Temporary.Path();
    SmallWorld World;
};
} // namespace

TEST_F(AreaFolder, ReadsAbsentTerrainAndMapAsEmpty)
{
    AreaModel area;
    ASSERT_TRUE(Load(area));
    EXPECT_EQ(area.AreaAirports.size(), 3U);
    EXPECT_THAT(area.TerrainPoints, IsEmpty());
    EXPECT_THAT(area.OutlinePoints, IsEmpty());
    Write("world_terrain.db", World.Terrain);
    Write("world.map", World.WorldMap);
    ASSERT_TRUE(Load(area));
    EXPECT_EQ(area.TerrainPoints.size(), 2U);
    EXPECT_EQ(area.OutlinePoints.size(), 2U);
}

TEST_F(AreaFolder, NamesTheDatabaseFileThatIsMissing)
{
    for (const std::string_view name : {AirportsFileName, VorsFileName, NdbsFileName}) {
        const std::filesystem::path away = Folder / "away";
        std::filesystem::rename(Folder / name, away);
        AreaModel area;
        const Result<void> loaded = Load(area);
        ASSERT_FALSE(loaded);
        EXPECT_EQ(loaded.error().What, (Folder / name).string());
        std::filesystem::create_directory(Folder / name);
        EXPECT_FALSE(Load(area)) << "a folder is no file";
        std::filesystem::remove(Folder / name);
        std::filesystem::rename(away, Folder / name);
    }
}

TEST_F(AreaFolder, ReadsFilesLargerThanABlockAsMemoryDoes)
{
    for (int i = 0; i < 3000; ++i) { // some 600 kB of airports, 300 kB of terrain
        AirportRecord airport = MakeAirport("K" + std::to_string(i), 40 + i * 0.005, -122);
        airport.TaxiPoints.resize(static_cast<std::size_t>(i % 17));
        World.AddAirport(airport);
        for (int k = 0; k < 5; ++k)
            World.AddTerrain(40 + i * 0.005, -122 - k, i);
    }
    Write(AirportsFileName, World.Airports);
    Write("world_terrain.db", World.Terrain);
    Write("world.map", World.WorldMap);
    AreaModel fromDisk;
    ASSERT_TRUE(Load(fromDisk));
    AreaModel fromMemory;
    ASSERT_TRUE(LoadAirport(World, "KSEA - Field", fromMemory));
    EXPECT_EQ(fromDisk.AreaAirports, fromMemory.AreaAirports);
    EXPECT_EQ(fromDisk.TerrainPoints, fromMemory.TerrainPoints);
    EXPECT_EQ(fromDisk.AreaAirports.size(), 3U + 603U); // from 45.495 to 48.505 degrees, 0.005 degrees apart
}
} // namespace corvane
