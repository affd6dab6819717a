#pragma once

#include "session/PlayerTable.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <map>
#include <utility>

class QWidget;

namespace corvane {
/// Waits until targets have moved on the scope, saves a window's picture and ends the program: status 0, or 1 where
/// nothing moved in time or the picture cannot be written.
class ScreenshotRun final : public QObject {
    Q_OBJECT

public:
    static constexpr int TimeLimitMs = 60000;

    /// enough  so many targets must have moved
    ScreenshotRun(QWidget& window, const PlayerTable& players, QString fileName, int enough);

private:
    void Look();
    [[nodiscard]] bool TargetsHaveMoved();

    QWidget& m_window;
    const PlayerTable& m_players;
    QString m_fileName;
    int m_enough;
    QTimer m_timer;
    QElapsedTimer m_waiting;
    std::map<std::int32_t, std::pair<double, double>> m_firstSeen; ///< by player id: latitude, longitude
};
} // namespace corvane
