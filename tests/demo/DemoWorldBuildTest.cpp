#include "builder/BuildDriver.h"
#include "core/DatabaseFiles.h"
#include "core/File.h"
#include "core/PathLookup.h"
#include "core/RecordCodec.h"
#include "demo/AirspaceScenery.h"
#include "demo/DemoWorld.h"
#include "tests/core/TemporaryFolder.h"
#include "tests/demo/WorldSized.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace corvane {
namespace fs = std::filesystem;

namespace {
/// What a build makes of a written world.
struct BuiltWorld {
    SettingsRecord Settings;
    std::int64_t BglFiles = 0;
    std::vector<AirportRecord> Airports;
    std::vector<AirspaceRecord> Airspaces;
};
} // namespace

template <class Record>
static std::vector<Record> ReadAll(const fs::path& path, Result<Record> (*decode)(ByteReader&, std::string_view))
{
    std::vector<Record> records;
    const Result<FileBytes> file = ReadWholeFile(path);
    EXPECT_TRUE(file);
    ByteReader reader(file->Span());
    while (reader.Left() > 0) {
        Result<Record> record = decode(reader, "");
        EXPECT_TRUE(record);
        if (!record)
            break;
        records.push_back(std::move(*record));
    }
    return records;
}

static Result<AirportRecord> DecodeOneAirport(ByteReader& reader, std::string_view fileName)
{
    return DecodeAirport(reader, fileName);
}

static void Build(const fs::path& folder, BuiltWorld& built)
{
    BuildDriver driver(folder, FolderBeside(folder, "fs2002"), Fs2002Version);
    const Result<SettingsRecord> settings = driver.Run();
    ASSERT_TRUE(settings) << settings.error().Text();
    built.Settings = *settings;
    built.BglFiles = driver.BglFileCount();
    built.Airports = ReadAll<AirportRecord>(folder / AirportsFileName, DecodeOneAirport);
    built.Airspaces = ReadAll<AirspaceRecord>(folder / AirspacesFileName, DecodeAirspace);
}

template <class List> static std::int64_t Total(const std::vector<AirportRecord>& airports, List AirportRecord::*list)
{
    std::size_t total = 0;
    for (const AirportRecord& airport : airports)
        total += (airport.*list).size();
    return static_cast<std::int64_t>(total);
}

class DemoWorldBuild : public testing::Test {
protected:
    void SetUp() override
    {
        const auto counts = WriteDemoWorld({m_folder.Path(), DefaultDataFolder(), 200});
        ASSERT_TRUE(counts) << counts.error().Text();
        m_counts = *counts;
        Build(m_folder.Path(), m_built);
    }
    const AirportRecord& Airport(const char* icao)
    {
        const auto found = std::find_if(m_built.Airports.begin(), m_built.Airports.end(),
                                        [&](const AirportRecord& airport) { return airport.Icao == icao; });
        EXPECT_NE(found, m_built.Airports.end()) << icao;
        return *found;
    }

    TemporaryFolder m_folder;
    DemoWorldCounts m_counts;
    BuiltWorld m_built;
};

TEST_F(DemoWorldBuild, DatabaseHoldsWhatWasCounted)
{
    EXPECT_EQ(m_built.Settings.AirportCount, m_counts.Airports);
    EXPECT_EQ(m_built.Settings.VorCount, m_counts.Vors);
    EXPECT_EQ(m_built.Settings.NdbCount, m_counts.Ndbs);
    EXPECT_EQ(m_built.Settings.AirspaceCount, m_counts.Airspaces);
    EXPECT_EQ(m_built.BglFiles, m_counts.BglFiles);
    EXPECT_EQ(Total(m_built.Airports, &AirportRecord::Runways), m_counts.Runways);
    EXPECT_EQ(Total(m_built.Airports, &AirportRecord::Ils), m_counts.Ils);
    EXPECT_EQ(Total(m_built.Airports, &AirportRecord::TaxiPoints), m_counts.TaxiPoints);
    EXPECT_EQ(Total(m_built.Airports, &AirportRecord::Parkings), m_counts.Parkings);
    EXPECT_GT(m_counts.DroppedAirspaces, 0);
}

TEST_F(DemoWorldBuild, SeattleIsWhereItIs)
{
    const AirportRecord& seattle = Airport("KSEA");
    EXPECT_EQ(seattle.Name, "Seattle-Tacoma International Airport");
    EXPECT_NEAR(seattle.Lat, 47.44794, 1e-5);
    EXPECT_NEAR(seattle.Lon, -122.31028, 1e-5);
    EXPECT_NEAR(seattle.ElevationFt, 433, 2); // whole metres in the scenery
    EXPECT_EQ(seattle.TowerName, "SEATTLE TOWER");
    EXPECT_EQ(seattle.DepartureName, "SEATTLE DEPARTURE");
    ASSERT_EQ(seattle.Runways.size(), 3U);
    struct End {
        const char* Designation;
        const char* Reciprocal;
        double Lat1, Lat2, Lon; // of the ends in runways.csv
        int LengthFt;
    };
    const End ends[] = {{"16C", "34C", 47.46380, 47.43800, -122.31100, 9426},
                        {"16L", "34R", 47.46380, 47.43120, -122.30800, 11901},
                        {"16R", "34L", 47.46380, 47.44050, -122.31800, 8500}};
    for (std::size_t i = 0; i < 3; ++i) {
        constexpr double FortyMetres = 40.0 / 111120;
        const RunwayRecord& runway = seattle.Runways[i];
        EXPECT_EQ(runway.Designation, ends[i].Designation);
        EXPECT_EQ(runway.ReciprocalDesignation, ends[i].Reciprocal);
        EXPECT_NEAR(runway.End1Lat, ends[i].Lat1, FortyMetres);
        EXPECT_NEAR(runway.End2Lat, ends[i].Lat2, FortyMetres);
        EXPECT_NEAR(runway.End1Lon, ends[i].Lon, FortyMetres);
        EXPECT_EQ(runway.LengthFt, ends[i].LengthFt);
        EXPECT_NEAR(runway.MagHeading, 180 - 14.9, 1); // variation 14.9 degrees east in the model
        EXPECT_NEAR(runway.ReciprocalMagHeading, 360 - 14.9, 1);
    }
}

