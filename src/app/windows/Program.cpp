#include "app/windows/Program.h"

#include "app/AppState.h"
#include "app/DatabaseReset.h"
#include "app/FeedConnection.h"
#include "app/FlightGearConnection.h"
#include "app/ServedNetwork.h"
#include "app/windows/AboutWindow.h"
#include "app/windows/MainWindow.h"
#include "app/windows/RadarMemory.h"
#include "app/windows/ScreenshotRun.h"
#include "app/windows/SetUpWindow.h"
#include "app/windows/SplashWindow.h"
#include "app/windows/WindowPlaces.h"
#include "app/windows/WorldDataWindow.h"
#include "area/windows/AirportListWindow.h"
#include "area/windows/ChooserWindow.h"
#include "builder/windows/BuilderWindow.h"
#include "core/DatabaseFiles.h"
#include "core/windows/DeskSettings.h"
#include "core/windows/QtText.h"
#include "core/windows/WindowManners.h"
#include "net/memory/InMemoryNetwork.h"
#include "radar/windows/PreferencesWindow.h"
#include "session/windows/ChatWindow.h"
#include "session/windows/ConnectionWindow.h"
#include "session/windows/PlayerPropertiesWindow.h"

#include <QCoreApplication>
#include <QThread>

#include <iostream>
#include <utility>

