#pragma once

#include "area/AreaModel.h"
#include "radar/DisplayOptions.h"

#include <QWidget>

#include <memory>

namespace Ui {
class DisplayOptionsForm;
}

namespace corvane {
/// The display's options: a control for each, found by the option's name. What is changed shows at once, and the radar
/// goes on meanwhile.
class DisplayOptionsWindow final : public QWidget {
    Q_OBJECT

public:
    /// options  changed in place
    /// mode     of the area, for the modern set
    DisplayOptionsWindow(DisplayOptions& options, ControlMode mode, QWidget* parent);
    ~DisplayOptionsWindow() override;

    /// The options have been changed elsewhere.
    void ShowOptions();

signals:
    void Changed();

private:
    void Connect(const DisplayOption& option);
    void Change(const DisplayOption& option, double value);
    void TakeSet(const DisplayOptions& set);

    std::unique_ptr<Ui::DisplayOptionsForm> m_ui;
    DisplayOptions& m_options;
    bool m_showing = false; ///< the controls follow the options, not the other way round
};
} // namespace corvane
