#pragma once

#include "core/MillisecondClock.h"
#include "session/AttentionSigns.h"
#include "tracks/Alerts.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

#include <memory>
#include <span>

class QAction;
class QLabel;
class QWidget;

namespace corvane {
class AttentionWindow;
class DeskSettings;
class TonePlayer;

/// Calls attention to what happens on the radar, by tones and by a line that flashes, as the user wants it.
class AttentionControls final : public QObject {
    Q_OBJECT

public:
    /// The action and the line are the radar's, and the radar is the window's parent.
    AttentionControls(DeskSettings& desk, QAction& window, QLabel& line, QWidget& radar);
    ~AttentionControls() override;

    void Note(AttentionSign sign) { m_signs.Note(sign, m_clock()); }
    /// Looks for alerts that have begun since the last call.
    void LookAt(std::span<const Alert> standing);
    /// silent  nobody has been heard for a while
    void Refresh(bool silent);

private:
    void OpenWindow();
    void Keep();
    void Flash(AttentionSign sign);
    void Play(AttentionSign sign);

    DeskSettings& m_desk;
    QLabel& m_line;
    QWidget& m_radar;
    MillisecondClock m_clock = SteadyMilliseconds();
    AttentionSigns m_signs{m_clock()};
    AttentionOptions m_options;
    double m_lastBegan = 0;               ///< of the latest alert that was looked at
    std::unique_ptr<TonePlayer> m_player; ///< none before the first tone
    QTimer m_lineOff;
    QPointer<AttentionWindow> m_window;
};
} // namespace corvane
