#include "app/windows/HealthLine.h"

#include "core/windows/DeskSettings.h"
#include "core/windows/QtText.h"
#include "recording/PlaybackClock.h"
#include "recording/SessionRecorder.h"

#include <QAction>
#include <QFrame>
#include <QLabel>
#include <QPushButton>

namespace corvane {
static constexpr const char* ShowKey = "health/show";

HealthLine::HealthLine(const Parts& parts, DeskSettings& desk, const PlayerTable& players,
                       const RecordingParts& recording, QString hostedAt)
    : m_parts(parts), m_players(players), m_recording(recording), m_hostedAt(std::move(hostedAt))
{
    m_parts.Show.setChecked(desk.Flag(ShowKey, false));
    connect(&m_parts.Show, &QAction::toggled, this, [this, &desk](bool on) {
        desk.Keep(ShowKey, on);
        Refresh();
    });
    connect(&m_parts.Locate, &QPushButton::clicked, this, &HealthLine::LocateRequested);
}

void HealthLine::Refresh()
{
    if (m_recording.Playback.IsPaused())
        Heard(); // nobody can say anything
    const HealthReport report = m_health.Report(m_players.PlayerCount(), m_clock());
    m_isQuiet = report.Level != HealthLevel::Well;
    const bool over = report.Level == HealthLevel::Over;
    m_parts.Bar.setVisible(over || m_malformed > 0 || m_parts.Show.isChecked());
    m_parts.Locate.setVisible(over);
    QStringList parts{ToQString(report.Text)};
    if (!m_hostedAt.isEmpty())
        parts << "hosting at " + m_hostedAt;
    if (m_recording.Recorder.IsRecording())
        parts << "recording";
    if (m_malformed > 0)
        parts << (m_malformed == 1 ? tr("1 malformed message passed over")
                                   : tr("%1 malformed messages passed over").arg(m_malformed));
    if (parts.size() > 1 && parts.first().endsWith('.'))
        parts.first().chop(1);
    const QString text = parts.join(", ");
    if (text == m_parts.Text.text())
        return;
    m_parts.Text.setText(text);
    const char* const quiet = "background: #ffd700; color: black;";
    m_parts.Text.setStyleSheet(report.Level == HealthLevel::Well ? "" : quiet);
}
} // namespace corvane
