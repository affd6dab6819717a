#include "app/windows/Program.h"

#include "app/AppState.h"
#include "builder/BuildDriver.h"
#include "builder/demo/DemoWorld.h"
#include "core/DatabaseFiles.h"
#include "core/File.h"
#include "core/PathLookup.h"
#include "platform/CompositePeerFactory.h"
#include "platform/InMemoryNetwork.h"
#include "platform/RecordedSessionProvider.h"
#include "radar/windows/ScopeWidget.h"
#include "session/recording/RecordingPeer.h"
#include "tests/core/TemporaryFolder.h"
#include "tests/session/recording/SampleRecording.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <QTextEdit>
#include <QTreeView>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvane {
namespace {
/// Answers every box at once and remembers what it said.
class ScriptBoxes final : public MessageBoxes {
public:
    void Show(MessageIcon, std::string_view, std::string_view text) override { Texts.emplace_back(text); }
    bool Confirm(std::string_view, std::string_view text) override
    {
        Texts.emplace_back(text);
        return ConfirmAnswer;
    }
    std::optional<std::string> AskText(std::string_view, std::string_view) override { return std::nullopt; }

    std::vector<std::string> Texts;
    bool ConfirmAnswer = false;
};

class ScriptDialogs final : public RecordingDialogs {
public:
    std::optional<std::filesystem::path> AskWhereToRecord() override { return File; }
    std::optional<std::filesystem::path> AskWhatToPlay() override { return File; }

    std::optional<std::filesystem::path> File; ///< nothing: cancelled
};

constexpr int PatienceMs = 60000;

/// The whole program over a small demonstration world, driven as a person would.
class ProgramTest : public testing::Test {
protected:
    void SetUp() override
    {
        const auto written = WriteDemoWorld({m_folder.Path(), DefaultDataFolder(), 80});
        ASSERT_TRUE(written) << written.error().Text();
        m_state.AppFolder = m_folder.Path();
    }

    void BuildDatabase()
    {
        BuildDriver driver(m_folder.Path(), TextFromPath(m_folder.Path() / "fs2002"), Fs2002Version);
        ASSERT_TRUE(driver.Prepare());
        while (true) {
            const auto step = driver.ScanNext();
            ASSERT_TRUE(step);
            if (step->Done)
                break;
        }
        ASSERT_TRUE(driver.Finish());
    }

    void StartInRadar()
    {
        BuildDatabase();
        m_script.Airport = "KSEA";
        m_script.Practice = true;
        Start();
        ASSERT_NE(WaitFor("Form1"), nullptr);
    }

    void Start()
    {
        m_boxes = std::make_unique<ScriptedBoxes>(m_shown, m_script);
        m_program = std::make_unique<Program>(m_state, m_factory, m_practice, *m_boxes, m_script,
                                              RecordingParts{m_recorder, m_playback, m_dialogs});
        m_program->Start();
    }

    static QWidget* Find(const char* name)
    {
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (widget->objectName() == name && widget->isVisible())
                return widget;
        return nullptr;
    }
    static QWidget* WaitFor(const char* name)
    {
        static_cast<void>(QTest::qWaitFor([name] { return Find(name) != nullptr; }, PatienceMs));
        return Find(name);
    }
    static bool WaitUntilGone(const char* name)
    {
        return QTest::qWaitFor([name] { return Find(name) == nullptr; }, PatienceMs);
    }
    template <class Control> static Control& In(QWidget* window, const char* name)
    {
        return *window->findChild<Control*>(name);
    }
    static void Click(QWidget* window, const char* button)
    {
        QTest::mouseClick(window->findChild<QPushButton*>(button), Qt::LeftButton);
    }

