#pragma once

#include "radar/DisplayOptions.h"

#include <QObject>
#include <QPointer>

class QAction;
class QWidget;

namespace corvane {
class DeskSettings;
class DisplayOptionsWindow;
struct AreaModel;

/// The radar's controls for how it shows targets: the menu entry that switches the modern display on and off, and the
/// window of all options. Both change the same options.
class DisplayControls final : public QObject {
    Q_OBJECT

public:
    /// The actions are the radar's, and the radar is the window's parent.
    DisplayControls(DisplayOptions& options, const AreaModel& area, DeskSettings& desk, QAction& modern,
                    QAction& window, QWidget& radar);

signals:
    void Changed();

private:
    void SwitchModern(bool on);
    void OpenWindow();
    void OptionsChanged();

    DisplayOptions& m_options;
    const AreaModel& m_area;
    DeskSettings& m_desk;
    QAction& m_modern;
    QWidget& m_radar;
    DisplayOptions m_lastModern; ///< what the switch brings back; classic before there was any
    QPointer<DisplayOptionsWindow> m_window;
};
} // namespace corvane
