#pragma once

#include "app/windows/RecordingControls.h"
#include "core/MillisecondClock.h"
#include "session/PlayerTable.h"
#include "session/SessionHealth.h"

#include <QObject>
#include <QString>

class QAction;
class QFrame;
class QLabel;
class QPushButton;

namespace corvane {
class DeskSettings;

/// The line on the radar that tells how the session fares: on request always, and by itself when it seems to be over,
/// with a button that offers to locate sessions again, and when messages had to be passed over.
class HealthLine final : public QObject {
    Q_OBJECT

public:
    /// The radar's widgets and its menu entry.
    struct Parts {
        QAction& Show;
        QFrame& Bar;
        QLabel& Text;
        QPushButton& Locate;
    };
    /// hostedAt  where the session is hosted by this program; empty where it is not
    HealthLine(const Parts& parts, DeskSettings& desk, const PlayerTable& players, const RecordingParts& recording,
               QString hostedAt);

    /// A member has been heard.
    void Heard() { m_health.Heard(m_clock()); }
    /// So many messages could not be read and have been passed over.
    void Forgiven(std::int64_t malformed) { m_malformed = malformed; }
    void Refresh();
    /// Nobody has been heard for a while, as the last Refresh found.
    [[nodiscard]] bool IsQuiet() const noexcept { return m_isQuiet; }

signals:
    void LocateRequested();

private:
    Parts m_parts;
    const PlayerTable& m_players;
    RecordingParts m_recording;
    QString m_hostedAt;
    std::int64_t m_malformed = 0;
    MillisecondClock m_clock = SteadyMilliseconds();
    SessionHealth m_health{m_clock()};
    bool m_isQuiet = false;
};
} // namespace corvane
