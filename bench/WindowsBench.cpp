#include "app/AppState.h"
#include "app/PracticeProvider.h"
#include "app/StartupChecks.h"
#include "app/windows/Program.h"
#include "area/DatabaseLists.h"
#include "area/windows/ChooserWindow.h"
#include "bench/Desktop.h"
#include "builder/BuildDriver.h"
#include "core/DatabaseFiles.h"
#include "core/PathLookup.h"
#include "core/windows/DeskSettings.h"
#include "radar/windows/ScopeWidget.h"
#include "recording/PlaybackClock.h"
#include "recording/RecordedSessionProvider.h"
#include "recording/RecordingDialogs.h"
#include "recording/SessionRecorder.h"
#include "session/CompositePeerFactory.h"
#include "tests/demo/WorldSized.h"

#include <QAction>
#include <QEventLoop>
#include <QTimer>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

// What a person waits for at the windows, each beside its baseline:
// - the area chooser's start over a database of 25,000 airports; at most three times reading its files as cat does
// - the longest time for which the window's thread hears nothing while a session runs and another area is loaded;
//   at most one redraw of the scope

namespace corvane::bench {
namespace {
constexpr std::int32_t Width = 1920;
constexpr std::int32_t Height = 1080;

/// A folder with a world-sized database, removed in the end; the folder that CORVANE_BENCH_WORLD names where it does.
class World {
public:
    World()
    {
        if (const char* const given = std::getenv("CORVANE_BENCH_WORLD")) {
            m_folder = given;
            m_complete = true;
            return;
        }
        m_own = m_folder = std::filesystem::temp_directory_path() / "corvane-windows-bench";
        std::filesystem::remove_all(m_folder);
        WorldSizedOptions options;
        options.OutDir = m_folder;
        options.AirportCount = 25000;
        options.MapPoints = 1'000'000;
        options.TerrainPoints = 1'000'000;
        m_complete = WriteWorldSizedFolder(options) && Build();
    }
    World(const World&) = delete;
    World& operator=(const World&) = delete;
    ~World() { std::filesystem::remove_all(m_own); }

    [[nodiscard]] bool Complete() const noexcept { return m_complete; }
    [[nodiscard]] const std::filesystem::path& Folder() const noexcept { return m_folder; }
    /// What the start reads: the settings, the database and the magnetic grid.
    [[nodiscard]] std::vector<std::filesystem::path> Files() const
    {
        std::vector<std::filesystem::path> files;
        for (const std::string_view name : DataFileNames())
            files.push_back(m_folder / name);
        const std::filesystem::path source = m_own.empty() ? m_folder : m_folder / "fs2002";
        files.push_back(source / "scenery" / "magdec.bgl");
        return files;
    }

private:
    [[nodiscard]] bool Build() const
    {
        return BuildDriver(m_folder, FolderBeside(m_folder, "fs2002"), Fs2002Version).Run().has_value();
    }

