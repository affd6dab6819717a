#pragma once

#include "area/ChooserModel.h"
#include "core/MessageBoxes.h"

#include <QTimer>
#include <QWidget>

#include <memory>

namespace Ui {
class Form5;
}

namespace corvane {
class DeskSettings;

/// The area chooser: what to control, one airport or one ARTCC/FIR sector.
class ChooserWindow final : public QWidget, private ChooserView {
    Q_OBJECT

public:
    ChooserWindow(const ChooserState& state, MessageBoxes& boxes, DeskSettings& desk);
    ~ChooserWindow() override;

    /// Picks the airport of an ICAO code in the list and presses the button. Returns whether the list has it.
    bool ChooseAirport(const std::string& icao);
    /// Gives up what is being read or loaded; nothing is announced any more.
    void Abandon() noexcept { m_abandoned = true; }

signals:
    /// The lists are filled and the controls enabled.
    void Ready();
    /// The window has done its part and hides; what follows is never Stay.
    void Finished(corvane::ChooserNext next);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void SetStatus(std::string_view status) override;
    void SetProgress(int value, int maximum) override;
    void SetControlsEnabled(bool enabled) override;
    void RunLongWork(const std::function<void()>& work) override;
    bool Abandoned() const override { return m_abandoned; }

    void OpenLists();
    /// Says once which database files end too early.
    void WarnOfDatabase();
    void OfferLastArea();
    void OptionChosen();
    void LoadChosenArea();
    /// Tells of a failure and, where it may help, offers the set-up. Returns whether the window has left for it.
    bool LeavesForSetUp(const Error& failure, const std::string& advice);
    void Leave(ChooserNext next);

    std::unique_ptr<Ui::Form5> m_ui;
    MessageBoxes& m_boxes;
    DeskSettings& m_desk;
    ChooserModel m_model;
    QTimer m_timer1{this};
    bool m_busy = false; ///< long work is under way: who closes the window leaves when its present step has ended
    bool m_abandoned = false;
    bool m_left = false;
};
} // namespace corvane
