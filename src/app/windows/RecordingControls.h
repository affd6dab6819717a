#pragma once

#include "core/MessageBoxes.h"

#include <QObject>

class QAction;
class QActionGroup;
class QLabel;
class QMenu;

namespace corvane {
class PlaybackClock;
class RecordedSessionProvider;
class RecordingDialogs;
class SessionRecorder;

/// What recording and playing sessions takes; main owns the parts.
struct RecordingParts {
    SessionRecorder& Recorder;
    PlaybackClock& Playback;
    RecordingDialogs& Dialogs;
    RecordedSessionProvider& Sessions;
};

/// The radar's controls for recordings: the menu entry that records the session, the menu that is there while a
/// recording plays, and the line of text that tells of both. Refresh brings them up to date.
class RecordingControls final : public QObject {
    Q_OBJECT

public:
    static constexpr int SpeedCount = 6; ///< which the keys from Ctrl+1 on choose while a recording plays

    /// The widgets are the radar's; it fills the menu.
    RecordingControls(const RecordingParts& parts, MessageBoxes& boxes, QAction& record, QMenu& playback,
                      QLabel& status);

    /// Also tells, in a box, of a recording that stopped by itself. This object may be gone when it returns: timers
    /// run on behind the box.
    void Refresh();
    /// The playback's speeds; the other actions are among those of the menus they are in.
    void SetSpeedsEnabled(bool enabled);

private:
    void FillMenu(QMenu& playback);
    void RecordTriggered(bool on);
    void ShowState();

    RecordingParts m_parts;
    MessageBoxes& m_boxes;
    QAction& m_record;
    QLabel& m_status;
    QAction* m_pause = nullptr;
    QActionGroup* m_speeds = nullptr;
};
} // namespace corvane