static double DistanceM(LatLon a, LatLon b)
{
    constexpr double MetresPerDegree = 60 * 1852;
    const double east = NormalizeLongitude(a.Lon - b.Lon) * std::cos(a.Lat * RadiansPerDegree);
    return std::hypot(a.Lat - b.Lat, east) * MetresPerDegree;
}

TEST_F(DemoWorldBuild, IlsStandBehindTheThresholdsTheyServeSoThatBothCanBePointedAt)
{
    for (const AirportRecord& airport : m_built.Airports) {
        for (const IlsRecord& ils : airport.Ils) {
            double nearest = 1e9; // of the ends that an ILS of this course may serve
            double off = 1e9;     // from where it stands behind one of them: the ends are drawn 30 m in
            for (const RunwayRecord& runway : airport.Runways) {
                const int turn = std::abs(ils.MagHeading - runway.MagHeading);
                const bool first = std::min(turn, 360 - turn) <= 2;
                const double lat = first ? runway.End1Lat : runway.End2Lat;
                const double lon = first ? runway.End1Lon : runway.End2Lon;
                const double metres = DistanceM({ils.Lat, ils.Lon}, {lat, lon});
                nearest = std::min(nearest, metres);
                off = std::min(off, std::abs(metres - 270));
            }
            EXPECT_LT(off, 12) << airport.Icao << " " << ils.Ident;
            EXPECT_GT(nearest, 100) << airport.Icao << " " << ils.Ident;
        }
    }
}

TEST_F(DemoWorldBuild, GatesAndTaxiwaysHaveTheirNames)
{
    const AirportRecord& seattle = Airport("KSEA");
    std::vector<std::string> gates;
    for (const ParkingRecord& spot : seattle.Parkings)
        gates.push_back(spot.Name);
    EXPECT_THAT(gates, testing::IsSupersetOf({"GATE A 1", "GATE A 20", "GATE B 7", "GATE C 20", "SE PARKING 1"}));
    std::vector<std::string> names;
    for (const TaxiPath& path : seattle.TaxiPaths)
        names.push_back(path.Name);
    EXPECT_THAT(names, testing::IsSupersetOf({"A", "A1", "B", "Runway 16C", "Runway 16L", "Runway 16R"}));
}

TEST_F(DemoWorldBuild, SectorsHaveTheirLimitsAndPieces)
{
    const auto count = [&](const std::string& comName, const std::string& kind) {
        return std::count_if(m_built.Airspaces.begin(), m_built.Airspaces.end(), [&](const AirspaceRecord& airspace) {
            return airspace.ComName == comName && airspace.Kind == kind;
        });
    };
    EXPECT_EQ(count("MALAYSIA FIR", HighSectorKind), 2);
    const auto withClassB = std::count_if(m_built.Airports.begin(), m_built.Airports.end(), [](const auto& airport) {
        AirportSource source;
        source.Icao = airport.Icao;
        return HasClassB(source);
    });
    EXPECT_GE(withClassB, 30);
    EXPECT_EQ(count("", ClassBKind), withClassB * 3);
    const auto fiji = std::find_if(m_built.Airspaces.begin(), m_built.Airspaces.end(),
                                   [](const AirspaceRecord& airspace) { return airspace.ComName == "FIJI FIR"; });
    ASSERT_NE(fiji, m_built.Airspaces.end());
    EXPECT_EQ(fiji->Frequency, "134.7 Mhz");
    EXPECT_DOUBLE_EQ(fiji->West, 173.7246);
    EXPECT_DOUBLE_EQ(fiji->East, -177.4094);
    EXPECT_EQ(fiji->Points.front().Kind, BoundaryKind::Start);
    EXPECT_EQ(fiji->Points.back().Kind, BoundaryKind::Line);
    EXPECT_EQ(fiji->Points.front().Lat, fiji->Points.back().Lat);
    EXPECT_EQ(fiji->Points.front().Lon, fiji->Points.back().Lon);
}

TEST(WorldSizedBuild, DatabaseHoldsWhatWasCounted)
{
    const TemporaryFolder folder;
    const auto counts = WriteWorldSizedFolder({folder.Path(), 200});
    ASSERT_TRUE(counts) << counts.error().Text();
    BuiltWorld built;
    Build(folder.Path(), built);
    EXPECT_EQ(built.Settings.AirportCount, counts->Airports);
    EXPECT_EQ(built.Settings.VorCount, counts->Vors);
    EXPECT_EQ(built.Settings.NdbCount, counts->Ndbs);
    EXPECT_EQ(built.Settings.AirspaceCount, counts->Airspaces);
    EXPECT_EQ(built.BglFiles, counts->BglFiles);
    EXPECT_EQ(Total(built.Airports, &AirportRecord::TaxiPoints), counts->TaxiPoints);
}
} // namespace corvane
