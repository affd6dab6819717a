#include "tests/app/windows/DeskFixture.h"

#include <QFile>
#include <QFileDialog>
#include <QMenu>
#include <QTableWidget>

// The debrief of a practice session: asked for on the radar, or shown when practice ends.

namespace corvane {
namespace {
class DebriefWindowTest : public DeskTest {
protected:
    /// Says something to the first pilot and waits for the answer. Returns its callsign.
    QString TalkToAPilot(const QString& text)
    {
        QString pilot;
        EXPECT_TRUE(WaitUntil([&] {
            for (const PlayerRecord& player : m_state.Players.Players())
                if (player.PlayerId != m_state.Session.OwnPlayerId && player.Role == PilotRole && player.Latitude != 0)
                    pilot = QString::fromStdString(player.Name);
            return !pilot.isEmpty();
        }));
        Line().setText(pilot + ", " + text);
        QTest::keyClick(&Line(), Qt::Key_Return);
        EXPECT_TRUE(WaitUntil([&] { return Shown().startsWith(pilot + ": "); }));
        return pilot;
    }
    static QString Cell(QTableWidget& table, int row, int column) { return table.item(row, column)->text(); }
    /// Presses a button that asks where to save, and answers.
    static void Save(QWidget* window, const char* button, const QString& file)
    {
        QTimer::singleShot(0, window, [&] {
            auto* const dialog = window->findChild<QFileDialog*>();
            dialog->findChild<QLineEdit*>("fileNameEdit")->setText(file);
            static_cast<QDialog*>(dialog)->accept();
        });
        Click(window, button);
    }
};

TEST_F(DebriefWindowTest, ShowsAndSavesWhatWasSaid)
{
    const QString pilot = TalkToAPilot("brew coffee");
    Choose(m_radar, "debrief1");
    QWidget* const window = WaitFor("Debrief");
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(window->windowHandle()->transientParent(), m_radar->windowHandle());
    auto& items = In<QTableWidget>(window, "Items");
    ASSERT_EQ(items.rowCount(), 1) << Shown().toStdString();
    ASSERT_EQ(items.columnCount(), 5) << "nothing is recorded";
    EXPECT_FALSE(In<QPushButton>(window, "OpenRecording").isEnabled());
    EXPECT_TRUE(In<QLabel>(window, "Moment").text().startsWith("Nothing was recorded"));
    EXPECT_EQ(Cell(items, 0, 1), "not understood");
    EXPECT_EQ(Cell(items, 0, 2), pilot);
    auto& flights = In<QTableWidget>(window, "Flights");
    for (int row = 0; row < flights.rowCount(); ++row)
        EXPECT_EQ(Cell(flights, row, 6), Cell(flights, row, 0) == pilot ? "1" : "0");
    EXPECT_TRUE(flights.findItems("**", Qt::MatchStartsWith).isEmpty()) << "the controller is no flight";

    const QString page = QString::fromStdString((m_folder.Path() / "evening").string());
    Save(window, "SaveHtml", page);
    QFile html(page + ".html");
    ASSERT_TRUE(html.open(QIODevice::ReadOnly));
    EXPECT_THAT(html.readAll().toStdString(),
                testing::AllOf(testing::HasSubstr("BREW COFFEE"), testing::HasSubstr("<svg")));
    Save(window, "SaveJson", page);
    EXPECT_TRUE(QFile::exists(page + ".json"));
    Save(window, "SaveJson", page + "/no/folder");
    EXPECT_THAT(m_shown.Last(), testing::HasSubstr("/no/folder.json"));

    TalkToAPilot("say altitude");
    Click(m_radar, "Command3");
    ASSERT_NE(WaitFor("Form2"), nullptr);
    EXPECT_TRUE(WaitUntil([&] { return window->isVisible(); })) << "an open one stays";
    auto& summary = In<QTableWidget>(window, "Summary");
    EXPECT_TRUE(Cell(summary, 6, 1).startsWith("2, ")) << "and has the rest: " << Cell(summary, 6, 1).toStdString();
    BringUp(window);
    QTest::keyClick(window, Qt::Key_Escape);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(DebriefWindowTest, OpensTheRecordingAtAnItem)
{
    m_dialogs.File = m_folder.Path() / "evening.cvr";
    Choose(m_radar, "record_session1");
    ASSERT_TRUE(WaitUntil([&] { return m_state.Players.PlayerCount() > 3; }));
    m_nowMs += 5000; // of the recording
    const QString pilot = TalkToAPilot("brew coffee");
    m_nowMs += 4000;
    Fire(m_radar, "Timer1");
    Choose(m_radar, "debrief1");
    QWidget* const window = WaitFor("Debrief");
    ASSERT_NE(window, nullptr);
    In<QTabWidget>(window, "Pages").setCurrentIndex(1);
    auto& items = In<QTableWidget>(window, "Items");
    ASSERT_GE(items.rowCount(), 1) << Shown().toStdString();
    ASSERT_TRUE(In<QPushButton>(window, "OpenRecording").isEnabled());

    m_dialogs.File.reset(); // nobody is asked for a file
    QTest::keyClick(&items, Qt::Key_Return);
    ASSERT_TRUE(WaitUntil([&] { return m_shown.Last().find("leave the session") != std::string::npos; }));
    EXPECT_TRUE(m_recorder.IsRecording()) << "the user stays";
    m_shown.ConfirmAnswer = true;
    m_shown.Texts.clear();
    QTest::keyClick(&items, Qt::Key_Return);
    ASSERT_TRUE(WaitUntil([&] { return m_playback.IsOpen() && Find("Form1") != nullptr; }));
    EXPECT_GT(m_playback.PositionMs(), 0);
    EXPECT_LE(m_playback.PositionMs(), 9000);
    EXPECT_TRUE(WaitUntil([&] { return m_state.Players.PlayerCount() > 3; }));
    EXPECT_EQ(m_shown.Texts.size(), 1U) << m_shown.Last() << ": the join's own boxes are answered";

    m_shown.Texts.clear();
    Click(window, "OpenRecording");
    ASSERT_TRUE(WaitUntil([&] { return Find("Form2") == nullptr && m_playback.IsOpen() && !m_playback.IsPaused(); }));
    EXPECT_THAT(m_shown.Texts, testing::IsEmpty()) << "nothing is lost by leaving a recording";
    Click(WaitFor("Form1"), "Command3");
    ASSERT_NE(WaitFor("Form2"), nullptr);
    std::filesystem::remove(m_folder.Path() / "evening.cvr");
    Click(window, "OpenRecording");
    EXPECT_TRUE(WaitUntil([&] { return !m_shown.Texts.empty(); }));
    EXPECT_THAT(m_shown.Texts.front(), testing::HasSubstr("evening.cvr"));
    EXPECT_FALSE(m_playback.IsOpen());
}

TEST_F(DebriefWindowTest, ComesAtTheEndWhereTheUserWantsItAndOfPracticeAlone)
{
    m_dialogs.File = m_folder.Path() / "session.cvr";
    Choose(m_radar, "record_session1");
    ASSERT_TRUE(WaitUntil([&] { return m_state.Players.PlayerCount() > 3; }));
    Click(m_radar, "Command3");
    QWidget* const connection = WaitFor("Form2");
    QCoreApplication::processEvents();
    EXPECT_EQ(Find("Debrief"), nullptr) << "not by itself at first";
    ASSERT_TRUE(Locate(connection, "Practice"));
    Click(connection, "Command2");
    QWidget* radar = WaitFor("Form1");
    ASSERT_NE(radar, nullptr);
    Choose(radar, "debrief_op1");
    Click(radar, "Command3");
    QWidget* window = WaitFor("Debrief");
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(window->windowHandle()->transientParent(), nullptr);
    window->close();

    auto& types = In<QListWidget>(WaitFor("Form2"), "List1");
    types.setCurrentItem(types.findItems("Recorded session", Qt::MatchExactly).value(0));
    Click(WaitFor("Form2"), "Command1");
    In<QListWidget>(WaitFor("Form2"), "List2").setCurrentRow(0);
    Click(WaitFor("Form2"), "Command2");
    radar = WaitFor("Form1");
    ASSERT_NE(radar, nullptr);
    EXPECT_FALSE(In<QAction>(radar, "debrief1").isVisible());
    EXPECT_FALSE(In<QAction>(radar, "debrief_op1").isVisible());
    Click(radar, "Command3");
    ASSERT_NE(WaitFor("Form2"), nullptr);
    QCoreApplication::processEvents();
    EXPECT_EQ(Find("Debrief"), nullptr);
}
} // namespace
} // namespace corvane
