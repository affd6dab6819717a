// Loading an area against reading the same files, block by block as cat does. A world-sized database: 20,000 airports
// with 1,000,000 taxi points (some 100 MB with gates and paths), 10,000 navaids, 1,000,000 terrain points and a world
// map of 2,000,000 points. Limit: twice the time of reading.
#include "area/AreaLoad.h"
#include "area/DatabaseLists.h"
#include "area/Terrain.h"
#include "area/WorldOutlines.h"
#include "core/DatabaseFiles.h"
#include "core/AtomicFile.h"
#include "core/Geodesy.h"
#include "core/RecordCodec.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <filesystem>
#include <random>
#include <string>
#include <vector>

namespace corvane {
namespace {
constexpr int AirportCount = 20000;
constexpr int NavaidCount = 5000;
constexpr int AirspaceCount = 1500;
constexpr int TerrainCount = 1000000;
constexpr int MapCount = 2000000;
constexpr const char* ChosenAirport = "A10000 - Airport";

class World {
public:
    World() : m_folder(std::filesystem::temp_directory_path() / "corvane-area-bench")
    {
        std::filesystem::create_directories(m_folder);
        WriteAirports();
        WriteNavaids();
        WriteAirspaces();
        WriteTerrain();
        WriteMap();
    }
    World(const World&) = delete;
    World& operator=(const World&) = delete;
    ~World() { std::filesystem::remove_all(m_folder); }

    [[nodiscard]] const std::filesystem::path& Folder() const noexcept { return m_folder; }
    [[nodiscard]] const SettingsRecord& Counts() const noexcept { return m_counts; }

private:
    void Write(std::string_view name, const Bytes& content)
    {
        if (const Result<void> written = WriteFileAtomically(m_folder / name, content); !written)
            std::fprintf(stderr, "%s\n", written.error().Text().c_str());
    }
    double Lat() { return std::asin(m_sine(m_random)) * DegreesPerRadian; } // even over the sphere
    double Lon() { return m_lon(m_random); }

    void WriteAirports()
    {
        Bytes file;
        for (int i = 0; i < AirportCount; ++i) {
            AirportRecord airport;
            airport.Name = "Airport";
            airport.Icao.append("A").append(std::to_string(i));
            airport.Lat = i == AirportCount / 2 ? 47.45 : Lat();
            airport.Lon = i == AirportCount / 2 ? -122.31 : Lon();
            airport.ApproachFreq = "119.2";
            airport.Runways.resize(2);
            airport.TaxiPoints.resize(50);
            airport.Parkings.assign(60, {"GATE A 12", airport.Lat, airport.Lon, 80});
            airport.TaxiPaths.assign(90, {0, 1, 2, "Runway 16L"});
            EncodeAirport(file, airport, static_cast<std::int64_t>(file.size()) + 1);
        }
        m_counts.AirportCount = AirportCount;
        Write(AirportsFileName, file);
    }
    void WriteNavaids()
    {
        Bytes file;
        for (int i = 0; i < NavaidCount; ++i) {
            NavaidRecord navaid;
            navaid.Name = "Some longer station name";
            navaid.Ident = "SEA";
            navaid.Lat = Lat();
            navaid.Lon = Lon();
            navaid.Frequency = "116.8";
            EncodeNavaid(file, navaid);
        }
        m_counts.VorCount = NavaidCount;
        m_counts.NdbCount = NavaidCount;
        Write(VorsFileName, file);
        Write(NdbsFileName, file);
    }
    void WriteAirspaces()
    {
        Bytes file;
        for (int i = 0; i < AirspaceCount; ++i) {
            AirspaceRecord airspace;
            airspace.ComName.append("FIR ").append(std::to_string(i));
            airspace.Kind = HighSectorKind;
            airspace.South = Lat();
            airspace.North = airspace.South + 10;
            airspace.West = Lon();
            airspace.East = airspace.West + 10;
            airspace.Points.assign(100, {BoundaryKind::Line, airspace.South, airspace.West, 0});
            EncodeAirspace(file, airspace, static_cast<std::int64_t>(file.size()) + 1);
        }
        m_counts.AirspaceCount = AirspaceCount;
        Write(AirspacesFileName, file);
    }
    void WriteTerrain()
    {
        Bytes file;
        ByteWriter out(file);
        for (int i = 0; i < TerrainCount; ++i) {
            out.WriteF64(Lat());
            out.WriteF64(Lon());
            out.WriteI32(i);
        }
        Write(TerrainFileName, file);
    }
    void WriteMap()
    {
        constexpr double TwoToThe31 = 2147483648.0;
        Bytes file;
        ByteWriter out(file);
        for (int i = 0; i < MapCount / 100; ++i) { // polylines of 99 vertices
            const double lat = Lat();
            const double lon = Lon();
            for (int k = 0; k < 99; ++k) {
                out.WriteI32(static_cast<std::int32_t>((lat * 0.98 + k * 0.01) / 90 * TwoToThe31));
                out.WriteI32(static_cast<std::int32_t>((lon * 0.98 + k * 0.01) / 180 * TwoToThe31));
            }
            out.WriteI32(0);
            out.WriteI32(0);
        }
        Write(WorldMapFileName, file);
    }

