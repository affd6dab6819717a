#include "app/windows/AttentionControls.h"

#include "app/windows/AttentionWindow.h"
#include "app/windows/TonePlayer.h"
#include "app/windows/WindowPlaces.h"
#include "core/windows/DeskSettings.h"
#include "core/windows/QtText.h"
#include "core/windows/WindowManners.h"

#include <QAction>
#include <QLabel>

#include <algorithm>

namespace corvane {
static QString KeyOf(const char* kind, std::size_t sign)
{
    return QStringLiteral("attention/%1-%2").arg(kind, ToQString(AttentionSignName(static_cast<AttentionSign>(sign))));
}

AttentionControls::AttentionControls(DeskSettings& desk, QAction& window, QLabel& line, QWidget& radar)
    : m_desk(desk), m_line(line), m_radar(radar)
{
    constexpr int FlashMs = 800;
    for (std::size_t i = 0; i < AttentionSignCount; ++i) {
        m_options.Sound[i] = desk.Flag(KeyOf("sound", i), false);
        m_options.Flash[i] = desk.Flag(KeyOf("flash", i), false);
    }
    m_lineOff.setSingleShot(true);
    m_lineOff.setInterval(FlashMs);
    connect(&m_lineOff, &QTimer::timeout, &m_line, &QWidget::hide);
    connect(&window, &QAction::triggered, this, &AttentionControls::OpenWindow);
}

AttentionControls::~AttentionControls() = default;

void AttentionControls::LookAt(std::span<const Alert> standing)
{
    double latest = m_lastBegan;
    for (const Alert& alert : standing)
        latest = std::max(latest, alert.Began);
    if (latest > m_lastBegan)
        Note(AttentionSign::Alert);
    m_lastBegan = latest;
}

void AttentionControls::Refresh(bool silent)
{
    const std::int64_t now = m_clock();
    m_signs.NoteSilence(silent, now);
    const AttentionSigns::Due due = m_signs.Take(m_options, now);
    if (due.Sound)
        Play(*due.Sound);
    if (due.Flash)
        Flash(*due.Flash);
}

void AttentionControls::Flash(AttentionSign sign)
{
    switch (sign) {
    case AttentionSign::Alert: m_line.setText(tr("ALERT")); break;
    case AttentionSign::Silence: m_line.setText(tr("Nobody is heard")); break;
    case AttentionSign::Chat: m_line.setText(tr("Chat")); break;
    case AttentionSign::Join: m_line.setText(tr("A member has joined")); break;
    case AttentionSign::Leave: m_line.setText(tr("A member has left")); break;
    }
    m_line.show();
    m_lineOff.start();
}

void AttentionControls::Play(AttentionSign sign)
{
    if (!m_player)
        m_player = std::make_unique<TonePlayer>();
    m_player->Play(sign);
}

void AttentionControls::Keep()
{
    for (std::size_t i = 0; i < AttentionSignCount; ++i) {
        m_desk.Keep(KeyOf("sound", i), m_options.Sound[i]);
        m_desk.Keep(KeyOf("flash", i), m_options.Flash[i]);
    }
}

void AttentionControls::OpenWindow()
{
    if (m_window.isNull()) {
        m_window = new AttentionWindow(m_options, &m_radar);
        m_window->setAttribute(Qt::WA_DeleteOnClose);
        connect(m_window, &AttentionWindow::Changed, this, &AttentionControls::Keep);
        connect(m_window, &AttentionWindow::TryRequested, this, &AttentionControls::Play);
        m_window->adjustSize();
        PlaceInCorner(m_desk, "places/signals", m_radar, *m_window, Qt::TopRightCorner);
    }
    BringUp(*m_window);
}
} // namespace corvane
