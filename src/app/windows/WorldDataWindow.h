#pragma once

#include "app/WorldDataModel.h"
#include "core/MessageBoxes.h"

#include <QTimer>
#include <QWidget>

#include <memory>

class QLineEdit;

namespace Ui {
class WorldDataForm;
}

namespace corvane {
struct AppState;

/// Makes the database of open world data instead of a simulator's scenery.
class WorldDataWindow final : public QWidget {
    Q_OBJECT

public:
    /// Begins with the files of an installed FlightGear, where there is one.
    WorldDataWindow(AppState& state, MessageBoxes& boxes);
    ~WorldDataWindow() override;

signals:
    /// The database is complete; the area chooser is next.
    void Finished();
    /// Left without a database; the set-up is next.
    void LeftUndone();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void BrowseInto(QLineEdit& line, bool several);
    void ShowWhetherReady();
    void Begin();
    void Look();
    void End();

    std::unique_ptr<Ui::WorldDataForm> m_ui;
    AppState& m_state;
    MessageBoxes& m_boxes;
    std::unique_ptr<WorldDataModel> m_job; ///< while the database is being made
    QTimer m_look;
    bool m_over = false;
};
} // namespace corvane