    std::filesystem::path m_folder;
    std::filesystem::path m_own; ///< what to remove; empty where the folder was given
    bool m_complete = false;
};

/// Boxes that nobody reads.
class SilentBoxes final : public MessageBoxes {
public:
    void Show(MessageIcon /*icon*/, std::string_view /*title*/, std::string_view text) override
    {
        std::fprintf(stderr, "%.*s\n", static_cast<int>(text.size()), text.data());
    }
    bool Confirm(std::string_view /*title*/, std::string_view /*text*/) override { return false; }
    std::optional<std::string> AskText(std::string_view /*title*/, std::string_view /*prompt*/) override { return {}; }
};

class NoDialogs final : public RecordingDialogs {
public:
    std::optional<std::filesystem::path> AskWhereToRecord() override { return {}; }
    std::optional<std::filesystem::path> AskWhatToPlay() override { return {}; }
};

void ReadTheFiles(benchmark::State& state)
{
    const World world;
    std::vector<char> block(std::size_t{128} * 1024);
    std::size_t bytes = 0;
    for (auto _ : state) {
        bytes = 0;
        for (const std::filesystem::path& path : world.Files()) {
            std::FILE* const file = std::fopen(path.c_str(), "rb");
            if (file == nullptr)
                continue;
            std::setvbuf(file, nullptr, _IONBF, 0);
            while (const std::size_t read = std::fread(block.data(), 1, block.size(), file))
                bytes += read;
            std::fclose(file);
        }
    }
    state.counters["MB"] = static_cast<double>(bytes) / 1e6;
}
BENCHMARK(ReadTheFiles)->Unit(benchmark::kMillisecond);

/// From the start-up checks to the chooser's filled lists, the waits by the clock left out.
void StartToTheChooser(benchmark::State& state)
{
    const World world;
    const Desktop desktop;
    SilentBoxes boxes;
    std::size_t airports = 0;
    for (auto _ : state) {
        auto app = std::make_unique<AppState>();
        app->AppFolder = world.Folder();
        if (*RunStartupChecks(*app) != StartupDecision::Chooser) {
            state.SkipWithError("the database is not complete");
            break;
        }
        DeskSettings desk{QString()};
        ChooserWindow chooser(ChooserPart(*app), boxes, desk);
        QEventLoop waiting;
        QObject::connect(&chooser, &ChooserWindow::Ready, &waiting, &QEventLoop::quit);
        chooser.show();
        chooser.findChild<QTimer*>("Timer1")->start(0);
        waiting.exec();
        airports = static_cast<std::size_t>(app->Settings.AirportCount);
    }
    state.counters["airports"] = static_cast<double>(airports);
}
BENCHMARK(StartToTheChooser)->Unit(benchmark::kMillisecond);

double MsOf(clockid_t clock)
{
    timespec now{};
    clock_gettime(clock, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

/// A stretch of time in milliseconds: by the wall's clock, which also runs while other programs have the processor, and
/// by that of the thread's own work.
struct Stretch {
    double Wall = 0;
    double Own = 0;

    static Stretch Now() { return {MsOf(CLOCK_MONOTONIC), MsOf(CLOCK_THREAD_CPUTIME_ID)}; }
    void RaiseTo(const Stretch& from, const Stretch& to)
    {
        Wall = std::max(Wall, to.Wall - from.Wall);
        Own = std::max(Own, to.Own - from.Own);
    }
    void Report(benchmark::State& state, const std::string& name) const
    {
        state.counters[name + "_ms"] = Wall;
        state.counters[name + "_own_ms"] = Own;
    }
};

/// Notes the longest time between two events of the thread.
class Heartbeat {
public:
    Heartbeat()
    {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] {
            const Stretch now = Stretch::Now();
            m_longest.RaiseTo(m_last, now);
            m_last = now;
        });
        m_timer.start(0);
    }
    [[nodiscard]] const Stretch& Longest() const { return m_longest; }

private:
    QTimer m_timer;
    Stretch m_last = Stretch::Now();
    Stretch m_longest;
};

QWidget* VisibleWindow(const char* name)
{
    for (QWidget* widget : QApplication::topLevelWidgets())
        if (widget->objectName() == name && widget->isVisible())
            return widget;
    return nullptr;
}

void LiveFor(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

QWidget* WaitForWindow(const char* name)
{
    for (int tries = 0; VisibleWindow(name) == nullptr && tries < 300; ++tries)
        LiveFor(100);
    return VisibleWindow(name);
}

Stretch SlowestRedraw(QWidget& radar)
{
    auto& scope = *radar.findChild<ScopeWidget*>("Picture1");
    auto& center = *radar.findChild<QWidget*>("Command2");
    Stretch slowest;
    for (int i = 0; i < 10; ++i) {
        const Stretch before = Stretch::Now();
        QMetaObject::invokeMethod(&center, "click");
        scope.repaint();
        slowest.RaiseTo(before, Stretch::Now());
    }
    return slowest;
}

/// A session over an area of the world-sized database, in which the person loads another.
void LongestPauseInASession(benchmark::State& state)
{
    const World world;
    const Desktop desktop;
    InMemoryNetwork network;
    PracticeProvider provider(network);
    CompositePeerFactory factory({&provider});
    AppState app;
    app.AppFolder = world.Folder();
    PracticeHost practice(provider, app.MagVar, 7);
    SilentBoxes shown;
    ScriptedStart script;
    const auto entries = ReadAirportList(world.Folder());
    script.Airport = entries ? entries->front().substr(0, entries->front().find(' ')) : std::string();
    script.Practice = true;
    ScriptedBoxes boxes(shown, script);
    NoDialogs dialogs;
    PlaybackClock playback([] { return std::int64_t{0}; });
    SessionRecorder recorder([] { return std::int64_t{0}; });
    RecordedSessionProvider recordings(playback, dialogs, shown);
    DeskSettings desk{QString()};
    Program program(app, factory, practice, boxes, script, {recorder, playback, dialogs, recordings}, desk);
    program.Start();
    QWidget* const radar = WaitForWindow("Form1");
    if (radar == nullptr) {
        state.SkipWithError("the radar did not open");
        return;
    }
    radar->resize(Width, Height);
    LiveFor(3000);
    const auto longestPause = [&](const std::string& name, int milliseconds) {
        const Heartbeat heartbeat;
        LiveFor(milliseconds);
        heartbeat.Longest().Report(state, name);
    };
    for (auto _ : state) {
        longestPause("session", 5000);
        radar->findChild<QAction*>("load_all_db_files")->trigger(); // the window is made before the measuring begins
        longestPause("lists", 3000);
        auto* const chooser = qobject_cast<ChooserWindow*>(VisibleWindow("Form5"));
        QTimer::singleShot(100, radar, [&] {
            if (chooser == nullptr || !chooser->ChooseAirport((*entries)[entries->size() / 2].substr(0, 4)))
                state.SkipWithError("no other airport");
        });
        longestPause("load", 3000);
    }
    SlowestRedraw(*radar).Report(state, "redraw");
}
BENCHMARK(LongestPauseInASession)->Iterations(1)->Unit(benchmark::kMillisecond);
} // namespace
} // namespace corvane::bench
