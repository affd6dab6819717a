#include "app/windows/AppearanceControls.h"

#include "app/windows/AppearanceMemory.h"
#include "app/windows/WindowPlaces.h"
#include "core/windows/WindowManners.h"
#include "radar/windows/AppearanceWindow.h"

#include <QAction>

namespace corvane {
AppearanceControls::AppearanceControls(DeskSettings& desk, QAction& window, QWidget& radar)
    : m_desk(desk), m_radar(radar), m_look(ReadAppearance(desk))
{
    connect(&window, &QAction::triggered, this, &AppearanceControls::OpenWindow);
}

void AppearanceControls::Take()
{
    KeepAppearance(m_desk, m_look);
    ApplyWindowFont(m_look);
    emit Changed();
}

void AppearanceControls::OpenWindow()
{
    if (m_window.isNull()) {
        m_window = new AppearanceWindow(m_look, &m_radar);
        m_window->setAttribute(Qt::WA_DeleteOnClose);
        connect(m_window, &AppearanceWindow::Changed, this, &AppearanceControls::Take);
        m_window->adjustSize();
        PlaceInCorner(m_desk, "places/appearance", m_radar, *m_window, Qt::TopRightCorner);
    }
    BringUp(*m_window);
}
} // namespace corvane
