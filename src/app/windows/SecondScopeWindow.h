#pragma once

#include "core/MillisecondClock.h"
#include "radar/Appearance.h"
#include "radar/RadarDisplay.h"

#include <QTimer>
#include <QWidget>

#include <memory>

namespace Ui {
class SecondScopeForm;
}

namespace corvane {
struct AppState;
class TargetControls;

/// A scope beside the radar's: the same targets, preferences and display options in a view of its own. It works on a
/// copy of the members, so that what it draws changes nothing on the first one.
class SecondScopeWindow final : public QWidget {
    Q_OBJECT

public:
    /// view  where the radar looks, which is where this begins
    /// look  the radar's, borrowed: what changes there shows here with the next refresh
    SecondScopeWindow(const AppState& state, const ScopeView& view, const Appearance& look);
    ~SecondScopeWindow() override;

    /// A member has reported what its record holds.
    void Report(const PlayerRecord& member);
    /// Another area has been loaded.
    void ShowNewArea();
    /// Another window works in the radar's place: nothing can be used here either. Resume ends it.
    void Pause();
    void Resume();

signals:
    void PropertiesRequested(QString name);
    void WriteRequested(QString name);

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void ConnectControls();
    void Refresh();
    void FollowSettings();
    void TakeLook();
    void UpdateScope();
    [[nodiscard]] double Now() const;

    std::unique_ptr<Ui::SecondScopeForm> m_ui;
    const AppState& m_state;
    PlayerTable m_players; ///< as they were at the last refresh
    DisplayFlags m_flags;  ///< as they are shown
    const Appearance& m_look;
    Appearance m_shownLook;
    ScopeFont m_font;
    RadarDisplay m_display;
    std::unique_ptr<TargetControls> m_targets;
    MillisecondClock m_clock = SteadyMilliseconds();
    QTimer m_refresh{this};
    QTimer m_panel{this};
};
} // namespace corvane
