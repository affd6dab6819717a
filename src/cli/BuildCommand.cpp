#include "builder/BuildDriver.h"
#include "cli/Commands.h"
#include "cli/ProgressBar.h"
#include "cli/RecordJson.h"
#include "core/AtomicFile.h"
#include "core/DatabaseFiles.h"
#include "core/File.h"
#include "core/Text.h"
#include "os/InterruptWatch.h"

#include <ostream>
#include <string>
#include <vector>

namespace corvane {
namespace {
struct BuildOptions {
    FolderOptions Folders;
    bool KeepGoing = false;
    std::string Report; ///< empty where not given
};
} // namespace

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

/// A line for each file that was not as it should be.
static void PrintProblems(const std::vector<FileProblems>& files, const Console& console)
{
    for (const FileProblems& file : files) {
        const ScanProblem& first = file.Problems.First.front();
        console.Notices << "corvane-cli: build: " << Windows1252ToUtf8(file.File) << ": " << file.Problems.Count
                        << " errors passed over, the first is at byte " << first.Offset << ": "
                        << Windows1252ToUtf8(first.Why) << '\n';
    }
}

static Result<void> WriteReport(const std::string& path, const std::vector<FileProblems>& files)
{
    const std::string lines = BuildReportLines(files);
    return WriteFileAtomically(path, {reinterpret_cast<const std::uint8_t*>(lines.data()), lines.size()});
}

static Result<void> Build(const BuildOptions& options, const Console& console)
{
    const FolderOptions& folders = options.Folders;
    Result<SimulatorFolder> simulator = FolderAsTyped(WithoutTrailingSeparator(folders.FsFolder));
    if (!simulator)
        return simulator.error();
    if (!FileExists(simulator->Path))
        return Fail(folders.FsFolder, "there is no such folder");
    DeleteDataFiles(folders.AppFolder);
    const auto driver = std::make_unique<BuildDriver>(folders.AppFolder, *std::move(simulator), Fs2002Version);
    std::vector<FileProblems> problems;
    if (options.KeepGoing)
        driver->KeepGoing([&problems](const FileProblems& file) { problems.push_back(file); });
    const Result<SettingsRecord> built = RunBuild(*driver, console);
    if (!built) {
        driver->Abandon();
        return built.error();
    }
    PrintProblems(problems, console);
    if (!options.Report.empty())
        if (Result<void> written = WriteReport(options.Report, problems); !written)
            return written;
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
    const auto options = std::make_shared<BuildOptions>();
    AddFsFolderOption(*command, options->Folders)->required();
    AddAppFolderOption(*command, options->Folders);
    CLI::Option* const keepGoing =
        command->add_flag("--keep-going", options->KeepGoing, "Goes past scenery files that fail, and tells of each");
    command->add_option("--report", options->Report, "Lists what was passed over, as JSON lines")
        ->type_name("FILE")
        ->needs(keepGoing);
    command->callback([options, &console, &work] { work = [options, &console] { return Build(*options, console); }; });
}
} // namespace corvane
