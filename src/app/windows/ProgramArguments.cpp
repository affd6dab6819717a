#include "app/windows/ProgramArguments.h"

#include "app/AppState.h"
#include "app/StartupChecks.h"
#include "app/UserFolders.h"
#include "app/windows/ScriptedStart.h"
#include "core/Text.h"
#include "core/windows/QtText.h"
#include "os/Folders.h"

#include <QCoreApplication>
#include <QDir>

#include <cstdlib>
#include <iostream>
#include <string_view>

namespace corvane {
ProgramArguments::ProgramArguments()
    : m_help(m_parser.addHelpOption()),
      m_version(m_parser.addVersionOption()),
      m_appFolder("app-folder", "Folder of the settings, database and map files; the working directory unless given.",
                  "DIR", QDir::currentPath()),
      m_airport("airport", "Chooses this airport's area.", "ICAO"),
      m_practice("practice", "Joins the practice session."),
      m_scenario("scenario", "A file that says who flies in the practice session and what happens there.", "FILE"),
      m_screenshot("screenshot", "Saves the radar window's picture once targets have moved, and ends.", "FILE"),
      m_firstStart("first-start",
                   "Deletes the settings and database files first: the program begins as on its first day."),
      m_userFolder("user-folder", "Takes the user's own folder for --app-folder, and makes it where needed."),
      m_takeOver("take-over",
                 "Admits members to the session when its host is gone without a word and this program takes over."),
      m_demo("demo", "Opens the demonstration world, which it makes in the user's own folder, with practice traffic."),
      m_display("display", "How targets are shown at first: classic, or modern for a crowded sky.", "NAME", "classic")
{
    m_parser.setApplicationDescription("An air traffic control radar for multiplayer sessions of Microsoft Flight "
                                       "Simulator 2002.");
    m_parser.addOptions({m_appFolder, m_airport, m_practice, m_scenario, m_screenshot, m_firstStart, m_userFolder,
                         m_takeOver, m_demo, m_display});
}

void ProgramArguments::TakeDisplayName(int& argc, char** argv)
{
    constexpr std::string_view Option = "--display";
    int kept = 0;
    for (int i = 0; i < argc; ++i) {
        const std::string_view argument = argv[i];
        const bool joined = argument.starts_with(Option) && argument.substr(Option.size()).starts_with('=');
        const bool apart = argument == Option && i + 1 < argc;
        const std::string_view name = joined  ? argument.substr(Option.size() + 1)
                                      : apart ? std::string_view(argv[i + 1])
                                              : std::string_view();
        if (i > 0 && (joined || apart) && name.find(':') == std::string_view::npos) {
            m_displayName = name;
            i += apart ? 1 : 0;
            continue;
        }
        argv[kept++] = argv[i];
    }
    argc = kept;
    argv[argc] = nullptr;
}

void ProgramArguments::AnswerWithoutDisplay(int& argc, char** argv)
{
    TakeDisplayName(argc, argv);
    const QCoreApplication application(argc, argv);
    m_parser.parse(QCoreApplication::arguments()); // what is wrong in them is told once the display has taken its own
    if (m_parser.isSet(m_version))
        m_parser.showVersion();
    if (m_parser.isSet(m_help) || m_parser.isSet("help-all"))
        m_parser.showHelp();
}

/// The folder of the settings and the database; ends the program where it cannot be made.
static std::filesystem::path OwnFolder(bool demonstration)
{
    const std::filesystem::path folder = UserDataFolder("corvane");
    const auto prepared =
        demonstration && !folder.empty() ? PrepareDemonstration(folder / "demo") : PrepareUserFolder(folder);
    if (prepared)
        return *prepared;
    std::cerr << "corvane: " << TerminalText(prepared.error().Text()) << '\n';
    std::exit(1); // NOLINT(concurrency-mt-unsafe): no other thread runs yet
}

/// The ready set of that name; ends the program where there is none.
static DisplayOptions ChosenDisplay(std::string_view name)
{
    if (const auto display = DisplayByName(name, ControlMode::Airport))
        return *display;
    std::cerr << "corvane: --display: there are classic and modern\n";
    std::exit(2); // NOLINT(concurrency-mt-unsafe): no other thread runs yet
}

/// The scenario of a file; ends the program where it cannot be played.
static PracticeScenario ChosenScenario(const QString& file)
{
    if (auto scenario = ReadScenario(ToPath(file)))
        return *std::move(scenario);
    else
        std::cerr << "corvane: " << TerminalText(scenario.error().Text()) << '\n';
    std::exit(1); // NOLINT(concurrency-mt-unsafe): no other thread runs yet
}

ScriptedStart ProgramArguments::Read(const QCoreApplication& application, AppState& state)
{
    m_parser.process(application);
    const bool demonstration = m_parser.isSet(m_demo);
    state.AppFolder = WithoutTrailingSeparator(ToPath(m_parser.value(m_appFolder)));
    if (m_parser.isSet(m_userFolder) || demonstration)
        state.AppFolder = OwnFolder(demonstration);
    state.Display = ChosenDisplay(m_displayName);
    state.Session.TakesOver = m_parser.isSet(m_takeOver);
    ScriptedStart script;
    script.Airport = ToUpper(ToText(m_parser.value(m_airport)));
    script.Practice = m_parser.isSet(m_practice) || demonstration;
    if (m_parser.isSet(m_scenario))
        script.Scenario = ChosenScenario(m_parser.value(m_scenario));
    script.Screenshot = m_parser.value(m_screenshot);
    script.FirstStart = m_parser.isSet(m_firstStart);
    if (demonstration && script.Airport.empty())
        script.Airport = "KSEA";
    return script;
}
} // namespace corvane
