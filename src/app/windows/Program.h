#pragma once

#include "app/PracticeHost.h"
#include "app/StartupChecks.h"
#include "app/windows/RecordingControls.h"
#include "app/windows/ScriptedStart.h"
#include "area/ChooserModel.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <memory>
#include <vector>

namespace corvane {
struct AppState;
class BuilderWindow;
class ChatWindow;
class ChooserWindow;
class ConnectionWindow;
class DeskSettings;
class MainWindow;
class ScreenshotRun;
class SetUpWindow;
class SplashWindow;
class WorldDataWindow;

/// The flow of windows from the splash to the radar and back. Owns the windows; each announces what it wants, and this
/// opens and closes them.
class Program final : public QObject {
    Q_OBJECT

public:
    Program(AppState& state, SessionPeerFactory& factory, PracticeHost& practice, ScriptedBoxes& boxes,
            ScriptedStart script, const RecordingParts& recording, DeskSettings& desk);
    ~Program() override;

    void Start();

private:
    void AfterStartupChecks(const Result<StartupDecision>& decision);
    void OpenSetup();
    void OpenBuilder();
    void OpenWorldData();
    void SetUpAgain();
    void OpenChooser();
    void AfterChooser(ChooserNext next);
    void OpenConnection();
    void ServeSession(const QString& connectionName, const QString& address);
    Result<void> ServeTraffic(const std::string& address);
    void ShowHosting();
    void OfferScenarios();
    void OpenRadar();
    void AfterDisconnect();
    void PlaceRadarWindows();
    void KeepPlaces();
    void OpenOverRadar(std::unique_ptr<QWidget> window);
    void CloseOverRadar();
    void ShowWhatTookTheRadar();
    void OpenPlayerProperties(const QString& picked);
    void CreateNewDatabase();
    void ConnectRadarMenus();
    void RunScriptInChooser();
    void RunScriptInConnection();
    void FailScript(const char* why);
    static void End();
    template <class Window> void LetGo(Window*& window);
    void DeleteGone();

    AppState& m_state;
    SessionPeerFactory& m_factory;
    PracticeHost& m_practice;
    ScriptedBoxes& m_boxes;
    ScriptedStart m_script;
    RecordingParts m_recording;
    DeskSettings& m_desk;
    QTimer m_practiceTimer;
    QElapsedTimer m_clock;

    // A closed window may still be in the middle of something, a message box of its own included. It waits here until
    // the event loop is back where it was when the first window closed.
    std::vector<std::unique_ptr<QWidget>> m_gone;
    QTimer m_deletion;
    int m_outermostLoop = 0;
    bool m_locateAgain = false; ///< once the connection window opens

    SplashWindow* m_splash = nullptr;
    SetUpWindow* m_setup = nullptr;
    BuilderWindow* m_builder = nullptr;
    WorldDataWindow* m_worldData = nullptr;
    ChooserWindow* m_chooser = nullptr;
    ConnectionWindow* m_connection = nullptr;
    ChatWindow* m_chat = nullptr;
    MainWindow* m_main = nullptr;
    QWidget* m_overRadar = nullptr; ///< the window that has taken the radar over, other than the chooser
    std::unique_ptr<ScreenshotRun> m_screenshot;
};
} // namespace corvane
