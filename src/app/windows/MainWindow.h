#pragma once

#include "app/windows/AppearanceControls.h"
#include "app/windows/DisplayControls.h"
#include "app/windows/RecordingControls.h"
#include "app/windows/TargetControls.h"
#include "app/windows/TrafficControls.h"
#include "core/MessageBoxes.h"
#include "core/MillisecondClock.h"
#include "radar/RadarDisplay.h"
#include "session/MessagePump.h"

#include <QActionGroup>
#include <QMainWindow>
#include <QTimer>

#include <memory>

namespace Ui {
class Form1;
}

namespace corvane {
struct AppState;
class AttentionControls;
class Bookmarks;
class ChatWindow;
class DeskSettings;
class FindControls;
class HealthLine;
class NoticeLine;
class SecondScopeControls;
class TrafficListControls;
class VoiceControls;

/// The radar: the scope with its controls, the session behind it, and the menus that open the other windows.
class MainWindow final : public QMainWindow, private PumpEvents {
    Q_OBJECT

public:
    /// The window opens over the loaded area and the joined session.
    /// hostedAt  where this program hosts that session on the network; empty where it does not
    MainWindow(AppState& state, SessionPeerFactory& factory, MessageBoxes& boxes, ChatWindow& chat,
               const RecordingParts& recording, DeskSettings& desk, const QString& hostedAt);
    ~MainWindow() override;

    /// Another window works in this one's place: nothing here can be used and the scope stands still, while the
    /// session goes on. GiveBack ends it.
    void TakeOver();
    void GiveBack();

    void RecenterView(corvane::LatLon center);
    /// Another area has been loaded: caption and scope follow.
    void ShowNewArea();
    /// The display flags have changed.
    void RedrawAll();
    /// So many chat lines have not been read.
    void ShowUnread(int lines);
    /// Remembers view and preferences for the next session over this area.
    void KeepView();
    /// The session is one whose debrief can be asked for.
    void OfferDebrief();
    /// Leaves the session; the window has done its part then.
    void Leave();

signals:
    /// The user turns to this window while another one works in its place.
    void TouchedWhileTaken();
    void ChooserRequested();
    void NewDatabaseRequested();
    void PlayerPropertiesRequested();
    /// The same with a pilot picked already.
    void PropertiesOfRequested(QString name);
    void AirportListRequested();
    void ChatRequested();
    void PreferencesRequested();
    void AboutRequested();
    void DebriefRequested();
    /// Sessions are to be located as soon as this one has been left, which is next.
    void LocateAgainRequested();
    /// The session is over: the connection window is next.
    void Disconnected();

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    // PumpEvents
    void RefreshPlayerList() override;
    void AddChatLine(std::string_view from, std::string_view text) override;
    void PlayerAdded(const PlayerRecord& player) override;
    void PlayerUpdated(const PlayerRecord& player) override;
    void PositionReported(const PlayerRecord& player) override;
    void PlayerRemoved(const PlayerRecord& player) override;
    void Disconnect() override { Leave(); }

    void ConnectControls();
    void KeepSwitch(QAction& entry, const char* key);
    void GatherActions();
    void MakeTimer(QTimer& timer, const char* name, int intervalMs, void (MainWindow::*tick)()) const;
    void PumpTick();
    void TargetTick();
    void UpkeepTick();
    void PanelTick();
    void ZoomBy(int steps);
    void UpdateScope();
    [[nodiscard]] double Now() const;
    void TakeDisplay();
    void TakeAppearance();
    void StartRefreshing();
    void LeaveIfWanted();
    void SetControlsEnabled(bool enabled);

    std::unique_ptr<Ui::Form1> m_ui;
    AppState& m_state;
    SessionPeerFactory& m_factory;
    MessageBoxes& m_boxes;
    ChatWindow& m_chat;
    DeskSettings& m_desk;
    ScopeFont m_font;
    RadarDisplay m_display;
    MessagePump m_pump;
    MillisecondClock m_clock = SteadyMilliseconds();
    std::unique_ptr<TargetControls> m_targets;
    std::unique_ptr<RecordingControls> m_recording;
    std::unique_ptr<VoiceControls> m_voices;
    std::unique_ptr<HealthLine> m_health;
    std::unique_ptr<NoticeLine> m_notices;
    std::unique_ptr<Bookmarks> m_bookmarks;
    std::unique_ptr<FindControls> m_find;
    std::unique_ptr<TrafficListControls> m_list;
    std::unique_ptr<AppearanceControls> m_appearance;
    std::unique_ptr<SecondScopeControls> m_second;
    std::unique_ptr<DisplayControls> m_displayControls;
    std::unique_ptr<AttentionControls> m_attention;
    std::unique_ptr<TrafficControls> m_traffic;
    QActionGroup m_actions{this}; ///< what the menus do
    QTimer m_timer1{this};        ///< message pump
    QTimer m_timer2{this};        ///< target refresh
    QTimer m_timer3{this};        ///< player upkeep
    QTimer m_timer4{this};        ///< information panel
    bool m_takenOver = false;
    bool m_left = false;
};
} // namespace corvane
