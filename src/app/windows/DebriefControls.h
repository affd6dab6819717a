#pragma once

#include "core/MessageBoxes.h"
#include "core/MillisecondClock.h"
#include "debrief/SessionDebrief.h"

#include <QObject>
#include <QTimer>

#include <memory>

class QWidget;

namespace corvane {
class ChatWindow;
class DebriefWindow;
class DeskSettings;
class SessionRecorder;
struct AppState;

/// The debrief of practice sessions: watches the one that the radar is in, and opens the window. The window stays when
/// the radar closes, and then shows the whole session.
class DebriefControls final : public QObject {
    Q_OBJECT

public:
    static constexpr const char* AtEndKey = "debrief/atEnd"; ///< of the desk: whether the window opens by itself then

    DebriefControls(const AppState& state, const SessionRecorder& recorder, MessageBoxes& boxes, DeskSettings& desk);
    ~DebriefControls() override;

    /// The radar opens in a practice session of this program.
    /// chat  of the session; must outlive the watch
    void Begin(const ChatWindow& chat, const PracticeKnowledge& practice);
    /// The radar closes, whatever session it was in.
    void End(const QWidget& radar);
    /// Opens the window over the radar, with the debrief so far.
    void Open(QWidget& radar);

signals:
    /// A recording is to be played from a moment on, whatever the radar is in.
    void RecordingWanted(const DebriefMoment& moment);

private:
    [[nodiscard]] double Now() const;
    void Hear(std::string_view from, std::string_view text);
    void Tick();
    void Show(const QWidget& radar);

    const AppState& m_state;
    const SessionRecorder& m_recorder;
    MessageBoxes& m_boxes;
    DeskSettings& m_desk;
    MillisecondClock m_clock = SteadyMilliseconds();
    std::int64_t m_beganMs = 0;
    QTimer m_timer{this};
    std::unique_ptr<SessionDebrief> m_session; ///< null where no practice session is watched
    std::unique_ptr<DebriefWindow> m_window;
};
} // namespace corvane
