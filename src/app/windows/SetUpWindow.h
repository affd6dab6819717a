#pragma once

#include "app/SetUpModel.h"

#include <QWidget>

#include <memory>

class QFileSystemModel;

namespace Ui {
class Form3;
}

namespace corvane {
/// The set-up: where the simulator is.
class SetUpWindow final : public QWidget {
    Q_OBJECT

public:
    SetUpWindow(AppState& state, MessageBoxes& boxes);
    ~SetUpWindow() override;

signals:
    /// The settings are written; the builder is next.
    void Finished();
    /// The database is to be made without a simulator.
    void WorldDataRequested();
    /// Closed unfinished; the program ends.
    void Abandoned();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void PointAt(const QString& folder);
    void KeepInSight(const QString& loaded);
    void ChooseFolder(const QModelIndex& index);
    void Browse();
    void PathChanged(const QString& text);
    void NextStep();

    std::unique_ptr<Ui::Form3> m_ui;
    QFileSystemModel* m_folders;
    SetUpModel m_setUp;
};
} // namespace corvane
