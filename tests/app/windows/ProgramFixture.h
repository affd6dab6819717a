#pragma once

#include "app/AppState.h"
#include "app/PracticeProvider.h"
#include "app/windows/Program.h"
#include "core/MessageBoxes.h"
#include "core/windows/DeskSettings.h"
#include "radar/ScopeView.h"
#include "recording/PlaybackClock.h"
#include "recording/RecordedSessionProvider.h"
#include "recording/RecordingDialogs.h"
#include "recording/RecordingPeer.h"
#include "recording/SessionRecorder.h"
#include "session/CompositePeerFactory.h"
#include "tests/core/TemporaryFolder.h"

#include <QAction>
#include <QComboBox>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
class ScopeWidget;

/// Answers every box at once and remembers what it said.
class AnsweredBoxes final : public MessageBoxes {
public:
    void Show(MessageIcon icon, std::string_view title, std::string_view text) override;
    bool Confirm(std::string_view title, std::string_view text) override;
    std::optional<std::string> AskText(std::string_view title, std::string_view prompt) override;

    /// What the last box said; empty before the first.
    [[nodiscard]] std::string Last() const { return Texts.empty() ? std::string() : Texts.back(); }

    std::vector<std::string> Texts;
    std::vector<MessageIcon> Icons; ///< of the boxes shown, questions left out
    bool ConfirmAnswer = false;
    std::optional<std::string> TextAnswer;
    std::function<void()> WhileOpen; ///< what goes on behind the next box, once
};

/// Chooses the same file for every recording.
class AnsweredDialogs final : public RecordingDialogs {
public:
    std::optional<std::filesystem::path> AskWhereToRecord() override { return File; }
    std::optional<std::filesystem::path> AskWhatToPlay() override { return File; }

    std::optional<std::filesystem::path> File; ///< nothing: cancelled
};

/// The whole program over a small demonstration world, driven as a person would.
class ProgramTest : public testing::Test {
protected:
    static constexpr int PatienceMs = 15000;

    void SetUp() override;

    [[nodiscard]] std::filesystem::path SimulatorFolder() const { return m_folder.Path() / "fs2002"; }
    void BuildDatabase() const;
    /// Starts the program. The splash window and the chooser's wait are cut short.
    void Start();
    /// Opens the splash window.
    void Open();
    QWidget* StartInSetup();
    /// Up to the builder, prepared and waiting for its button.
    QWidget* StartInBuilder();
    /// Over a complete database, up to the chooser with its lists.
    QWidget* StartInChooser();
    /// Over KSEA's area, up to the connection window.
    QWidget* StartInConnection();
    /// Up to the radar over KSEA, in the practice session.
    QWidget* StartInRadar();

    static QWidget* Find(const char* name);
    static QWidget* WaitFor(const char* name);
    static bool WaitUntilGone(const char* name);
    static bool WaitUntil(const std::function<bool()>& condition) { return QTest::qWaitFor(condition, PatienceMs); }
    /// The chooser, once its lists are filled.
    static QWidget* WaitForLists();

    template <class Control> static Control& In(QWidget* window, const char* name)
    {
        return *window->findChild<Control*>(name);
    }
    static void Click(QWidget* window, const char* button);
    static void Choose(QWidget* radar, const char* menuEntry) { In<QAction>(radar, menuEntry).trigger(); }
    static void Fire(QWidget* window, const char* timer);
    /// Picks the airport whose entry begins so, and presses the button.
    static void PickAirport(QWidget* chooser, const QString& beginning);
    /// The entry of some other airport than KSEA.
    static QString AnotherAirport(QWidget* chooser);
    /// Lists the sessions, and selects the one whose line begins so. Returns whether there is one.
    static bool Locate(QWidget* connection, const QString& beginning);
    /// Whether an action ends the program.
    static bool EndsTheProgram(const std::function<void()>& action);

    static ScopeWidget& Scope(QWidget* radar);
    static QImage Picture(QWidget* radar);
    /// The view of a radar window that has just been opened.
    [[nodiscard]] ScopeView OpeningView(QWidget* radar) const;
    [[nodiscard]] QString DeskFile() const { return QString::fromStdString((m_folder.Path() / "desk.ini").string()); }
    [[nodiscard]] bool HasFile(std::string_view name) const;

    const TemporaryFolder m_folder;
    InMemoryNetwork m_network; // outlives the state, whose peer is on it
    PracticeProvider m_provider{m_network};
    AnsweredBoxes m_shown;
    AnsweredDialogs m_dialogs;
    std::int64_t m_nowMs = 0; ///< for recordings; the rest lives by the real clock
    PlaybackClock m_playback{[this] { return m_nowMs; }};
    RecordedSessionProvider m_recorded{m_playback, m_dialogs, m_shown};
    CompositePeerFactory m_connections{{&m_provider, &m_recorded}};
    SessionRecorder m_recorder{[this] { return m_nowMs; }};
    RecordingPeerFactory m_factory{m_connections, m_recorder};
    AppState m_state;
    PracticeHost m_practice{m_provider, m_state.MagVar, 7};
    ScriptedStart m_script;
    std::unique_ptr<ScriptedBoxes> m_boxes;
    std::unique_ptr<DeskSettings> m_desk;
    std::unique_ptr<Program> m_program;
};
} // namespace corvane
