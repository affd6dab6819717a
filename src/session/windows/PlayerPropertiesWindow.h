#pragma once

#include "session/PlayerPropertiesModel.h"

#include <QWidget>

#include <memory>

namespace Ui {
class Form11;
}

namespace corvane {
/// The flight plans that the controller keeps for the pilots.
class PlayerPropertiesWindow final : public QWidget {
    Q_OBJECT

public:
    PlayerPropertiesWindow(const SessionState& session, PlayerTable& players, MessageBoxes& boxes);
    ~PlayerPropertiesWindow() override;

    /// Picks the pilot of this name, as a choice from the list does; nothing where there is none.
    void PickName(const QString& name);

signals:
    void CenterRequested(corvane::LatLon center);
    void Closed();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void ShowEditor();
    void Pick(int index);
    void Save();
    void Center();

    std::unique_ptr<Ui::Form11> m_ui;
    PlayerPropertiesModel m_editor;
};
} // namespace corvane
