#include "app/windows/ScreenshotRun.h"

#include "core/Text.h"

#include <QCoreApplication>
#include <QPixmap>
#include <QWidget>

#include <iostream>

namespace corvane {
static constexpr int LookEveryMs = 1000;

ScreenshotRun::ScreenshotRun(QWidget& window, const PlayerTable& players, QString fileName, int enough)
    : m_window(window), m_players(players), m_fileName(std::move(fileName)), m_enough(enough)
{
    connect(&m_timer, &QTimer::timeout, this, &ScreenshotRun::Look);
    m_waiting.start();
    m_timer.start(LookEveryMs);
}

bool ScreenshotRun::TargetsHaveMoved()
{
    int moved = 0;
    for (const PlayerRecord& player : m_players.Players()) {
        if (player.Latitude == 0 && player.Longitude == 0)
            continue; // not heard from yet
        const std::pair position(player.Latitude, player.Longitude);
        const auto seen = m_firstSeen.try_emplace(player.PlayerId, position).first;
        if (seen->second != position)
            ++moved;
    }
    return moved >= m_enough;
}

void ScreenshotRun::Look()
{
    if (TargetsHaveMoved()) {
        m_timer.stop();
        const bool saved = m_window.grab().save(m_fileName);
        if (!saved)
            std::cerr << "corvane: " << TerminalText(m_fileName.toStdString()) << ": the picture cannot be written\n";
        QCoreApplication::exit(saved ? 0 : 1);
    } else if (m_waiting.elapsed() > TimeLimitMs) {
        m_timer.stop();
        std::cerr << "corvane: no target has moved in " << TimeLimitMs / 1000 << " seconds\n";
        QCoreApplication::exit(1);
    }
}
} // namespace corvane
