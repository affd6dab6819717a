#pragma once

#include "app/PracticeHost.h"
#include "app/StartupChecks.h"
#include "app/windows/ClosedWindows.h"
#include "app/windows/RadarWindows.h"
#include "app/windows/ScriptedStart.h"
#include "area/ChooserModel.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <memory>

namespace corvane {
struct AppState;
class BuilderWindow;
class ChooserWindow;
class ConnectionWindow;
class DeskSettings;
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
    void PlayRecording(const DebriefMoment& moment);
    void ShowChooser();
    void RunScriptInChooser();
    void RunScriptInConnection();
    void FailScript(const char* why);
    static void End();

    AppState& m_state;
    SessionPeerFactory& m_factory;
    PracticeHost& m_practice;
    ScriptedBoxes& m_boxes;
    ScriptedStart m_script;
    RecordingParts m_recording;
    DeskSettings& m_desk;
    QTimer m_practiceTimer;
    QElapsedTimer m_clock;

    bool m_locateAgain = false; ///< once the connection window opens

    ClosedWindows m_closed;
    std::unique_ptr<SplashWindow> m_splash;
    std::unique_ptr<SetUpWindow> m_setup;
    std::unique_ptr<BuilderWindow> m_builder;
    std::unique_ptr<WorldDataWindow> m_worldData;
    std::unique_ptr<ChooserWindow> m_chooser;
    std::unique_ptr<ConnectionWindow> m_connection;
    RadarWindows m_radar;
};
} // namespace corvane
