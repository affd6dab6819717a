#pragma once

#include "radar/DisplayFlags.h"

#include <QWidget>

#include <memory>

namespace Ui {
class Form10;
}

namespace corvane {
/// The display preferences: a check box for each display flag. What is clicked holds at once; the scope is redrawn when
/// the window closes.
class PreferencesWindow final : public QWidget {
    Q_OBJECT

public:
    explicit PreferencesWindow(DisplayFlags& flags);
    ~PreferencesWindow() override;

signals:
    void Closed();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    std::unique_ptr<Ui::Form10> m_ui;
};
} // namespace corvane
