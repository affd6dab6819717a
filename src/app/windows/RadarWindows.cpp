#include "app/windows/RadarWindows.h"

#include "app/AppState.h"
#include "app/DatabaseReset.h"
#include "app/WorldDataModel.h"
#include "app/windows/AboutWindow.h"
#include "app/windows/DebriefControls.h"
#include "app/windows/MainWindow.h"
#include "app/windows/RadarMemory.h"
#include "app/windows/ScreenshotRun.h"
#include "app/windows/WindowPlaces.h"
#include "area/windows/AirportListWindow.h"
#include "core/windows/DeskSettings.h"
#include "core/windows/WindowManners.h"
#include "radar/windows/PreferencesWindow.h"
#include "recording/PlaybackClock.h"
#include "session/windows/ChatWindow.h"
#include "session/windows/PlayerPropertiesWindow.h"

#include <cassert>

namespace corvane {
RadarWindows::RadarWindows(AppState& state, SessionPeerFactory& factory, MessageBoxes& boxes,
                           const RecordingParts& recording, DeskSettings& desk, ClosedWindows& closed)
    : m_state(state),
      m_factory(factory),
      m_boxes(boxes),
      m_recording(recording),
      m_desk(desk),
      m_closed(closed),
      m_debrief(std::make_unique<DebriefControls>(state, recording.Recorder, boxes, desk))
{
    connect(m_debrief.get(), &DebriefControls::RecordingWanted, this, &RadarWindows::RecordingWanted);
}

RadarWindows::~RadarWindows()
{
    KeepPlaces();
}

void RadarWindows::Open(const QString& hostedAt, const std::optional<PracticeKnowledge>& practice)
{
    assert(!m_main);
    m_chat = std::make_unique<ChatWindow>(m_state.Session, m_state.Players, m_boxes, m_desk);
    m_main = std::make_unique<MainWindow>(m_state, m_factory, m_boxes, *m_chat, m_recording, m_desk, hostedAt);
    ConnectMenus();
    if (practice && !m_recording.Playback.IsOpen()) { // a recording of practice goes by the same id
        m_debrief->Begin(*m_chat, *practice);
        m_main->OfferDebrief();
    }
    Place();
}

void RadarWindows::Close()
{
    KeepPlaces();
    if (m_main)
        m_debrief->End(*m_main);
    m_closed.Take(m_over, *this);
    m_closed.Take(m_main, *this);
    m_closed.Take(m_chat, *this);
}

bool RadarWindows::LeaveForRecording()
{
    if (m_main &&
        (m_recording.Playback.IsOpen() ||
         m_boxes.Confirm(MessageTitle, "Do you want to leave the session and open the recording?")) &&
        m_main) // it may have ended behind the box
        m_main->Leave();
    return !m_main;
}

void RadarWindows::RunForScreenshot(const QString& fileName, int targets)
{
    m_screenshot = std::make_unique<ScreenshotRun>(*m_main, m_state.Players, fileName, targets);
}

void RadarWindows::Place()
{
    PlaceRadar(*m_main, *m_chat); // which counts window frames in as long as there are no window handles
    BelongTo(*m_chat, *m_main);
    const bool hidden = RestorePlaces(m_desk, *m_main, *m_chat);
    m_main->show();
    if (!m_desk.Flag(RememberKey, false) || !hidden)
        m_chat->show();
}

void RadarWindows::KeepPlaces()
{
    if (!m_main)
        return;
    corvane::KeepPlaces(m_desk, *m_main, *m_chat);
    m_main->KeepView();
}

void RadarWindows::ConnectMenus()
{
    MainWindow* const radar = m_main.get();
    connect(radar, &MainWindow::Disconnected, this, &RadarWindows::Disconnected);
    connect(radar, &MainWindow::LocateAgainRequested, this, &RadarWindows::LocateAgainRequested);
    connect(radar, &MainWindow::TouchedWhileTaken, this, &RadarWindows::ShowWhatTookTheRadar);
    connect(m_chat.get(), &ChatWindow::UnreadChanged, radar, &MainWindow::ShowUnread);
    connect(radar, &MainWindow::ChatRequested, m_chat.get(), &ChatWindow::ShowAgain);
    connect(radar, &MainWindow::NewDatabaseRequested, this, &RadarWindows::CreateNewDatabase);
    connect(radar, &MainWindow::ChooserRequested, this, [this] {
        m_main->TakeOver();
        emit ChooserRequested();
    });
    connect(radar, &MainWindow::DebriefRequested, this, [this] { m_debrief->Open(*m_main); });
    connect(radar, &MainWindow::AboutRequested, this, &RadarWindows::OpenAbout);
    connect(radar, &MainWindow::PreferencesRequested, this, &RadarWindows::OpenPreferences);
    connect(radar, &MainWindow::AirportListRequested, this, &RadarWindows::OpenAirportList);
    connect(radar, &MainWindow::PlayerPropertiesRequested, this, [this] { OpenPlayerProperties({}); });
    connect(radar, &MainWindow::PropertiesOfRequested, this, &RadarWindows::OpenPlayerProperties);
}

void RadarWindows::OpenAbout()
{
    auto window = std::make_unique<AboutWindow>(QString::fromStdString(WorldDataCredits(m_state)));
    connect(window.get(), &AboutWindow::Closed, this, &RadarWindows::CloseOver);
    OpenOver(std::move(window));
}

void RadarWindows::OpenPreferences()
{
    auto window = std::make_unique<PreferencesWindow>(m_state.Flags);
    connect(window.get(), &PreferencesWindow::Closed, this, [this] {
        CloseOver();
        m_main->RedrawAll();
    });
    OpenOver(std::move(window));
}

void RadarWindows::OpenAirportList()
{
    auto window = std::make_unique<AirportListWindow>(m_state.Area, m_boxes);
    connect(window.get(), &AirportListWindow::CenterRequested, m_main.get(), &MainWindow::RecenterView);
    connect(window.get(), &AirportListWindow::Closed, this, &RadarWindows::CloseOver);
    OpenOver(std::move(window));
}

void RadarWindows::OpenPlayerProperties(const QString& picked)
{
    auto window = std::make_unique<PlayerPropertiesWindow>(m_state.Session, m_state.Players, m_boxes);
    connect(window.get(), &PlayerPropertiesWindow::CenterRequested, m_main.get(), &MainWindow::RecenterView);
    connect(window.get(), &PlayerPropertiesWindow::Closed, this, &RadarWindows::CloseOver);
    PlayerPropertiesWindow& opened = *window;
    OpenOver(std::move(window));
    if (!picked.isEmpty())
        opened.PickName(picked);
}

void RadarWindows::OpenOver(std::unique_ptr<QWidget> window)
{
    assert(m_main);
    m_closed.Take(m_over, *this);
    m_main->TakeOver();
    m_over = std::move(window);
    PlaceOverRadar(*m_over);
    Own(*m_over);
    BringUp(*m_over);
}

void RadarWindows::CloseOver()
{
    m_closed.Take(m_over, *this);
    if (m_main && m_state.Session.RadarOpen)
        m_main->GiveBack();
}

void RadarWindows::Own(QWidget& window) const
{
    if (m_main)
        BelongTo(window, *m_main);
}

void RadarWindows::PlaceOverRadar(QWidget& window) const
{
    PlaceOver(*m_main, *m_chat, window);
}

void RadarWindows::GiveBack()
{
    assert(m_main);
    m_main->GiveBack();
}

void RadarWindows::ShowNewArea()
{
    m_main->ShowNewArea();
}

void RadarWindows::ShowWhatTookTheRadar()
{
    if (!m_over) {
        emit TouchedWhileTaken();
        return;
    }
    BringUp(*m_over);
    Flash(*m_over);
}

void RadarWindows::CreateNewDatabase()
{
    assert(m_main);
    m_main->TakeOver();
    if (CreateNewDatabaseFiles(m_state, m_boxes))
        emit DatabaseDeleted();
    else if (m_main) // the session may have ended while the question stood
        m_main->GiveBack();
}
} // namespace corvane
