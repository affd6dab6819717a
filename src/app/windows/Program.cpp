#include "app/windows/Program.h"

#include "app/AppState.h"
#include "app/FeedConnection.h"
#include "app/FlightGearConnection.h"
#include "app/ServedNetwork.h"
#include "app/windows/SetUpWindow.h"
#include "app/windows/SplashWindow.h"
#include "app/windows/WorldDataWindow.h"
#include "area/windows/ChooserWindow.h"
#include "builder/windows/BuilderWindow.h"
#include "core/DatabaseFiles.h"
#include "core/Rounding.h"
#include "core/windows/DeskSettings.h"
#include "core/windows/QtText.h"
#include "core/windows/WindowManners.h"
#include "debrief/Debrief.h"
#include "net/memory/InMemoryNetwork.h"
#include "recording/RecordedSessionProvider.h"
#include "session/windows/ConnectionWindow.h"

#include <QCoreApplication>

#include <iostream>
#include <utility>

namespace corvane {
static constexpr int PracticeIntervalMs = 100;

Program::Program(AppState& state, SessionPeerFactory& factory, PracticeHost& practice, ScriptedBoxes& boxes,
                 ScriptedStart script, const RecordingParts& recording, DeskSettings& desk)
    : m_state(state),
      m_factory(factory),
      m_practice(practice),
      m_boxes(boxes),
      m_script(std::move(script)),
      m_recording(recording),
      m_desk(desk),
      m_radar(state, factory, boxes, recording, desk, m_closed)
{
    m_clock.start();
    connect(&m_practiceTimer, &QTimer::timeout, this,
            [this] { m_practice.Advance(static_cast<double>(m_clock.elapsed()) / 1000); });
    connect(&m_radar, &RadarWindows::ChooserRequested, this, [this] {
        OpenChooser();
        m_radar.PlaceOverRadar(*m_chooser);
    });
    connect(&m_radar, &RadarWindows::TouchedWhileTaken, this, &Program::ShowChooser);
    connect(&m_radar, &RadarWindows::DatabaseDeleted, this, &Program::End);
    connect(&m_radar, &RadarWindows::LocateAgainRequested, this, [this] { m_locateAgain = true; });
    connect(&m_radar, &RadarWindows::RecordingWanted, this, [this](const DebriefMoment& moment) {
        QTimer::singleShot(0, this, [this, moment] { PlayRecording(moment); }); // the table that asks is filled anew
    });
    connect(&m_radar, &RadarWindows::Disconnected, this, &Program::AfterDisconnect);
}

Program::~Program() = default;

void Program::End()
{
    QCoreApplication::exit(0);
}

void Program::Start()
{
    if (m_script.FirstStart)
        DeleteDataFiles(m_state.AppFolder);
    m_splash = std::make_unique<SplashWindow>(m_state);
    connect(m_splash.get(), &SplashWindow::Checked, this, &Program::AfterStartupChecks);
    m_splash->show();
}

void Program::AfterStartupChecks(const Result<StartupDecision>& decision)
{
    m_closed.Begin();
    if (!decision) {
        m_boxes.Warn(StartupFailureText(decision.error()));
        m_closed.Take(m_splash, *this);
        End();
        return;
    }
    if (*decision == StartupDecision::SetUpAfterUpdateMessage)
        m_boxes.Inform(UpdateDatabaseMessage);
    m_closed.Take(m_splash, *this);
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
    m_setup = std::make_unique<SetUpWindow>(m_state, m_boxes);
    connect(m_setup.get(), &SetUpWindow::Finished, this, &Program::OpenBuilder);
    connect(m_setup.get(), &SetUpWindow::WorldDataRequested, this, &Program::OpenWorldData);
    connect(m_setup.get(), &SetUpWindow::Abandoned, this, &Program::End);
    m_setup->show();
}

void Program::OpenBuilder()
{
    m_closed.Take(m_setup, *this);
    m_builder = std::make_unique<BuilderWindow>(m_state.AppFolder, m_state.Settings, m_boxes);
    connect(m_builder.get(), &BuilderWindow::Finished, this, &Program::OpenChooser);
    connect(m_builder.get(), &BuilderWindow::SetUpAgainRequested, this, &Program::SetUpAgain);
    connect(m_builder.get(), &BuilderWindow::Ended, this, &Program::End);
    m_builder->show();
}

void Program::OpenWorldData()
{
    m_closed.Take(m_setup, *this);
    m_worldData = std::make_unique<WorldDataWindow>(m_state, m_boxes);
    connect(m_worldData.get(), &WorldDataWindow::Finished, this, &Program::OpenChooser);
    connect(m_worldData.get(), &WorldDataWindow::LeftUndone, this, &Program::SetUpAgain);
    BringUp(*m_worldData);
}

void Program::SetUpAgain()
{
    m_closed.Take(m_worldData, *this);
    m_closed.Take(m_builder, *this);
    OpenSetup();
}

void Program::OpenChooser()
{
    m_closed.Take(m_worldData, *this);
    m_closed.Take(m_builder, *this);
    m_chooser = std::make_unique<ChooserWindow>(ChooserPart(m_state), m_boxes, m_desk);
    connect(m_chooser.get(), &ChooserWindow::Finished, this, &Program::AfterChooser);
    connect(m_chooser.get(), &ChooserWindow::Ready, this, &Program::RunScriptInChooser);
    m_radar.Own(*m_chooser);
    BringUp(*m_chooser);
}

void Program::AfterChooser(ChooserNext next)
{
    m_closed.Take(m_chooser, *this);
    switch (next) {
    case ChooserNext::OpenConnection: OpenConnection(); break;
    case ChooserNext::ShowNewArea:
        m_radar.GiveBack();
        m_radar.ShowNewArea();
        break;
    case ChooserNext::ReturnToRadar: m_radar.GiveBack(); break;
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
    m_connection = std::make_unique<ConnectionWindow>(m_factory, m_state.Session, m_state.Players, m_boxes, m_desk);
    connect(m_connection.get(), &ConnectionWindow::Joined, this, &Program::OpenRadar);
    connect(m_connection.get(), &ConnectionWindow::ExitRequested, this, [this] {
        m_state.Area.ClearTables();
        End();
    });
    m_connection->OfferHosting(ToQString(InMemoryProvider::ConnectionName),
                               tr("&Host this practice session on the network"));
    for (const std::string_view traffic : {FlightGearConnectionName, FeedConnectionName})
        m_connection->OfferHosting(ToQString(traffic), tr("&Host this traffic on the network"));
    ShowHosting();
    connect(m_connection.get(), &ConnectionWindow::HostingWanted, this, &Program::ServeSession);
    OfferScenarios();
    BringUp(*m_connection);
    if (m_script.Practice)
        QTimer::singleShot(0, this, &Program::RunScriptInConnection);
    if (std::exchange(m_locateAgain, false))
        QTimer::singleShot(0, m_connection.get(), &ConnectionWindow::Locate);
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
    if (Result<void> possible = address.empty() ? Result<void>() : TryToServeAt(address); !possible)
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
    connect(m_connection.get(), &ConnectionWindow::ScenarioWanted, this, [this](int index) {
        const auto scenario = index < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(index));
        if (const Result<void> hosted = m_practice.Play(scenario, m_state.Area); !hosted)
            m_boxes.Warn(BoxText(hosted.error()));
    });
}

void Program::OpenRadar()
{
    std::optional<PracticeKnowledge> practice;
    if (const auto wind = m_practice.WindIn(m_state.Session.SessionGuid))
        practice = PracticeKnowledge{*wind, [this](std::string_view name) { return m_practice.DestinationOf(name); }};
    m_radar.Open(m_connection->HostedAt(), practice);
    m_closed.Take(m_connection, *this);
    m_boxes.JoinEnds();
    m_script.Practice = false;
    constexpr int UsualTargets = 3; // a scenario begins with as few as it likes
    if (!m_script.Screenshot.isEmpty())
        m_radar.RunForScreenshot(m_script.Screenshot, m_script.Scenario ? 1 : UsualTargets);
}

/// Over the area that is loaded, whatever was recorded: the session says nothing of where it took place.
void Program::PlayRecording(const DebriefMoment& moment)
{
    if (!m_radar.LeaveForRecording() || !m_connection)
        return;
    constexpr double MillisecondsPerSecond = 1000;
    m_recording.Sessions.PlayNext(moment.File, RoundTo<std::int32_t>(moment.AtS * MillisecondsPerSecond));
    BringUp(*m_connection);
    m_boxes.JoinBegins();
    if (!m_connection->JoinFirstSession(ToQString(PlaybackConnectionName)))
        m_boxes.JoinEnds();
    m_recording.Sessions.AskUser();
}

void Program::ShowChooser()
{
    if (!m_chooser)
        return;
    BringUp(*m_chooser);
    Flash(*m_chooser);
}

void Program::AfterDisconnect()
{
    if (m_chooser)
        m_chooser->Abandon();
    m_closed.Take(m_chooser, *this);
    m_radar.Close();
    OpenConnection();
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
    if (!m_connection)
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
