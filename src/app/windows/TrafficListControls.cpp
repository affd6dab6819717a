#include "app/windows/TrafficListControls.h"

#include "app/AppState.h"
#include "app/windows/WindowPlaces.h"
#include "core/windows/WindowManners.h"
#include "radar/RadarDisplay.h"
#include "radar/windows/TrafficWindow.h"

#include <QAction>

namespace corvane {
TrafficListControls::TrafficListControls(AppState& state, RadarDisplay& display, DeskSettings& desk, QAction& open,
                                         QWidget& radar)
    : QObject(&radar), m_state(state), m_display(display), m_desk(desk), m_radar(radar)
{
    constexpr int RefreshMs = 1000;
    m_timer.setObjectName("TrafficTimer");
    m_timer.setInterval(RefreshMs);
    connect(&open, &QAction::triggered, this, &TrafficListControls::OpenWindow);
    connect(&m_timer, &QTimer::timeout, this, &TrafficListControls::Refresh);
}

TrafficListControls::~TrafficListControls() = default;

void TrafficListControls::Pause()
{
    m_timer.stop();
    if (m_window)
        m_window->setEnabled(false);
}

void TrafficListControls::Resume()
{
    if (!m_window)
        return;
    m_window->setEnabled(true);
    m_timer.start();
}

void TrafficListControls::Close()
{
    if (m_window)
        m_window->close();
}

void TrafficListControls::OpenWindow()
{
    if (!m_window) {
        m_window = std::make_unique<TrafficWindow>(m_state.Players);
        connect(m_window.get(), &TrafficWindow::CenterRequested, this, &TrafficListControls::CenterRequested);
        BelongTo(*m_window, m_radar);
        PlaceInCorner(m_desk, "places/traffic", m_radar, *m_window, Qt::BottomLeftCorner);
    }
    Refresh();
    BringUp(*m_window);
    m_timer.start();
}

void TrafficListControls::Refresh()
{
    if (!m_window->isVisible())
        m_timer.stop(); // until it opens again
    m_window->Show(
        TrafficRows({m_state.Players.Players(), m_state.Session.OwnPlayerId, m_state.Area, m_state.MagVar,
                     m_display.Targets().Monitor().Alerts(), m_heardMs, m_clock(), &m_state.TrafficDetails}));
}
} // namespace corvane
