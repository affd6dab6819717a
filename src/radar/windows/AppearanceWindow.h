#pragma once

#include "radar/Appearance.h"

#include <QWidget>

#include <memory>

namespace Ui {
class AppearanceForm;
}

namespace corvane {
/// Colours, fonts, line width and the interface's scale. What is changed shows at once, but for the scale.
class AppearanceWindow final : public QWidget {
    Q_OBJECT

public:
    /// appearance  changed in place
    AppearanceWindow(Appearance& appearance, QWidget* parent);
    ~AppearanceWindow() override;

signals:
    void Changed();

private:
    void ShowAppearance();
    void TakeControls();

    std::unique_ptr<Ui::AppearanceForm> m_ui;
    Appearance& m_appearance;
    bool m_showing = false; ///< the controls follow the appearance, not the other way round
};
} // namespace corvane
