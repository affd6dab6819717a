#include "tests/app/windows/ProgramFixture.h"
#include "tests/recording/SampleRecording.h"

#include <QApplication>
#include <QMenu>

#include <filesystem>

// Recording the session and playing recordings, by the radar's menus and the connection window.

namespace corvane {
namespace {
using RecordingTest = ProgramTest;

TEST_F(RecordingTest, RecordsTheSessionAndPlaysIt)
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
    ASSERT_TRUE(WaitUntil([&] { return m_state.Players.PlayerCount() > 3; }));
    const auto size = [this] { return std::filesystem::file_size(*m_dialogs.File); };
    const auto sizeBefore = size();
    m_nowMs += 65000;
    ASSERT_TRUE(WaitUntil([&] { return size() > sizeBefore; }));
    ASSERT_TRUE(WaitUntil([&] { return status.text().endsWith(", 0:01:05"); }));
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
    EXPECT_TRUE(WaitUntil([&] { return m_state.Players.PlayerCount() > 3; }));
    radar->activateWindow(); // the chat opened over it, and shortcuts are the active window's
    ASSERT_TRUE(WaitUntil([&] { return QApplication::activeWindow() == radar; }));
    QTest::keyClick(radar, Qt::Key_4, Qt::ControlModifier);
    m_nowMs += 3000;
    In<QAction>(radar, "pause1").trigger();
    m_nowMs += 3000;
    EXPECT_EQ(playing.text(), "Paused at 10x, 0:00:30 of 0:01:05");
    In<QAction>(radar, "speed60").trigger();
    In<QAction>(radar, "pause1").trigger();
    EXPECT_EQ(playing.text(), "Playing at 60x, 0:00:30 of 0:01:05");
    m_nowMs += 1000;
    EXPECT_TRUE(WaitUntil([&] { return playing.text() == "End of the recording, 0:01:05 of 0:01:05"; }));
    Click(radar, "Command3");
    EXPECT_FALSE(m_playback.IsOpen());
    EXPECT_NE(WaitFor("Form2"), nullptr);
}

TEST_F(RecordingTest, SaysWhatIsWrongWithARecording)
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
