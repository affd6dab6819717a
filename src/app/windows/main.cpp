#include "app/AppState.h"
#include "app/PracticeHost.h"
#include "app/StartupChecks.h"
#include "app/UserFolders.h"
#include "app/windows/HostAddressPrompt.h"
#include "app/windows/Program.h"
#include "app/windows/RadarEmblem.h"
#include "app/windows/ScriptedStart.h"
#include "core/Text.h"
#include "core/windows/QtMessageBoxes.h"
#include "core/windows/QtText.h"
#include "platform/CompositePeerFactory.h"
#include "platform/InMemoryNetwork.h"
#include "platform/RecordedSessionProvider.h"
#include "platform/directplay/PracticeProvider.h"
#include "platform/os/Folders.h"
#include "session/recording/PlaybackClock.h"
#include "session/recording/RecordingPeer.h"
#include "session/recording/SessionRecorder.h"
#include "session/windows/QtRecordingDialogs.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDateTime>
#include <QDir>

#include <cstdlib>
#include <iostream>

using namespace corvane;

/// The folder of the settings and the database; ends the program where it cannot be made.
static std::filesystem::path OwnFolder(bool demonstration)
{
    const std::filesystem::path folder = UserDataFolder("corvane");
    const auto prepared =
        demonstration && !folder.empty() ? PrepareDemonstration(folder / "demo") : PrepareUserFolder(folder);
    if (prepared)
        return *prepared;
    std::cerr << "corvane: " << prepared.error().Text() << '\n';
    std::exit(1);
}

/// How the program's own peers use the network.
static DirectPlayOptions NetworkOptions(const SessionState& session)
{
    DirectPlayOptions options;
    options.AskHostAddress = AskHostAddress;
    options.WhileWaiting = [&session] {
        // Only the connection window waits; the radar's timers must not run inside one of its own operations.
        if (!session.SessionJoined)
            QCoreApplication::processEvents();
        return !session.LeaveOperation;
    };
    return options;
}

static ScriptedStart ReadArguments(const QApplication& application, AppState& state)
{
    QCommandLineParser parser;
    parser.setApplicationDescription("An air traffic control radar for multiplayer sessions of Microsoft Flight "
                                     "Simulator 2002.");
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption appFolder("app-folder",
                                       "Folder of the settings, database and map files; the working "
                                       "directory unless given.",
                                       "DIR", QDir::currentPath());
    const QCommandLineOption airport("airport", "Chooses this airport's area.", "ICAO");
    const QCommandLineOption practice("practice", "Joins the practice session.");
    const QCommandLineOption screenshot("screenshot",
                                        "Saves the radar window's picture once targets have moved, and "
                                        "ends.",
                                        "FILE");
    const QCommandLineOption firstStart("first-start", "Deletes the settings and database files first: the program "
                                                       "begins as on its first day.");
    const QCommandLineOption userFolder("user-folder",
                                        "Takes the user's own folder for --app-folder, and makes it where "
                                        "needed.");
    const QCommandLineOption demo("demo",
                                  "Opens the demonstration world, which it makes in the user's own folder, with "
                                  "practice traffic.");
    parser.addOptions({appFolder, airport, practice, screenshot, firstStart, userFolder, demo});
    parser.process(application);

    state.AppFolder = AppFolderFromText(ToText(parser.value(appFolder)));
    if (parser.isSet(userFolder) || parser.isSet(demo))
        state.AppFolder = OwnFolder(parser.isSet(demo));
    ScriptedStart script;
    script.Airport = ToUpper(ToText(parser.value(airport)));
    script.Practice = parser.isSet(practice);
    script.Screenshot = parser.value(screenshot);
    script.FirstStart = parser.isSet(firstStart);
    if (parser.isSet(demo)) {
        script.Practice = true;
        if (script.Airport.empty())
            script.Airport = "KSEA";
    }
    return script;
}

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName("Corvane");
    QApplication::setApplicationVersion(CORVANE_VERSION);
    QApplication::setWindowIcon(RadarIcon());
    QApplication::setQuitOnLastWindowClosed(false); // windows follow one another; the flow says when it ends

    InMemoryNetwork network; // outlives the state, whose peer is on it
    const auto state = std::make_unique<AppState>();
    DirectPlayProvider networkProvider(NetworkOptions(state->Session));
    PracticeProvider practiceProvider(network);
    QtMessageBoxes shown;
    QtRecordingDialogs dialogs;
    PlaybackClock playback(SteadyMilliseconds());
    RecordedSessionProvider recordedProvider(playback, dialogs, shown);
    CompositePeerFactory connections({&networkProvider, &practiceProvider, &recordedProvider});
    SessionRecorder recorder(SteadyMilliseconds());
    RecordingPeerFactory factory(connections, recorder);
    const ScriptedStart script = ReadArguments(application, *state);
    PracticeHost practice(practiceProvider, state->MagVar,
                          static_cast<std::uint64_t>(QDateTime::currentSecsSinceEpoch()));
    ScriptedBoxes boxes(shown, script);
    Program program(*state, factory, practice, boxes, script, {recorder, playback, dialogs});
    program.Start();
    return QApplication::exec();
}