namespace corvane {
static constexpr int PracticeIntervalMs = 100;
static constexpr int DeletionIntervalMs = 50;

Program::Program(AppState& state, SessionPeerFactory& factory, PracticeHost& practice, ScriptedBoxes& boxes,
                 ScriptedStart script, const RecordingParts& recording, DeskSettings& desk)
    : m_state(state),
      m_factory(factory),
      m_practice(practice),
      m_boxes(boxes),
      m_script(std::move(script)),
      m_recording(recording),
      m_desk(desk)
{
    m_clock.start();
    connect(&m_practiceTimer, &QTimer::timeout, this,
            [this] { m_practice.Advance(static_cast<double>(m_clock.elapsed()) / 1000); });
    m_deletion.setInterval(DeletionIntervalMs);
    connect(&m_deletion, &QTimer::timeout, this, &Program::DeleteGone);
}

Program::~Program()
{
    KeepPlaces();
    delete m_overRadar;
    delete m_main; // before the chat window, which it writes to
    delete m_chat;
    delete m_connection;
    delete m_chooser;
    delete m_worldData;
    delete m_builder;
    delete m_setup;
    delete m_splash;
    for (std::unique_ptr<QWidget>& gone : m_gone) // in the order of their closing
        gone.reset();
}

/// Hides a window for good and hears no more of it; it is deleted when nothing of it can be under way.
template <class Window> void Program::LetGo(Window*& window)
{
    Window* const gone = std::exchange(window, nullptr);
    if (gone == nullptr)
        return;
    gone->hide();
    gone->disconnect(this);
    m_gone.emplace_back(gone);
    m_deletion.start();
}

void Program::DeleteGone()
{
    if (thread()->loopLevel() > m_outermostLoop)
        return;
    m_deletion.stop();
    for (std::unique_ptr<QWidget>& gone : std::exchange(m_gone, {}))
        gone.reset(); // in the order of their closing: the radar writes to the chat
}

void Program::End()
{
    QCoreApplication::exit(0);
}

void Program::Start()
{
    if (m_script.FirstStart)
        DeleteDataFiles(m_state.AppFolder);
    m_splash = new SplashWindow(m_state);
    connect(m_splash, &SplashWindow::Checked, this, &Program::AfterStartupChecks);
    m_splash->show();
}

void Program::AfterStartupChecks(const Result<StartupDecision>& decision)
{
    m_outermostLoop = thread()->loopLevel();
    if (!decision) {
        m_boxes.Warn(StartupFailureText(decision.error()));
        LetGo(m_splash);
        End();
        return;
    }
    if (*decision == StartupDecision::SetUpAfterUpdateMessage)
        m_boxes.Inform(UpdateDatabaseMessage);
    LetGo(m_splash);
    if (*decision == StartupDecision::Chooser)
        OpenChooser();
    else
        OpenSetup();
}

void Program::OpenSetup()
{
    if (m_script.Unattended()) {
        FailScript("the database files are missing; build them first");
        return;
    }
    m_setup = new SetUpWindow(m_state, m_boxes);
    connect(m_setup, &SetUpWindow::Finished, this, &Program::OpenBuilder);
    connect(m_setup, &SetUpWindow::WorldDataRequested, this, &Program::OpenWorldData);
    connect(m_setup, &SetUpWindow::Abandoned, this, &Program::End);
    m_setup->show();
}

void Program::OpenBuilder()
{
    LetGo(m_setup);
    m_builder = new BuilderWindow(m_state.AppFolder, m_state.Settings, m_boxes);
    connect(m_builder, &BuilderWindow::Finished, this, &Program::OpenChooser);
    connect(m_builder, &BuilderWindow::SetUpAgainRequested, this, &Program::SetUpAgain);
    connect(m_builder, &BuilderWindow::Ended, this, &Program::End);
    m_builder->show();
}

void Program::OpenWorldData()
{
    LetGo(m_setup);
    m_worldData = new WorldDataWindow(m_state, m_boxes);
    connect(m_worldData, &WorldDataWindow::Finished, this, &Program::OpenChooser);
    connect(m_worldData, &WorldDataWindow::LeftUndone, this, &Program::SetUpAgain);
    BringUp(*m_worldData);
}

void Program::SetUpAgain()
{
    LetGo(m_worldData);
    LetGo(m_builder);
    OpenSetup();
}

void Program::OpenChooser()
{
    LetGo(m_worldData);
    LetGo(m_builder);
    m_chooser = new ChooserWindow(ChooserPart(m_state), m_boxes, m_desk);
    connect(m_chooser, &ChooserWindow::Finished, this, &Program::AfterChooser);
    connect(m_chooser, &ChooserWindow::Ready, this, &Program::RunScriptInChooser);
    if (m_main != nullptr)
        BelongTo(*m_chooser, *m_main);
    BringUp(*m_chooser);
}

void Program::AfterChooser(ChooserNext next)
{
    LetGo(m_chooser);
    switch (next) {
    case ChooserNext::OpenConnection: OpenConnection(); break;
    case ChooserNext::ShowNewArea:
        m_main->GiveBack();
        m_main->ShowNewArea();
        break;
    case ChooserNext::ReturnToRadar: m_main->GiveBack(); break;
    case ChooserNext::SetUpAgain:
        DeleteDataFiles(m_state.AppFolder);
        OpenSetup();
        break;
    case ChooserNext::EndProgram: End(); break;
    case ChooserNext::Stay: break;
    }
}

void Program::OpenConnection()
{
    if (const Result<void> hosted = m_practice.HostOver(m_state.Area); !hosted)
        m_boxes.Warn(BoxText(hosted.error()));
    m_practiceTimer.start(PracticeIntervalMs);
    m_connection = new ConnectionWindow(m_factory, m_state.Session, m_state.Players, m_boxes, m_desk);
    connect(m_connection, &ConnectionWindow::Joined, this, &Program::OpenRadar);
    connect(m_connection, &ConnectionWindow::ExitRequested, this, [this] {
        m_state.Area.ClearTables();
        End();
    });
    m_connection->OfferHosting(ToQString(InMemoryProvider::ConnectionName),
                               tr("&Host this practice session on the network"));
    for (const std::string_view traffic : {FlightGearConnectionName, FeedConnectionName})
        m_connection->OfferHosting(ToQString(traffic), tr("&Host this traffic on the network"));
    ShowHosting();
    connect(m_connection, &ConnectionWindow::HostingWanted, this, &Program::ServeSession);
    OfferScenarios();
    BringUp(*m_connection);
    if (m_script.Practice)
        QTimer::singleShot(0, this, &Program::RunScriptInConnection);
    if (std::exchange(m_locateAgain, false))
        QTimer::singleShot(0, m_connection, &ConnectionWindow::Locate);
}

void Program::ServeSession(const QString& connectionName, const QString& address)
{
    const bool practice = connectionName == ToQString(InMemoryProvider::ConnectionName);
    if (const Result<void> served =
            practice ? m_practice.ServeAt(ToText(address), m_state.Area) : ServeTraffic(ToText(address));
        !served)
        m_boxes.Warn(BoxText(served.error()));
    ShowHosting();
}

/// What is located next takes place there. Whether it can is tried at once, while the address stands before the user.
Result<void> Program::ServeTraffic(const std::string& address)
{
    m_state.TrafficServedAt.clear();
    if (const Result<void> possible = address.empty() ? Result<void>() : TryToServeAt(address); !possible)
        return possible;
    m_state.TrafficServedAt = address;
    return {};
}

void Program::ShowHosting()
{
    m_connection->ShowHosting(ToQString(InMemoryProvider::ConnectionName), ToQString(m_practice.ServedAt()));
    for (const std::string_view traffic : {FlightGearConnectionName, FeedConnectionName})
        m_connection->ShowHosting(ToQString(traffic), ToQString(m_state.TrafficServedAt));
}

void Program::OfferScenarios()
{
    QStringList names;
    for (const PracticeScenario& scenario : m_practice.Scenarios())
        names << ToQString(scenario.Name);
    m_connection->OfferScenarios(ToQString(InMemoryProvider::ConnectionName), names,
                                 m_practice.Playing() ? static_cast<int>(*m_practice.Playing()) : -1);
    connect(m_connection, &ConnectionWindow::ScenarioWanted, this, [this](int index) {
        const auto scenario = index < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(index));
        if (const Result<void> hosted = m_practice.Play(scenario, m_state.Area); !hosted)
            m_boxes.Warn(BoxText(hosted.error()));
    });
}

