// Building the scenery database against copying the same simulator folder with cp -r, for the demonstration world
// (argument 0) and for worlds of 1,000, 5,000 and 20,000 airports (3,000 files, 150 MB, 1,000,000 taxi points). Limit:
// three times the copying; the time per airport must stay the same.
#include "builder/BuildDriver.h"
#include "core/File.h"
#include "demo/DemoWorld.h"
#include "tests/demo/WorldSized.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace corvane {
namespace {
namespace fs = std::filesystem;

/// A world on disk for as long as it is measured.
class World {
public:
    explicit World(std::int64_t airports)
        : m_folder(fs::temp_directory_path() / ("corvane-build-bench-" + std::to_string(airports)))
    {
        fs::remove_all(m_folder);
        fs::create_directories(m_folder / "app");
        if (const Result<void> written = Write(airports); !written)
            std::fprintf(stderr, "%s\n", written.error().Text().c_str());
    }
    World(const World&) = delete;
    World(World&&) = delete;
    World& operator=(const World&) = delete;
    World& operator=(World&&) = delete;
    ~World() { fs::remove_all(m_folder); }

    [[nodiscard]] fs::path App() const { return m_folder / "app"; }
    [[nodiscard]] fs::path Fs() const { return m_folder / "world" / "fs2002"; }
    [[nodiscard]] fs::path Copy() const { return m_folder / "copy"; }

private:
    [[nodiscard]] Result<void> Write(std::int64_t airports) const
    {
        if (airports == 0) {
            if (const auto demo = WriteDemoWorld({m_folder / "world", DefaultDataFolder(), 0}); !demo)
                return demo.error();
            return {};
        }
        const auto large = WriteWorldSizedFolder({m_folder / "world", static_cast<int>(airports), 0, 0});
        if (!large)
            return large.error();
        return {};
    }

    fs::path m_folder;
};

Result<SettingsRecord> Build(const World& world)
{
    return BuildDriver(world.App(), {world.Fs().string(), world.Fs()}, Fs2002Version).Run();
}

void CopyWithCp(benchmark::State& state)
{
    const World world(state.range(0));
    const std::string command = "cp -r '" + world.Fs().string() + "' '" + world.Copy().string() + "'";
    for (auto _ : state) {
        if (std::system(command.c_str()) != 0) // NOLINT(concurrency-mt-unsafe): the baseline is cp itself
            state.SkipWithError("cp failed");
        state.PauseTiming();
        fs::remove_all(world.Copy());
        state.ResumeTiming();
    }
}

void BuildDatabase(benchmark::State& state)
{
    const World world(state.range(0));
    for (auto _ : state) {
        const auto settings = Build(world);
        if (!settings)
            state.SkipWithError(settings.error().Text().c_str());
        else
            state.counters["airports"] = settings->AirportCount;
    }
}
BENCHMARK(CopyWithCp)->Arg(0)->Arg(1000)->Arg(5000)->Arg(20000)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BuildDatabase)->Arg(0)->Arg(1000)->Arg(5000)->Arg(20000)->UseRealTime()->Unit(benchmark::kMillisecond);
} // namespace
} // namespace corvane
