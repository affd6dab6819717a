#include "cli/CommandLine.h"

#include "cli/Commands.h"

#include <ostream>
#include <sstream>

namespace corvane {
static constexpr int WorkFailed = 1;
static constexpr int ArgumentsWrong = 2;

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
        std::ostringstream complaint;
        const int status = app.exit(parseError, console.Out, complaint);
        PrintNoticeLines(console, complaint.str()); // it repeats what was typed
        return status == 0 ? 0 : ArgumentsWrong;
    }
    if (const Result<void> done = work(); !done) {
        console.Out.flush();
        PrintNotice(console, done.error().Text());
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
