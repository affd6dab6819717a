#include "builder/BuildDriver.h"
#include "cli/Commands.h"
#include "cli/ProgressBar.h"
#include "cli/RecordJson.h"
#include "core/DatabaseFiles.h"
#include "core/File.h"
#include "core/Text.h"
#include "os/InterruptWatch.h"

#include <ostream>

namespace corvane {
static Result<SettingsRecord> RunBuild(BuildDriver& driver, const Console& console)
{
    const InterruptWatch watch;
    ProgressBar bar(console.Notices, console.NoticesOnTerminal, "files");
    return driver.Run([&](const BuildProgress& progress) -> Result<void> {
        if (watch.Interrupted())
            return Fail("build", "interrupted; the database files have been removed");
        bar.Show(progress.FilesDone, driver.BglFileCount(), Windows1252ToUtf8(progress.Title));
        return {};
    });
}

/// The folder as the settings keep it: without a separator at its end.
static std::string WithoutTrailingSeparator(std::string folder)
{
    while (folder.size() > 1 && (folder.back() == '/' || folder.back() == '\\'))
        folder.pop_back();
    return folder;
}

static Result<void> Build(const FolderOptions& folders, const Console& console)
{
    Result<SimulatorFolder> simulator = FolderAsTyped(WithoutTrailingSeparator(folders.FsFolder));
    if (!simulator)
        return simulator.error();
    if (!FileExists(simulator->Path))
        return Fail(folders.FsFolder, "there is no such folder");
    DeleteDataFiles(folders.AppFolder);
    const auto driver = std::make_unique<BuildDriver>(folders.AppFolder, *std::move(simulator), Fs2002Version);
    const Result<SettingsRecord> built = RunBuild(*driver, console);
    if (!built) {
        driver->Abandon();
        return built.error();
    }
    const Json counts = {{"AirportCount", built->AirportCount},
                         {"AirspaceCount", built->AirspaceCount},
                         {"VorCount", built->VorCount},
                         {"NdbCount", built->NdbCount},
                         {"BglFileCount", driver->BglFileCount()}};
    console.Out << counts.dump() << '\n';
    return {};
}

void AddBuildCommand(CLI::App& app, const Console& console, CommandWork& work)
{
    CLI::App* const command = app.add_subcommand(
        "build", "Builds the scenery database of a simulator folder, replacing the one that is there");
    const auto folders = std::make_shared<FolderOptions>();
    AddFsFolderOption(*command, *folders)->required();
    AddAppFolderOption(*command, *folders);
    command->callback([folders, &console, &work] { work = [folders, &console] { return Build(*folders, console); }; });
}
} // namespace corvane
