#include "app/windows/SecondScopeControls.h"

#include "app/windows/SecondScopeWindow.h"
#include "app/windows/WindowPlaces.h"
#include "core/windows/WindowManners.h"

#include <QAction>

namespace corvane {
SecondScopeControls::SecondScopeControls(const Parts& parts, const AppState& state, DeskSettings& desk)
    : m_parts(parts), m_state(state), m_desk(desk)
{
    connect(&parts.Open, &QAction::triggered, this, &SecondScopeControls::OpenWindow);
}

SecondScopeControls::~SecondScopeControls() = default;

bool SecondScopeControls::IsOpen() const
{
    return m_window && !m_window->isHidden();
}

void SecondScopeControls::OpenWindow()
{
    if (!IsOpen()) {
        m_window = std::make_unique<SecondScopeWindow>(m_state, m_parts.Display.View(), m_parts.Look);
        connect(m_window.get(), &SecondScopeWindow::PropertiesRequested, this,
                &SecondScopeControls::PropertiesRequested);
        connect(m_window.get(), &SecondScopeWindow::WriteRequested, this, &SecondScopeControls::WriteRequested);
        BelongTo(*m_window, m_parts.Radar);
        PlaceInCorner(m_desk, "places/secondScope", m_parts.Radar, *m_window, Qt::TopRightCorner);
    }
    BringUp(*m_window);
}

void SecondScopeControls::Report(const PlayerRecord& member)
{
    if (IsOpen())
        m_window->Report(member);
}

void SecondScopeControls::ShowNewArea()
{
    if (IsOpen())
        m_window->ShowNewArea();
}

void SecondScopeControls::Pause()
{
    if (IsOpen())
        m_window->Pause();
}

void SecondScopeControls::Resume()
{
    if (IsOpen())
        m_window->Resume();
}

void SecondScopeControls::Close()
{
    if (m_window)
        m_window->close();
}
} // namespace corvane
