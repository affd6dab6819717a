#pragma once

#include "radar/Appearance.h"

#include <QObject>
#include <QPointer>

class QAction;
class QWidget;

namespace corvane {
class AppearanceWindow;
class DeskSettings;

/// How scope and windows look: remembers it, and opens the window that changes it.
class AppearanceControls final : public QObject {
    Q_OBJECT

public:
    /// The action is the radar's, and the radar is the window's parent.
    AppearanceControls(DeskSettings& desk, QAction& window, QWidget& radar);

    [[nodiscard]] const Appearance& Look() const noexcept { return m_look; }

signals:
    void Changed();

private:
    void OpenWindow();
    void Take();

    DeskSettings& m_desk;
    QWidget& m_radar;
    Appearance m_look;
    QPointer<AppearanceWindow> m_window;
};
} // namespace corvane
