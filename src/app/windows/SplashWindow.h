#pragma once

#include "app/StartupChecks.h"

#include <QTimer>
#include <QWidget>

#include <memory>

namespace Ui {
class Form8;
}

namespace corvane {
struct AppState;

/// The splash window, which runs the start-up checks when its time is over.
class SplashWindow final : public QWidget {
    Q_OBJECT

public:
    explicit SplashWindow(AppState& state);
    ~SplashWindow() override;

signals:
    void Checked(const corvane::Result<corvane::StartupDecision>& decision);

protected:
    /// A radar sweep above the title.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::unique_ptr<Ui::Form8> m_ui;
    QTimer m_timer1{this};
};
} // namespace corvane
