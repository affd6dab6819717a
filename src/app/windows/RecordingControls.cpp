#include "app/windows/RecordingControls.h"

#include "recording/PlaybackClock.h"
#include "recording/RecordingDialogs.h"
#include "recording/RecordingStatus.h"
#include "recording/SessionRecorder.h"

#include <QAction>
#include <QActionGroup>
#include <QLabel>
#include <QMenu>
#include <QPointer>

#include <array>

namespace corvane {
RecordingControls::RecordingControls(const RecordingParts& parts, MessageBoxes& boxes, QAction& record, QMenu& playback,
                                     QLabel& status)
    : m_parts(parts), m_boxes(boxes), m_record(record), m_status(status)
{
    connect(&m_record, &QAction::triggered, this, &RecordingControls::RecordTriggered);
    FillMenu(playback);
    playback.menuAction()->setVisible(m_parts.Playback.IsOpen());
    ShowState();
}

void RecordingControls::FillMenu(QMenu& playback)
{
    m_pause = playback.addAction("&Pause");
    m_pause->setObjectName("pause1");
    m_pause->setCheckable(true);
    m_pause->setShortcut(QKeySequence("Ctrl+Space"));
    connect(m_pause, &QAction::triggered, this, [this](bool on) {
        m_parts.Playback.SetPaused(on);
        ShowState();
    });
    playback.addSeparator();
    m_speeds = new QActionGroup(this);
    for (const int speed : std::array<int, SpeedCount>{1, 2, 5, 10, 30, 60}) {
        auto* const action = playback.addAction(QStringLiteral("%1x").arg(speed));
        action->setObjectName(QStringLiteral("speed%1").arg(speed));
        action->setCheckable(true);
        action->setData(speed);
        m_speeds->addAction(action);
        if (m_parts.Playback.IsOpen()) // else the keys are free for others
            action->setShortcut(QKeySequence(QStringLiteral("Ctrl+%1").arg(m_speeds->actions().size())));
    }
    connect(m_speeds, &QActionGroup::triggered, this, [this](const QAction* action) {
        m_parts.Playback.SetSpeed(action->data().toInt());
        ShowState();
    });
}

void RecordingControls::RecordTriggered(bool on)
{
    m_record.setChecked(false); // until it is so
    if (!on) {
        m_parts.Recorder.Stop();
        ShowState();
        return;
    }
    const QPointer<RecordingControls> self(this);
    const auto file = m_parts.Dialogs.AskWhereToRecord();
    if (self.isNull() || !file)
        return; // the session may have ended behind the dialog
    const Result<void> started = m_parts.Recorder.Start(*file);
    ShowState();
    if (!started)
        m_boxes.Warn(BoxText(started.error()));
}

void RecordingControls::Refresh()
{
    ShowState();
    if (const auto failure = m_parts.Recorder.TakeFailure())
        m_boxes.Warn(BoxText(*failure));
}

void RecordingControls::SetSpeedsEnabled(bool enabled)
{
    m_speeds->setEnabled(enabled);
}

void RecordingControls::ShowState()
{
    m_record.setEnabled(m_parts.Recorder.CanRecord());
    m_record.setChecked(m_parts.Recorder.IsRecording());
    m_pause->setChecked(m_parts.Playback.IsPaused());
    for (QAction* const speed : m_speeds->actions())
        speed->setChecked(speed->data().toInt() == m_parts.Playback.Speed());
    const QString status = QString::fromStdString(RecordingStatus(m_parts.Recorder, m_parts.Playback));
    if (status == m_status.text())
        return;
    m_status.setText(status);
    m_status.setVisible(!status.isEmpty());
}
} // namespace corvane