void Program::OpenRadar()
{
    m_chat = new ChatWindow(m_state.Session, m_state.Players, m_boxes, m_desk);
    m_main = new MainWindow(m_state, m_factory, m_boxes, *m_chat, m_recording, m_desk, m_connection->HostedAt());
    ConnectRadarMenus();
    PlaceRadarWindows();
    LetGo(m_connection);
    m_boxes.JoinEnds();
    m_script.Practice = false;
    constexpr int UsualTargets = 3; // a scenario begins with as few as it likes
    if (!m_script.Screenshot.isEmpty())
        m_screenshot = std::make_unique<ScreenshotRun>(*m_main, m_state.Players, m_script.Screenshot,
                                                       m_script.Scenario ? 1 : UsualTargets);
}

void Program::PlaceRadarWindows()
{
    PlaceRadar(*m_main, *m_chat);
    const bool hidden = RestorePlaces(m_desk, *m_main, *m_chat);
    BelongTo(*m_chat, *m_main);
    m_main->show();
    if (!m_desk.Flag(RememberKey, false) || !hidden)
        m_chat->show();
}

void Program::KeepPlaces()
{
    if (m_main == nullptr || m_chat == nullptr)
        return;
    corvane::KeepPlaces(m_desk, *m_main, *m_chat);
    m_main->KeepView();
}