    const TemporaryFolder m_folder;
    InMemoryNetwork m_network; // outlives the state, whose peer is on it
    InMemoryProvider m_provider{m_network};
    ScriptBoxes m_shown;
    ScriptDialogs m_dialogs;
    std::int64_t m_nowMs = 0; ///< for recordings; the rest lives by the real clock
    PlaybackClock m_playback{[this] { return m_nowMs; }};
    RecordedSessionProvider m_recorded{m_playback, m_dialogs, m_shown};
    CompositePeerFactory m_connections{{&m_provider, &m_recorded}};
    SessionRecorder m_recorder{[this] { return m_nowMs; }};
    RecordingPeerFactory m_factory{m_connections, m_recorder};
    AppState m_state;
    PracticeHost m_practice{m_provider, std::string(InMemoryProvider::ConnectionAddress), m_state.MagVar, 7};
    ScriptedStart m_script;
    std::unique_ptr<ScriptedBoxes> m_boxes;
    std::unique_ptr<Program> m_program;
};

TEST_F(ProgramTest, FirstStartLeadsFromTheSetUpToTheRadar)
{
    Start();
    EXPECT_NE(Find("Form8"), nullptr);
    QWidget* const setup = WaitFor("Form3");
    ASSERT_NE(setup, nullptr);
    In<QLineEdit>(setup, "Text1").setText("/nowhere");
    Click(setup, "Command1");
    EXPECT_THAT(m_shown.Texts.back(), testing::HasSubstr("didn't found the FS2002.EXE file"));
    In<QLineEdit>(setup, "Text1").setText(QString::fromStdString((m_folder.Path() / "FS2002").string()));
    Click(setup, "Command1");
    EXPECT_EQ(m_shown.Texts.back(), "Settings file created successfully!");

    QWidget* const builder = WaitFor("Form4");
    ASSERT_NE(builder, nullptr);
    auto& create = In<QPushButton>(builder, "Command2");
    ASSERT_TRUE(QTest::qWaitFor([&] { return create.isEnabled(); }, PatienceMs));
    Click(builder, "Command2");

    QWidget* const chooser = WaitFor("Form5");
    ASSERT_NE(chooser, nullptr);
    EXPECT_EQ(m_shown.Texts.back(), "The creation process, of the database files, was completed!");
    auto& status = In<QLineEdit>(chooser, "Text2");
    ASSERT_TRUE(QTest::qWaitFor([&] { return status.text() == "Done"; }, PatienceMs));
    auto& airports = In<QComboBox>(chooser, "Combo1");
    EXPECT_EQ(airports.count(), m_state.Settings.AirportCount);
    Click(chooser, "Command3"); // nothing picked: nothing happens
    EXPECT_EQ(Find("Form5"), chooser);
    airports.setCurrentIndex(airports.findText("KSEA", Qt::MatchStartsWith));
    Click(chooser, "Command3");

    QWidget* const connection = WaitFor("Form2");
    ASSERT_NE(connection, nullptr);
    Click(connection, "Command2"); // no session picked
    EXPECT_EQ(m_shown.Texts.back(), "Please select a FS multiplayer session.");
    In<QListWidget>(connection, "List1").setCurrentRow(0);
    Click(connection, "Command1");
    EXPECT_EQ(In<QLabel>(connection, "Label5").text(), "Done");
    In<QListWidget>(connection, "List2").setCurrentRow(0);
    Click(connection, "Command2");

    QWidget* const radar = WaitFor("Form1");
    ASSERT_NE(radar, nullptr);
    EXPECT_EQ(m_shown.Texts.back(), "Connected to FS session!");
    EXPECT_THAT(radar->windowTitle().toStdString(), testing::StartsWith("Corvane v3.0 - KSEA - "));
    EXPECT_EQ(In<QLabel>(radar, "Label7").text(), "x14");
    EXPECT_TRUE(WaitUntilGone("Form2"));
    EXPECT_NE(Find("Form6"), nullptr);
}

TEST_F(ProgramTest, WindowsTakeTheRadarOverAndGiveItBack)
{
    StartInRadar();
    QWidget* const radar = Find("Form1");
    struct Entry {
        const char* Action;
        const char* Window;
        const char* CloseButton; ///< null: closed by its frame
    };
    for (const Entry& entry : {Entry{"about_program1", "Form7", "Command1"},
                               {"preferences_op1", "Form10", "Command1"},
                               {"show_airpts_list1", "Form9", nullptr},
                               {"edit_players1", "Form11", nullptr},
                               {"load_all_db_files", "Form5", "Command2"}}) {
        In<QAction>(radar, entry.Action).trigger();
        QWidget* const window = Find(entry.Window);
        ASSERT_NE(window, nullptr) << entry.Window;
        EXPECT_FALSE(radar->isEnabled()) << entry.Window;
        EXPECT_FALSE(In<ScopeWidget>(radar, "Picture1").isEnabled());
        if (entry.CloseButton == nullptr) {
            window->close();
        } else {
            auto& button = In<QPushButton>(window, entry.CloseButton);
            ASSERT_TRUE(QTest::qWaitFor([&] { return button.isEnabled(); }, PatienceMs));
            QTest::mouseClick(&button, Qt::LeftButton);
        }
        EXPECT_TRUE(WaitUntilGone(entry.Window)) << entry.Window;
        EXPECT_TRUE(radar->isEnabled()) << entry.Window;
        for (const char* control : {"Command2", "Command3", "Command5", "Command6"})
            EXPECT_TRUE(In<QPushButton>(radar, control).isEnabled()) << entry.Window << control;
    }
}

TEST_F(ProgramTest, KeysZoomAndPreferencesHide)
{
    StartInRadar();
    QWidget* const radar = Find("Form1");
    auto& scope = In<ScopeWidget>(radar, "Picture1");
    QTest::keyClick(radar, Qt::Key_Plus);
    QTest::keyClick(radar, Qt::Key_Plus);
    QTest::keyClick(radar, Qt::Key_Minus);
    EXPECT_EQ(In<QLabel>(radar, "Label7").text(), "x15");
    Click(radar, "Command5");
    EXPECT_EQ(In<QLabel>(radar, "Label7").text(), "x16");

    const QRgb ring = qRgb(128, 128, 128);
    const auto countRingPixels = [&] {
        const QImage picture = scope.grab().toImage();
        int count = 0;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                count += picture.pixel(x, y) == ring ? 1 : 0;
        return count;
    };
    EXPECT_GT(countRingPixels(), 100);
    In<QAction>(radar, "preferences_op1").trigger();
    QWidget* const preferences = Find("Form10");
    ASSERT_NE(preferences, nullptr);
    In<QCheckBox>(preferences, "Check7").click();
    In<QCheckBox>(preferences, "Check6").click();
    EXPECT_FALSE(m_state.Flags.ShowRangeRings);
    EXPECT_FALSE(m_state.Flags.ShowWorldMap);
    Click(preferences, "Command1");
    EXPECT_LT(countRingPixels(), 5) << "neither rings nor outlines are left, at most an edge of a button's text";
}

TEST_F(ProgramTest, DraggingMeasuresAndChatIsSent)
{
    StartInRadar();
    QWidget* const radar = Find("Form1");
    auto& scope = In<ScopeWidget>(radar, "Picture1");
    const QPoint from(300, 300);
    QTest::mousePress(&scope, Qt::LeftButton, {}, from);
    QTest::mouseMove(&scope, from + QPoint(100, 0));
    const auto white = [&] {
        const QImage picture = scope.grab().toImage();
        for (int y = 290; y < 330; ++y)
            for (int x = 300; x < 600; ++x)
                if (picture.pixel(x, y) == qRgb(255, 255, 255))
                    return true;
        return false;
    };
    EXPECT_TRUE(white()) << "the readout stands at the line's middle";
    QTest::mouseRelease(&scope, Qt::LeftButton, {}, from + QPoint(100, 0));

    QWidget* const chat = Find("Form6");
    ASSERT_NE(chat, nullptr);
    EXPECT_EQ(In<QTextEdit>(chat, "RichTextBox1").toPlainText(), "[Corvane v3.0]");
    In<QLineEdit>(chat, "Text1").setText("hello");
    QTest::keyClick(&In<QLineEdit>(chat, "Text1"), Qt::Key_Return);
    EXPECT_EQ(In<QLineEdit>(chat, "Text1").text(), "");
    EXPECT_THAT(In<QTextEdit>(chat, "RichTextBox1").toPlainText().toStdString(),
                testing::StartsWith("**ATC Controller: hello\n"));
    Click(chat, "Command2");
    EXPECT_FALSE(chat->isVisible());
    In<QAction>(radar, "show_chat_win_op1").trigger();
    EXPECT_TRUE(chat->isVisible());
    EXPECT_TRUE(radar->isEnabled()) << "the chat takes nothing over";
}

TEST_F(ProgramTest, DisconnectReturnsToTheConnectionAndRejoins)
{
    StartInRadar();
    ASSERT_TRUE(QTest::qWaitFor([&] { return m_state.Players.PlayerCount() > 3; }, PatienceMs));
    Click(Find("Form1"), "Command3");
    QWidget* const connection = WaitFor("Form2");
    ASSERT_NE(connection, nullptr);
    EXPECT_TRUE(WaitUntilGone("Form1"));
    EXPECT_EQ(Find("Form6"), nullptr);
    EXPECT_EQ(m_state.Players.PlayerCount(), 0U);
    EXPECT_FALSE(m_state.Session.RadarOpen);
    In<QListWidget>(connection, "List1").setCurrentRow(0);
    Click(connection, "Command1");
    In<QListWidget>(connection, "List2").setCurrentRow(0);
    Click(connection, "Command2");
    EXPECT_NE(WaitFor("Form1"), nullptr);
}

TEST_F(ProgramTest, NewDatabaseFilesAreConfirmedFirst)
{
    StartInRadar();
    QWidget* const radar = Find("Form1");
    In<QAction>(radar, "create_new_db1").trigger();
    EXPECT_TRUE(radar->isEnabled()) << "cancelled: given back";
    EXPECT_TRUE(FileExists(m_folder.Path() / SettingsFileName));
    m_shown.ConfirmAnswer = true;
    In<QAction>(radar, "create_new_db1").trigger();
    for (const std::string_view name : DataFileNames())
        EXPECT_FALSE(FileExists(m_folder.Path() / name)) << name;
}

TEST_F(ProgramTest, RecordsTheSessionAndPlaysIt)
{
    StartInRadar();
    QWidget* radar = Find("Form1");
    auto& record = In<QAction>(radar, "record_session1");
    auto& status = In<QLabel>(radar, "Label8");
    EXPECT_TRUE(record.isEnabled());
    EXPECT_FALSE(In<QMenu>(radar, "playback_op1").menuAction()->isVisible());
    record.trigger(); // the dialog is cancelled
    EXPECT_FALSE(record.isChecked());
    m_dialogs.File = m_folder.Path() / "no" / "session.cvr";
    record.trigger();
    EXPECT_FALSE(record.isChecked());
    EXPECT_THAT(m_shown.Texts.back(), testing::HasSubstr("/no/session.cvr: "));

    m_dialogs.File = m_folder.Path() / "session.cvr";
    record.trigger();
    EXPECT_TRUE(record.isChecked());
    EXPECT_TRUE(status.isVisible());
    EXPECT_EQ(status.text(), "Recording to session.cvr, 0:00:00");
    ASSERT_TRUE(QTest::qWaitFor([&] { return m_state.Players.PlayerCount() > 3; }, PatienceMs));
    const auto size = [this] { return std::filesystem::file_size(*m_dialogs.File); };
    const auto sizeBefore = size();
    m_nowMs += 65000;
    ASSERT_TRUE(QTest::qWaitFor([&] { return size() > sizeBefore; }, PatienceMs));
    ASSERT_TRUE(QTest::qWaitFor([&] { return status.text().endsWith(", 0:01:05"); }, PatienceMs));
    record.trigger();
    EXPECT_FALSE(record.isChecked());
    EXPECT_FALSE(status.isVisible());
    m_dialogs.File = m_folder.Path() / "again.cvr";
    record.trigger();
    EXPECT_TRUE(m_recorder.IsRecording());
    Click(radar, "Command3");
    EXPECT_FALSE(m_recorder.IsRecording()) << "leaving the session closes the file";

    QWidget* const connection = WaitFor("Form2");
    ASSERT_NE(connection, nullptr);
    m_dialogs.File = m_folder.Path() / "session.cvr";
    auto& types = In<QListWidget>(connection, "List1");
    types.setCurrentItem(types.findItems("Recorded session", Qt::MatchExactly).value(0));
    Click(connection, "Command1");
    EXPECT_EQ(In<QLabel>(connection, "Label5").text(), "Done");
    auto& sessions = In<QListWidget>(connection, "List2");
    ASSERT_EQ(sessions.count(), 1);
    EXPECT_THAT(sessions.item(0)->text().toStdString(), testing::StartsWith("Practice - KSEA"));
    sessions.setCurrentRow(0);
    Click(connection, "Command2");
    ASSERT_TRUE(WaitUntilGone("Form2"));
    radar = Find("Form1");
    ASSERT_NE(radar, nullptr);
    EXPECT_TRUE(In<QMenu>(radar, "playback_op1").menuAction()->isVisible());
    auto& playing = In<QLabel>(radar, "Label8");
    EXPECT_EQ(playing.text(), "Playing at 1x, 0:00:00 of 0:01:05");
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_state.Players.PlayerCount() > 3; }, PatienceMs));
    radar->activateWindow(); // the chat opened over it, and shortcuts are the active window's
    ASSERT_TRUE(QTest::qWaitForWindowActive(radar));
    QTest::keyClick(radar, Qt::Key_4, Qt::ControlModifier);
    m_nowMs += 3000;
    In<QAction>(radar, "pause1").trigger();
    m_nowMs += 3000;
    EXPECT_EQ(playing.text(), "Paused at 10x, 0:00:30 of 0:01:05");
    In<QAction>(radar, "speed60").trigger();
    In<QAction>(radar, "pause1").trigger();
    EXPECT_EQ(playing.text(), "Playing at 60x, 0:00:30 of 0:01:05");
    m_nowMs += 1000;
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return playing.text() == "End of the recording, 0:01:05 of 0:01:05"; }, PatienceMs));
    Click(radar, "Command3");
    EXPECT_FALSE(m_playback.IsOpen());
    EXPECT_NE(WaitFor("Form2"), nullptr);
}

