#include "app/windows/FindControls.h"

#include "app/windows/WindowPlaces.h"
#include "core/windows/WindowManners.h"
#include "radar/RadarDisplay.h"
#include "radar/windows/FindWindow.h"
#include "radar/windows/ScopeFlash.h"

#include <QAction>

namespace corvane {
FindControls::FindControls(const Parts& parts, const AreaModel& area, const PlayerTable& players)
    : m_parts(parts), m_area(area), m_players(players)
{
    connect(&m_parts.Open, &QAction::triggered, this, &FindControls::OpenWindow);
}

FindControls::~FindControls() = default;

void FindControls::Close()
{
    if (!m_window)
        return;
    m_window->close();
    m_window.reset();
}

void FindControls::OpenWindow()
{
    if (!m_window || !m_window->isVisible()) { // what is searched is the area of now
        Close();
        m_window = std::make_unique<FindWindow>(m_area, m_players);
        connect(m_window.get(), &FindWindow::Picked, this, &FindControls::CenterOn);
        BelongTo(*m_window, m_parts.Radar);
        PlaceInCorner(m_parts.Desk, "places/find", m_parts.Radar, *m_window, Qt::TopRightCorner);
    }
    BringUp(*m_window);
    m_window->StartAgain();
}

void FindControls::CenterOn(const FoundPlace& found)
{
    m_parts.Display.Recenter(found.Place);
    if (found.Pilot)
        m_parts.Display.Select(found.Pilot);
    emit Moved();
    const ScopePoint at = ProjectToScope(m_parts.Display.View(), found.Place);
    new ScopeFlash(m_parts.Scope, {at.X, at.Y}); // the scope's
}
} // namespace corvane
