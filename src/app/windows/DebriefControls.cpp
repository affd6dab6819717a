#include "app/windows/DebriefControls.h"

#include "app/AppState.h"
#include "app/windows/WindowPlaces.h"
#include "core/windows/DeskSettings.h"
#include "core/windows/WindowManners.h"
#include "debrief/windows/DebriefWindow.h"
#include "practice/PracticeSession.h"
#include "recording/SessionRecorder.h"
#include "session/windows/ChatWindow.h"

#include <QWindow>

#include <cassert>

namespace corvane {
static constexpr double MillisecondsPerSecond = 1000;

DebriefControls::DebriefControls(const AppState& state, const SessionRecorder& recorder, MessageBoxes& boxes,
                                 DeskSettings& desk)
    : m_state(state), m_recorder(recorder), m_boxes(boxes), m_desk(desk)
{
    constexpr int RefreshMs = 1000;
    m_timer.setObjectName("DebriefTimer");
    m_timer.setInterval(RefreshMs);
    connect(&m_timer, &QTimer::timeout, this, &DebriefControls::Tick);
}

DebriefControls::~DebriefControls() = default;

void DebriefControls::Begin(const ChatWindow& chat, const PracticeKnowledge& practice)
{
    assert(!m_session);
    m_session = std::make_unique<SessionDebrief>(std::make_shared<const AreaModel>(m_state.Area), m_state.MagVar,
                                                 PracticeSessionName(m_state.Area.AreaName));
    m_session->SetPractice(practice);
    m_beganMs = m_clock();
    connect(&chat, &ChatWindow::LineAdded, this, &DebriefControls::Hear);
    m_timer.start();
}

double DebriefControls::Now() const
{
    return static_cast<double>(m_clock() - m_beganMs) / MillisecondsPerSecond;
}

void DebriefControls::Hear(std::string_view from, std::string_view text)
{
    if (m_session)
        m_session->Hear(from, text, m_state.Players.Players(), m_state.Session.OwnPlayerId, Now());
}

void DebriefControls::Tick()
{
    const double now = Now();
    m_session->Refresh(m_state.Players.Players(), m_state.Session.OwnPlayerId, now);
    if (m_recorder.IsRecording())
        m_session->Recorded(m_recorder.File(), static_cast<double>(m_recorder.ElapsedMs()) / MillisecondsPerSecond,
                            now);
    else
        m_session->NotRecorded();
}

void DebriefControls::End(const QWidget& radar)
{
    m_timer.stop();
    if (!m_session)
        return;
    if ((m_window && m_window->isVisible()) || m_desk.Flag(AtEndKey, false)) {
        Show(radar);
        m_window->hide();
        if (QWindow* const handle = m_window->windowHandle())
            handle->setTransientParent(nullptr); // the radar goes, and the window comes again over what is opened next
        QTimer::singleShot(0, m_window.get(), [window = m_window.get()] { BringUp(*window); });
    }
    m_session.reset();
}

void DebriefControls::Open(QWidget& radar)
{
    if (!m_session)
        return;
    Tick();
    Show(radar);
    BelongTo(*m_window, radar);
    BringUp(*m_window);
}

void DebriefControls::Show(const QWidget& radar)
{
    if (!m_window) {
        m_window = std::make_unique<DebriefWindow>(m_state.MagVar, m_boxes);
        connect(m_window.get(), &DebriefWindow::RecordingWanted, this, &DebriefControls::RecordingWanted);
        PlaceInCorner(m_desk, "places/debrief", radar, *m_window, Qt::BottomLeftCorner);
    }
    m_window->Show(m_session->Judge(), m_session->Area());
}
} // namespace corvane
