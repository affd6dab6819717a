#include "app/windows/DisplayControls.h"

#include "app/windows/WindowPlaces.h"
#include "area/AreaModel.h"
#include "core/windows/WindowManners.h"
#include "radar/windows/DisplayOptionsWindow.h"

#include <QAction>

namespace corvane {
DisplayControls::DisplayControls(DisplayOptions& options, const AreaModel& area, DeskSettings& desk, QAction& modern,
                                 QAction& window, QWidget& radar)
    : m_options(options), m_area(area), m_desk(desk), m_modern(modern), m_radar(radar)
{
    if (m_options == ModernDisplay())
        m_options = ModernDisplay(area.AreaMode); // chosen before there was an area
    OptionsChanged();
    connect(&modern, &QAction::triggered, this, &DisplayControls::SwitchModern);
    connect(&window, &QAction::triggered, this, &DisplayControls::OpenWindow);
}

void DisplayControls::OptionsChanged()
{
    const bool classic = m_options == ClassicDisplay();
    m_modern.setChecked(!classic);
    if (!classic)
        m_lastModern = m_options;
    emit Changed();
}

void DisplayControls::SwitchModern(bool on)
{
    const bool hadModern = m_lastModern != ClassicDisplay();
    m_options = !on ? ClassicDisplay() : hadModern ? m_lastModern : ModernDisplay(m_area.AreaMode);
    if (!m_window.isNull())
        m_window->ShowOptions();
    OptionsChanged();
}

void DisplayControls::OpenWindow()
{
    if (m_window.isNull()) {
        m_window = new DisplayOptionsWindow(m_options, m_area.AreaMode, &m_radar);
        m_window->setAttribute(Qt::WA_DeleteOnClose);
        connect(m_window, &DisplayOptionsWindow::Changed, this, &DisplayControls::OptionsChanged);
        m_window->adjustSize();
        PlaceInCorner(m_desk, "places/displayOptions", m_radar, *m_window, Qt::TopRightCorner);
    }
    BringUp(*m_window);
}
} // namespace corvane
