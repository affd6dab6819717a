#include "cli/CommandLine.h"

#include "cli/Commands.h"
#include "core/File.h"
#include "core/Settings.h"
#include "core/Text.h"

#include <ostream>

namespace corvane {
static constexpr int WorkFailed = 1;
static constexpr int ArgumentsWrong = 2;

std::filesystem::path FolderOptions::AppFile(std::string_view name) const
{
    return std::filesystem::path(AppFolder) / name;
}

CLI::Option* AddAppFolderOption(CLI::App& command, FolderOptions& folders)
{
    return command.add_option("--app-folder", folders.AppFolder, "Folder of the settings and database files")
        ->type_name("DIR")
        ->capture_default_str();
}

CLI::Option* AddFsFolderOption(CLI::App& command, FolderOptions& folders)
{
    return command.add_option("--fs-folder", folders.FsFolder, "The simulator's main folder")->type_name("DIR");
}

Result<std::string> SimulatorFolder(const FolderOptions& folders)
{
    if (!folders.FsFolder.empty())
        return Utf8ToWindows1252(folders.FsFolder);
    const Result<SettingsRecord> settings = ReadSettings(folders.AppFile(SettingsFileName));
    if (!settings)
        return settings.error();
    return settings->FsPath;
}

int RunCommandLine(int argc, const char* const* argv, const Console& console)
{
    CLI::App app("Corvane's command line: builds, reads and draws what the radar shows, and talks to its sessions.",
                 "corvane-cli");
    app.set_version_flag("--version", std::string("corvane-cli " CORVANE_VERSION));
    app.require_subcommand(1);
    CommandWork work;
    for (const auto add :
         {AddBuildCommand, AddDumpCommand, AddAreaCommand, AddScopeCommand, AddAlertsCommand, AddCalcCommand,
          AddMessageCommand, AddSessionsCommand, AddHostCommand, AddJoinCommand, AddDemoWorldCommand, AddImportCommand})
        add(app, console, work);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& parseError) {
        return app.exit(parseError, console.Out, console.Notices) == 0 ? 0 : ArgumentsWrong;
    }
    if (const Result<void> done = work(); !done) {
        console.Out.flush();
        console.Notices << "corvane-cli: " << done.error().Text() << '\n';
        return WorkFailed;
    }
    console.Out.flush();
    if (!console.Out) {
        console.Notices << "corvane-cli: standard output: cannot be written\n";
        return WorkFailed;
    }
    return 0;
}
} // namespace corvane