    std::filesystem::path m_folder;
    SettingsRecord m_counts;
    std::mt19937 m_random{11};
    std::uniform_real_distribution<double> m_sine{-1, 1};
    std::uniform_real_distribution<double> m_lon{-180, 180};
};

/// Reads a file through a buffer of cat's size and forgets it.
std::size_t ReadAsCat(const std::filesystem::path& path)
{
    std::vector<char> block(128 * 1024);
    std::FILE* file = std::fopen(path.string().c_str(), "rb");
    if (file == nullptr)
        return 0;
    static_cast<void>(std::setvbuf(file, nullptr, _IONBF, 0));
    std::size_t total = 0;
    while (const std::size_t read = std::fread(block.data(), 1, block.size(), file)) {
        benchmark::DoNotOptimize(block.data());
        total += read;
    }
    static_cast<void>(std::fclose(file));
    return total;
}
} // namespace

static void ReadFilesAsCat(benchmark::State& state, const World& world)
{
    std::size_t total = 0;
    for (auto _ : state) {
        total = 0;
        for (const std::string_view name :
             {AirportsFileName, VorsFileName, NdbsFileName, AirspacesFileName, TerrainFileName, WorldMapFileName})
            total += ReadAsCat(world.Folder() / name);
    }
    state.counters["MB"] = static_cast<double>(total) / 1e6;
}

/// The whole road of a load from the command line: every airspace, then the area.
static void LoadAirport(benchmark::State& state, const World& world)
{
    AreaModel area;
    for (auto _ : state) {
        auto airspaces = ReadAllAirspaces(world.Folder(), world.Counts().AirspaceCount);
        UnwatchedProgress progress;
        area = {};
        if (!airspaces || !LoadAirportArea(world.Folder(), world.Counts(), ChosenAirport, *airspaces, area, progress))
            state.SkipWithError("no area");
    }
    state.counters["airports"] = static_cast<double>(area.AreaAirports.size());
    state.counters["terrain"] = static_cast<double>(area.TerrainPoints.size());
    state.counters["outline"] = static_cast<double>(area.OutlinePoints.size());
}

static void LoadSector(benchmark::State& state, const World& world)
{
    AreaModel area;
    for (auto _ : state) {
        auto airspaces = ReadAllAirspaces(world.Folder(), world.Counts().AirspaceCount);
        UnwatchedProgress progress;
        area = {};
        if (!airspaces || !LoadSectorArea(world.Folder(), world.Counts(), "FIR 7", *airspaces, area, progress))
            state.SkipWithError("no area");
    }
    state.counters["airports"] = static_cast<double>(area.AreaAirports.size());
    state.counters["terrain"] = static_cast<double>(area.TerrainPoints.size());
    state.counters["outline"] = static_cast<double>(area.OutlinePoints.size());
}
} // namespace corvane

int main(int argc, char** argv)
{
    const corvane::World world;
    const auto add = [&](const char* name, void (*run)(benchmark::State&, const corvane::World&)) {
        benchmark::RegisterBenchmark(name, run, std::cref(world))->Unit(benchmark::kMillisecond);
    };
    add("read the same files", corvane::ReadFilesAsCat);
    add("load an airport's area", corvane::LoadAirport);
    add("load a sector's area", corvane::LoadSector);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
