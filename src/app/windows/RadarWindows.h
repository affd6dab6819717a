#pragma once

#include "app/windows/ClosedWindows.h"
#include "app/windows/RecordingControls.h"
#include "debrief/DebriefWatch.h"

#include <QObject>

#include <memory>
#include <optional>

namespace corvane {
struct AppState;
class ChatWindow;
class DebriefControls;
class DeskSettings;
class MainWindow;
class MessageBoxes;
class ScreenshotRun;
class SessionPeerFactory;

/// The windows of a joined session: the radar, the chat, and the one that works in the radar's place. They open
/// together, and end together when the session is over.
class RadarWindows final : public QObject {
    Q_OBJECT

public:
    RadarWindows(AppState& state, SessionPeerFactory& factory, MessageBoxes& boxes, const RecordingParts& recording,
                 DeskSettings& desk, ClosedWindows& closed);
    ~RadarWindows() override;

    /// hostedAt  where this program hosts the session on the network; empty where it does not
    /// practice  what is known of it where it is a practice session of this program
    void Open(const QString& hostedAt, const std::optional<PracticeKnowledge>& practice);
    void Close();
    /// Leaves the session, if there is one and the user does not want to stay; nothing is lost by leaving a recording.
    /// Returns whether there is none now.
    bool LeaveForRecording();
    /// Saves the radar's picture once so many targets have moved, and ends the program.
    void RunForScreenshot(const QString& fileName, int targets);

    /// A window of others works in the radar's place: it belongs to the radar, where there is one.
    void Own(QWidget& window) const;
    void PlaceOverRadar(QWidget& window) const;
    /// That window has gone; there is a radar.
    void GiveBack();
    void ShowNewArea();

signals:
    /// The area chooser is to work in the radar's place, which waits for it.
    void ChooserRequested();
    /// The user turns to the radar while a window of others works in its place.
    void TouchedWhileTaken();
    /// The user has had the database deleted: the program ends.
    void DatabaseDeleted();
    /// Sessions are to be located as soon as this one has been left, which is next.
    void LocateAgainRequested();
    /// A moment of the debrief is to be looked at in its recording.
    void RecordingWanted(const DebriefMoment& moment);
    /// The session is over.
    void Disconnected();

private:
    void ConnectMenus();
    void Place();
    void KeepPlaces();
    void OpenAbout();
    void OpenPreferences();
    void OpenAirportList();
    void OpenPlayerProperties(const QString& picked);
    void OpenOver(std::unique_ptr<QWidget> window);
    void CloseOver();
    void ShowWhatTookTheRadar();
    void CreateNewDatabase();

    AppState& m_state;
    SessionPeerFactory& m_factory;
    MessageBoxes& m_boxes;
    RecordingParts m_recording;
    DeskSettings& m_desk;
    ClosedWindows& m_closed;

    std::unique_ptr<ChatWindow> m_chat; // outlives the radar, which writes to it
    std::unique_ptr<MainWindow> m_main;
    std::unique_ptr<QWidget> m_over; ///< works in the radar's place
    std::unique_ptr<ScreenshotRun> m_screenshot;
    std::unique_ptr<DebriefControls> m_debrief;
};
} // namespace corvane
