// Loading the area of KSEA from the demonstration world's database against reading the same files as cat does.
// Limit: twice the reading.
#include "area/AreaLoad.h"
#include "area/DatabaseLists.h"
#include "builder/BuildDriver.h"
#include "demo/DemoWorld.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <string>

namespace corvane {
namespace {
namespace fs = std::filesystem;

/// The demonstration world and its database, on disk for as long as the benchmark runs.
class DemoDatabase {
public:
    DemoDatabase() : m_folder(fs::temp_directory_path() / "corvane-demo-bench")
    {
        fs::remove_all(m_folder);
        if (const Result<void> made = Make(); !made)
            std::fprintf(stderr, "%s\n", made.error().Text().c_str());
    }
    DemoDatabase(const DemoDatabase&) = delete;
    DemoDatabase(DemoDatabase&&) = delete;
    DemoDatabase& operator=(const DemoDatabase&) = delete;
    DemoDatabase& operator=(DemoDatabase&&) = delete;
    ~DemoDatabase() { fs::remove_all(m_folder); }

    [[nodiscard]] const fs::path& Folder() const { return m_folder; }
    [[nodiscard]] const SettingsRecord& Counts() const { return m_counts; }

private:
    Result<void> Make()
    {
        if (const auto world = WriteDemoWorld({m_folder, DefaultDataFolder(), 0}); !world)
            return world.error();
        const Result<SettingsRecord> settings =
            BuildDriver(m_folder, FolderBeside(m_folder, "fs2002"), Fs2002Version).Run();
        if (!settings)
            return settings.error();
        m_counts = *settings;
        return {};
    }

    fs::path m_folder;
    SettingsRecord m_counts;
};

void ReadFilesAsCat(benchmark::State& state, const DemoDatabase& database)
{
    std::array<char, 131072> block{}; // the block size of cat
    for (auto _ : state) {
        for (const char* name : {"world_airports.dat", "world_vors.dat", "world_ndbs.dat", "world_airspaces.dat",
                                 "world_terrain.db", "world.map"}) {
            std::FILE* const file = std::fopen((database.Folder() / name).string().c_str(), "rb");
            if (file == nullptr) {
                state.SkipWithError("a file of the database is missing");
                return;
            }
            static_cast<void>(std::setvbuf(file, nullptr, _IONBF, 0));
            while (std::fread(block.data(), 1, block.size(), file) > 0)
                benchmark::DoNotOptimize(block);
            static_cast<void>(std::fclose(file));
        }
    }
}

void LoadSeattle(benchmark::State& state, const DemoDatabase& database)
{
    const auto entries = ReadAirportList(database.Folder());
    if (!entries) {
        state.SkipWithError(entries.error().Text().c_str());
        return;
    }
    const auto entry = std::find_if(entries->begin(), entries->end(),
                                    [](const std::string& text) { return text.starts_with("KSEA - "); });
    AreaModel area;
    UnwatchedProgress unwatched;
    for (auto _ : state) {
        auto airspaces = ReadAllAirspaces(database.Folder(), database.Counts().AirspaceCount);
        if (!airspaces || !LoadAirportArea(database.Folder(), database.Counts(), *entry, *airspaces, area, unwatched))
            state.SkipWithError("the area cannot be loaded");
    }
    state.counters["airports"] = static_cast<double>(area.AreaAirports.size());
}
} // namespace
} // namespace corvane

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    const corvane::DemoDatabase database;
    benchmark::RegisterBenchmark("ReadFilesAsCat", corvane::ReadFilesAsCat, std::cref(database));
    benchmark::RegisterBenchmark("LoadSeattle", corvane::LoadSeattle, std::cref(database));
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