void Program::ConnectRadarMenus()
{
    connect(m_main, &MainWindow::Disconnected, this, &Program::AfterDisconnect);
    connect(m_chat, &ChatWindow::UnreadChanged, m_main, &MainWindow::ShowUnread);
    connect(m_main, &MainWindow::ChatRequested, m_chat, &ChatWindow::ShowAgain);
    connect(m_main, &MainWindow::NewDatabaseRequested, this, &Program::CreateNewDatabase);
    connect(m_main, &MainWindow::ChooserRequested, this, [this] {
        m_main->TakeOver();
        OpenChooser();
        PlaceOver(*m_main, *m_chat, *m_chooser);
    });
    connect(m_main, &MainWindow::LocateAgainRequested, this, [this] { m_locateAgain = true; });
    connect(m_main, &MainWindow::TouchedWhileTaken, this, &Program::ShowWhatTookTheRadar);
    connect(m_main, &MainWindow::AboutRequested, this, [this] {
        auto window = std::make_unique<AboutWindow>(QString::fromStdString(WorldDataCredits(m_state)));
        connect(window.get(), &AboutWindow::Closed, this, &Program::CloseOverRadar);
        OpenOverRadar(std::move(window));
    });
    connect(m_main, &MainWindow::PreferencesRequested, this, [this] {
        auto window = std::make_unique<PreferencesWindow>(m_state.Flags);
        connect(window.get(), &PreferencesWindow::Closed, this, [this] {
            CloseOverRadar();
            m_main->RedrawAll();
        });
        OpenOverRadar(std::move(window));
    });
    connect(m_main, &MainWindow::AirportListRequested, this, [this] {
        auto window = std::make_unique<AirportListWindow>(m_state.Area, m_boxes);
        connect(window.get(), &AirportListWindow::CenterRequested, m_main, &MainWindow::RecenterView);
        connect(window.get(), &AirportListWindow::Closed, this, &Program::CloseOverRadar);
        OpenOverRadar(std::move(window));
    });
    connect(m_main, &MainWindow::PlayerPropertiesRequested, this, [this] { OpenPlayerProperties({}); });
    connect(m_main, &MainWindow::PropertiesOfRequested, this, &Program::OpenPlayerProperties);
}

void Program::OpenPlayerProperties(const QString& picked)
{
    auto window = std::make_unique<PlayerPropertiesWindow>(m_state.Session, m_state.Players, m_boxes);
    connect(window.get(), &PlayerPropertiesWindow::CenterRequested, m_main, &MainWindow::RecenterView);
    connect(window.get(), &PlayerPropertiesWindow::Closed, this, &Program::CloseOverRadar);
    PlayerPropertiesWindow& opened = *window;
    OpenOverRadar(std::move(window));
    if (!picked.isEmpty())
        opened.PickName(picked);
}

void Program::OpenOverRadar(std::unique_ptr<QWidget> window)
{
    m_main->TakeOver();
    m_overRadar = window.release();
    PlaceOver(*m_main, *m_chat, *m_overRadar);
    BelongTo(*m_overRadar, *m_main);
    BringUp(*m_overRadar);
}

void Program::ShowWhatTookTheRadar()
{
    QWidget* const window = m_chooser != nullptr ? m_chooser : m_overRadar;
    if (window == nullptr)
        return;
    BringUp(*window);
    Flash(*window);
}

void Program::CloseOverRadar()
{
    LetGo(m_overRadar);
    if (m_main != nullptr && m_state.Session.RadarOpen)
        m_main->GiveBack();
}

void Program::AfterDisconnect()
{
    KeepPlaces();
    LetGo(m_overRadar);
    if (m_chooser != nullptr)
        m_chooser->Abandon();
    LetGo(m_chooser);
    LetGo(m_main);
    LetGo(m_chat);
    OpenConnection();
}

void Program::CreateNewDatabase()
{
    m_main->TakeOver();
    if (CreateNewDatabaseFiles(m_state, m_boxes))
        End();
    else if (m_main != nullptr) // the session may have ended while the question stood
        m_main->GiveBack();
}

void Program::RunScriptInChooser()
{
    if (m_script.Airport.empty())
        return;
    const std::string icao = std::exchange(m_script.Airport, {}); // once: later the person chooses
    if (!m_chooser->ChooseAirport(icao))
        FailScript("the database has no such airport");
}

void Program::RunScriptInConnection()
{
    if (m_connection == nullptr)
        return;
    m_boxes.JoinBegins();
    if (!m_connection->JoinFirstSession(ToQString(InMemoryProvider::ConnectionName)))
        FailScript("there is no practice session to join");
}

void Program::FailScript(const char* why)
{
    if (m_script.Unattended()) {
        std::cerr << "corvane: " << why << '\n';
        QCoreApplication::exit(1);
    } else {
        m_boxes.Warn(why);
    }
}
} // namespace corvane