TEST_F(ProgramTest, SaysWhatIsWrongWithARecording)
{
    StartInRadar();
    Click(Find("Form1"), "Command3");
    QWidget* const connection = WaitFor("Form2");
    ASSERT_NE(connection, nullptr);
    auto& types = In<QListWidget>(connection, "List1");
    types.setCurrentItem(types.findItems("Recorded session", Qt::MatchExactly).value(0));
    m_shown.Texts.clear();
    Click(connection, "Command1"); // and the dialog is cancelled
    constexpr const char* Cancelled = "Error, canceled connection. Try to locate session again.";
    EXPECT_THAT(m_shown.Texts, testing::ElementsAre(Cancelled));
    m_dialogs.File = m_folder.Write("other.cvr", std::string("something else"));
    m_shown.Texts.clear();
    types.setCurrentRow(types.count() - 1);
    Click(connection, "Command1");
    EXPECT_THAT(m_shown.Texts,
                testing::ElementsAre(testing::HasSubstr("other.cvr: is not a recorded session"), Cancelled));

    m_dialogs.File = m_folder.Write("cut.cvr", test::FileOf({test::Joined(0, 7, "N1"), test::Left(9, 7)}));
    std::filesystem::resize_file(*m_dialogs.File, std::filesystem::file_size(*m_dialogs.File) - 1);
    m_shown.Texts.clear();
    Click(connection, "Command1");
    EXPECT_THAT(m_shown.Texts, testing::ElementsAre(testing::HasSubstr("the last 16 bytes are left out")));
    EXPECT_EQ(In<QListWidget>(connection, "List2").item(0)->text(), "Traffic (2/8)");
}
} // namespace
} // namespace corvane
