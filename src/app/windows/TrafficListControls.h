#pragma once

#include "core/LatLon.h"
#include "core/MillisecondClock.h"

#include <QObject>
#include <QTimer>

#include <cstdint>
#include <map>
#include <memory>

class QAction;
class QWidget;

namespace corvane {
class DeskSettings;
class RadarDisplay;
class TrafficWindow;
struct AppState;

/// The radar's list of members: its menu entry opens the window, which is brought up to date each second.
class TrafficListControls final : public QObject {
    Q_OBJECT

public:
    /// Action, window and display are the radar's.
    TrafficListControls(AppState& state, RadarDisplay& display, DeskSettings& desk, QAction& open, QWidget& radar);
    ~TrafficListControls() override;

    /// A member has reported.
    void Heard(std::int32_t playerId) { m_heardMs[playerId] = m_clock(); }
    /// An entry of the table has been removed.
    void Removed(std::int32_t playerId) { m_heardMs.erase(playerId); }
    /// Another window works in the radar's place: the list stands still, and cannot be used. Resume ends it.
    void Pause();
    void Resume();
    void Close();

signals:
    void CenterRequested(LatLon center);

private:
    void OpenWindow();
    void Refresh();

    AppState& m_state;
    RadarDisplay& m_display;
    DeskSettings& m_desk;
    QWidget& m_radar;
    MillisecondClock m_clock = SteadyMilliseconds();
    std::map<std::int32_t, std::int64_t> m_heardMs;
    QTimer m_timer{this};
    std::unique_ptr<TrafficWindow> m_window;
};
} // namespace corvane
