#include "app/AppState.h"
#include "app/FeedConnection.h"
#include "app/FlightGearConnection.h"
#include "app/PracticeHost.h"
#include "app/PracticeProvider.h"
#include "app/ShippedScenarios.h"
#include "app/StartupChecks.h"
#include "app/TrafficHosting.h"
#include "app/windows/AppearanceMemory.h"
#include "app/windows/HostAddressPrompt.h"
#include "app/windows/Program.h"
#include "app/windows/ProgramArguments.h"
#include "app/windows/RadarEmblem.h"
#include "app/windows/ScriptedStart.h"
#include "app/windows/TrafficPrompts.h"
#include "core/windows/DeskSettings.h"
#include "core/windows/QtMessageBoxes.h"
#include "demo/DemoWorld.h"
#include "net/memory/InMemoryNetwork.h"
#include "radar/paint/QtMessages.h"
#include "recording/PlaybackClock.h"
#include "recording/RecordedSessionProvider.h"
#include "recording/RecordingPeer.h"
#include "recording/SessionRecorder.h"
#include "session/CompositePeerFactory.h"
#include "session/windows/QtRecordingDialogs.h"

#include <QApplication>
#include <QDateTime>

using namespace corvane;

/// Whether an operation of the connection window goes on waiting. Only that window waits; the radar's timers must not
/// run inside one of its own operations.
static bool GoesOnWaiting(const SessionState& session)
{
    if (!session.SessionJoined)
        QCoreApplication::processEvents();
    return !session.LeaveOperation;
}

/// How the program's own peers use the network.
static DirectPlayOptions NetworkOptions(const SessionState& session, DeskSettings& desk)
{
    DirectPlayOptions options;
    options.AskHostAddress = [&desk] { return AskHostAddress(desk); };
    options.WhileWaiting = [&session] { return GoesOnWaiting(session); };
    return options;
}

/// Traffic from outside, whose look for sessions can be left, and which others can join where the user wants that.
static TrafficConnection Offered(TrafficConnection connection, const AppState& state, ServedNetwork& network)
{
    connection.WhileWaiting = [&session = state.Session] { return GoesOnWaiting(session); };
    return HostedWhereWanted(std::move(connection), state, network);
}

int main(int argc, char** argv)
{
    qInstallMessageHandler(ShowQtMessage);
    QApplication::setApplicationName("Corvane");
    QApplication::setApplicationVersion(CORVANE_VERSION);
    QApplication::setDesktopFileName("org.corvane.Corvane"); // of the menu entry, by which desktops know its windows
    ProgramArguments arguments;
    arguments.AnswerWithoutDisplay(argc, argv);
    if (!arguments.ForPicture()) // those are all alike
        ApplyInterfaceScale();
    const QApplication application(argc, argv);
    QApplication::setWindowIcon(RadarIcon());
    QApplication::setQuitOnLastWindowClosed(false); // windows follow one another; the flow says when it ends

    // What the state's peer uses to its end, and so outlives the state.
    InMemoryNetwork network;
    QtMessageBoxes shown;
    QtRecordingDialogs dialogs;
    PlaybackClock playback(SteadyMilliseconds());
    SessionRecorder recorder(SteadyMilliseconds());
    ServedNetwork trafficNetwork;
    std::optional<TrafficProvider> feedProvider;
    std::optional<TrafficProvider> flightGearProvider;
    const auto state = std::make_unique<AppState>();
    const ScriptedStart script = arguments.Read(application, *state);
    DeskSettings desk(script.Unattended() ? QString()
                                          : DeskSettings::DefaultFile()); // a script's pictures are all alike
    if (const Appearance look = ReadAppearance(desk); look != Appearance())
        ApplyWindowFont(look);
    DirectPlayProvider networkProvider(NetworkOptions(state->Session, desk));
    PracticeProvider practiceProvider(network);
    RecordedSessionProvider recordedProvider(playback, dialogs, shown);
    feedProvider.emplace(Offered(MakeFeedConnection(*state, [&desk] { return AskFeed(desk); }), *state, trafficNetwork),
                         state->TrafficDetails);
    flightGearProvider.emplace(
        Offered(MakeFlightGearConnection(*state, [&desk](const AreaModel& area) { return AskFlightGear(desk, area); }),
                *state, trafficNetwork),
        state->TrafficDetails);
    CompositePeerFactory connections(
        {&networkProvider, &practiceProvider, &recordedProvider, &*flightGearProvider, &*feedProvider});
    RecordingPeerFactory factory(connections, recorder);
    PracticeHost practice(practiceProvider, state->MagVar,
                          static_cast<std::uint64_t>(QDateTime::currentSecsSinceEpoch()));
    practice.SetScenarios(ScenariosIn(DefaultDataFolder() / "scenarios"));
    if (script.Scenario)
        practice.AddAndPlay(*script.Scenario);
    ScriptedBoxes boxes(shown, script);
    Program program(*state, factory, practice, boxes, script, {recorder, playback, dialogs, recordedProvider}, desk);
    program.Start();
    return QApplication::exec();
}
