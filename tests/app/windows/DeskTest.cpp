#include "app/windows/RadarMemory.h"
#include "radar/windows/ScopeWidget.h"
#include "session/windows/ChatWindow.h"
#include "tests/app/windows/ProgramFixture.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QElapsedTimer>
#include <QFile>
#include <QFrame>
#include <QRegularExpression>
#include <QRubberBand>
#include <QTextBlock>
#include <QTextEdit>
#include <QWindow>

#include <filesystem>
#include <fstream>
#include <numeric>
#include <vector>

// The desk around the scope: how windows stand to one another, the chat, and what is as it was yesterday.

namespace corvane {
namespace {
class DeskTest : public ProgramTest {
protected:
    void SetUp() override
    {
        ProgramTest::SetUp();
        m_radar = StartInRadar();
        m_chat = WaitFor("Form6");
    }
    /// Ends the program and starts it again, with what the disk remembers.
    void StartOver()
    {
        m_program.reset();
        m_desk.reset();
        ReleaseSessionObjects(m_state.Session);
        m_state.Session.OwnPlayerId = 0;
        m_state.Players.Empty();
        Start();
    }
    void StartOverInRadar()
    {
        StartOver();
        PickAirport(WaitForLists(), "KSEA");
        m_radar = WaitFor("Form1");
        m_chat = nullptr;
        for (QWidget* widget : QApplication::topLevelWidgets())
            m_chat = widget->objectName() == "Form6" ? widget : m_chat;
    }
    QLineEdit& Line() { return In<QLineEdit>(m_chat, "Text1"); }
    QString Shown() { return In<QTextEdit>(m_chat, "RichTextBox1").toPlainText(); }
    void Hear(std::string_view from, std::string_view text)
    {
        static_cast<ChatWindow*>(m_chat)->AddChatLine(from, text);
    }

    QWidget* m_radar = nullptr;
    QWidget* m_chat = nullptr;
};

TEST_F(DeskTest, WindowsOverTheRadarBelongToItAndItPointsThemOut)
{
    EXPECT_EQ(m_chat->windowHandle()->transientParent(), m_radar->windowHandle());
    EXPECT_FALSE(m_chat->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_EQ(m_chat->windowType(), Qt::Dialog) << "as X11 has it";
    for (const auto& [entry, name] : {std::pair("about_program1", "Form7"),
                                      {"preferences_op1", "Form10"},
                                      {"show_airpts_list1", "Form9"},
                                      {"edit_players1", "Form11"},
                                      {"load_all_db_files", "Form5"}}) {
        Choose(m_radar, entry);
        QWidget* const window = WaitFor(name);
        EXPECT_EQ(window->windowHandle()->transientParent(), m_radar->windowHandle()) << name;
        QTest::mouseClick(m_radar->windowHandle(), Qt::LeftButton, {}, {300, 300});
        EXPECT_NE(window->findChild<QRubberBand*>(), nullptr) << name << " flashes";
        window->close();
        ASSERT_TRUE(WaitUntilGone(name));
    }
}

TEST_F(DeskTest, ReturnPressesWhatTheEyeExpects)
{
    Choose(m_radar, "preferences_op1");
    QWidget* window = WaitFor("Form10");
    In<QCheckBox>(window, "Check15").setFocus();
    QTest::keyClick(&In<QCheckBox>(window, "Check15"), Qt::Key_Return);
    EXPECT_EQ(Find("Form10"), nullptr) << "OK";
    Choose(m_radar, "edit_players1");
    window = WaitFor("Form11");
    QTest::keyClick(&In<QLineEdit>(window, "Text6"), Qt::Key_Return);
    EXPECT_EQ(Find("Form11"), window) << "no button is the default one";
    Choose(m_radar, "show_chat_win_op1");
    In<QPushButton>(m_chat, "Command2").setFocus();
    QTest::keyClick(&In<QPushButton>(m_chat, "Command2"), Qt::Key_Return);
    EXPECT_FALSE(m_chat->isVisible()) << "the button that has the keyboard";
}

TEST_F(DeskTest, NoPartOfTheFirstTextIsEverSent)
{
    struct Way {
        const char* Name;
        std::function<void()> Begin;
    };
    for (const Way& way : {Way{"a click into the text",
                               [&] {
                                   QTest::mouseClick(&Line(), Qt::LeftButton, {}, {60, 8});
                               }},
                           Way{"an arrow key", [&] { QTest::keyClick(&Line(), Qt::Key_Left); }}}) {
        way.Begin();
        QTest::keyClicks(&Line(), "hi all");
        EXPECT_EQ(Line().text(), "hi all") << way.Name;
        StartOverInRadar();
    }
}

TEST_F(DeskTest, ChatLinesAreAddedWithoutTouchingWhatIsRead)
{
    auto& history = In<QTextEdit>(m_chat, "RichTextBox1");
    Hear("Ann", "good evening");
    history.find("good", QTextDocument::FindBackward);
    history.moveCursor(QTextCursor::Start);
    ASSERT_TRUE(history.find("good"));
    QElapsedTimer clock;
    clock.start();
    for (int i = 0; i < 500; ++i)
        Hear("Bob", "line " + std::to_string(i));
    RecordProperty("MillisecondsFor500Lines", static_cast<int>(clock.elapsed()));
    EXPECT_EQ(history.textCursor().selectedText(), "good");
    EXPECT_TRUE(Shown().startsWith("Bob: line 499\nBob: line 498\n"));
    EXPECT_TRUE(Shown().endsWith("\nBob: line 0\nAnn: good evening\n[Corvane v3.0]"));
    for (int i = 0; i < 300; ++i)
        Hear("Bob", std::string(1000, 'x'));
    EXPECT_LE(static_cast<std::size_t>(Shown().size()), ChatModel::HistoryLimit);
    Hear("Bob", "roger atc controller");
    EXPECT_EQ(QTextCursor(history.document()).block().begin().fragment().charFormat().fontWeight(), QFont::Bold)
        << "the own callsign";
}

TEST_F(DeskTest, WhatNobodyHasReadIsCounted)
{
    auto& count = In<QLabel>(m_radar, "Label12");
    Click(m_chat, "Command2");
    EXPECT_TRUE(count.isHidden());
    Hear("Ann", "one");
    EXPECT_EQ(count.text(), "Chat: 1 new line");
    Hear("Ann", "two");
    EXPECT_EQ(count.text(), "Chat: 2 new lines");
    EXPECT_EQ(m_chat->windowTitle(), "(2) Chat Window");
    EXPECT_FALSE(count.isHidden());
    Choose(m_radar, "show_chat_win_op1");
    EXPECT_TRUE(count.isHidden());
    EXPECT_EQ(m_chat->windowTitle(), "Chat Window");
}

TEST_F(DeskTest, TheChatLineRecallsCompletesAndWritesReadyTexts)
{
    In<QAction>(m_chat, "ready_texts1").trigger();
    auto* const texts = m_chat->findChild<QDialog*>("ReadyTexts");
    ASSERT_NE(texts, nullptr);
    In<QLineEdit>(texts, "F4").setText("%c, radar contact");
    texts->accept();
    ASSERT_TRUE(WaitUntil([&] { return m_state.Players.PlayerCount() > 3; }));
    auto& members = In<QListWidget>(m_chat, "List1");
    const QString pilot = members.item(1)->text();
    members.setCurrentRow(1);
    QTest::keyClick(&Line(), Qt::Key_F4);
    EXPECT_EQ(Line().text(), pilot + ", radar contact");
    QTest::keyClick(&Line(), Qt::Key_Return);
    QTest::keyClicks(&Line(), "later " + pilot.left(pilot.size() - 1).toLower());
    QTest::keyClick(&Line(), Qt::Key_Tab);
    EXPECT_EQ(Line().text(), "later " + pilot + " ");
    QTest::keyClick(&Line(), Qt::Key_Up);
    EXPECT_EQ(Line().text(), pilot + ", radar contact");
    QTest::keyClick(&Line(), Qt::Key_Down);
    EXPECT_EQ(Line().text(), "later " + pilot + " ");
    In<QAction>(m_chat, "show_times1").trigger();
    QTest::keyClick(&Line(), Qt::Key_Return);
    EXPECT_TRUE(QRegularExpression("^\\d\\d:\\d\\d \\*\\*ATC Controller: later ").match(Shown()).hasMatch());
    StartOverInRadar();
    QTest::keyClick(&Line(), Qt::Key_F4);
    EXPECT_EQ(Line().text(), ", radar contact") << "no pilot is selected";
    EXPECT_TRUE(In<QAction>(m_chat, "show_times1").isChecked());
}

TEST_F(DeskTest, PlacesAreRememberedAndTheViewOnRequest)
{
    for (const bool remember : {false, true}) {
        m_radar->setGeometry(30, 60, 700, 500);
        m_chat->setGeometry(200, 220, 400, 260);
        QCoreApplication::processEvents();
        if (remember)
            Choose(m_radar, "remember_op1");
        Click(m_radar, "Command5");
        QTest::keyClick(&Scope(m_radar), Qt::Key_Up);
        const QString zoom = In<QLabel>(m_radar, "Label7").text();
        m_state.Flags.ShowVors = false;
        Click(m_chat, "Command2");
        StartOverInRadar();
        QCoreApplication::processEvents();
        EXPECT_EQ(m_radar->size(), QSize(700, 500));
        EXPECT_EQ(m_chat->size(), QSize(400, 260));
        EXPECT_EQ(m_state.Flags.ShowVors, !remember);
        EXPECT_EQ(In<QLabel>(m_radar, "Label7").text() == zoom, remember);
        EXPECT_EQ(m_chat->isVisible(), !remember) << "a radar that opens opens the chat, too, by itself";
    }
}

TEST_F(DeskTest, ADamagedFileGivesTheDefaultsAndIsKept)
{
    m_radar->resize(700, 500);
    m_program.reset();
    m_desk.reset();
    for (const std::string& damage : {std::string("\x01\x02 nonsense\n[[[\n"), std::string(2 << 20, 'x')}) {
        std::ofstream(DeskFile().toStdString()) << damage;
        const DeskSettings desk(DeskFile());
        EXPECT_FALSE(desk.Note().isEmpty());
        EXPECT_TRUE(QFile::exists(DeskFile() + ".damaged"));
        EXPECT_FALSE(desk.Flag(RememberKey, false));
    }
    EXPECT_TRUE(DeskSettings(DeskFile()).Note().isEmpty()) << "once";
}

TEST_F(DeskTest, TheConnectionIsAsItWasYesterday)
{
    Click(m_radar, "Command3");
    QWidget* connection = WaitFor("Form2");
    In<QLineEdit>(connection, "Text1").setText("Approach");
    ASSERT_TRUE(Locate(connection, "Practice"));
    auto& sessions = In<QListWidget>(connection, "List2");
    EXPECT_EQ(sessions.count(), 1);
    EXPECT_EQ(sessions.currentRow(), 0) << "the only one is selected";
    EXPECT_EQ(connection->focusWidget(), &sessions);
    QTest::keyClick(&sessions, Qt::Key_Return);
    ASSERT_NE(WaitFor("Form1"), nullptr);
    m_script.Practice = false;
    StartOver();
    QWidget* const chooser = WaitForLists();
    EXPECT_TRUE(In<QComboBox>(chooser, "Combo1").currentText().startsWith("KSEA - ")) << "the last area";
    Click(chooser, "Command3");
    connection = WaitFor("Form2");
    EXPECT_EQ(In<QLineEdit>(connection, "Text1").text(), "Approach");
    EXPECT_EQ(In<QListWidget>(connection, "List1").currentRow(), 0);
    EXPECT_EQ(In<QLabel>(connection, "Label5").accessibleName(), "Status: Disconnected");
}

TEST_F(DeskTest, ASessionThatIsOverSaysSoAndOffersToLocateAgain)
{
    auto& bar = In<QFrame>(m_radar, "HealthBar");
    ASSERT_TRUE(WaitUntil([&] { return m_state.Players.PlayerCount() > 3; }));
    EXPECT_TRUE(bar.isHidden()) << "all is well";
    Choose(m_radar, "show_health1");
    EXPECT_FALSE(bar.isHidden());
    EXPECT_TRUE(In<QLabel>(m_radar, "Label10").text().contains(" members, heard "));
    EXPECT_TRUE(In<QPushButton>(m_radar, "Command7").isHidden());
    Choose(m_radar, "show_health1");
    In<QTimer>(m_radar, "Timer3").stop();
    std::vector<std::size_t> others(m_state.Players.PlayerCount() - 1);
    std::iota(others.begin(), others.end(), 1);
    m_state.Players.Remove(others);
    In<QTimer>(m_radar, "Timer1").setInterval(0);
    EXPECT_TRUE(WaitUntil([&] { return !bar.isHidden(); }));
    EXPECT_EQ(In<QLabel>(m_radar, "Label10").text(), "Everybody else has left the session.");
    Click(m_radar, "Command7");
    QWidget* const connection = WaitFor("Form2");
    EXPECT_TRUE(WaitUntil([&] { return In<QListWidget>(connection, "List2").count() == 1; })) << "located";
}

TEST_F(DeskTest, FlightPlansAreKeptForThoseWhoComeAgainOnRequest)
{
    ASSERT_TRUE(WaitUntil([&] { return m_state.Players.PlayerCount() > 3; }));
    PlayerRecord& pilot = m_state.Players.Players()[1];
    const std::string name = pilot.Name;
    pilot.DestinationIcao = "KPDX";
    Choose(m_radar, "ask_op1");
    Choose(m_radar, "remember_op1");
    m_shown.ConfirmAnswer = false;
    for (const bool byFrame : {false, true}) {
        byFrame ? static_cast<void>(m_radar->close()) : Click(m_radar, "Command3");
        EXPECT_THAT(m_shown.Last(), testing::HasSubstr("Flight plans have been entered"));
        EXPECT_TRUE(m_radar->isVisible()) << "not wanted";
    }
    m_shown.ConfirmAnswer = true;
    Click(m_radar, "Command3");
    ASSERT_TRUE(Locate(WaitFor("Form2"), "Practice"));
    Click(Find("Form2"), "Command2");
    m_radar = WaitFor("Form1");
    const auto again = [&]() -> const PlayerRecord* {
        for (const PlayerRecord& player : m_state.Players.Players())
            if (player.Name == name)
                return &player;
        return nullptr;
    };
    ASSERT_TRUE(WaitUntil([&] { return again() != nullptr; }));
    EXPECT_EQ(again()->DestinationIcao, "KPDX");
}

TEST_F(DeskTest, WhatTheMapLacksIsToldUntilItIsDismissed)
{
    EXPECT_TRUE(In<QFrame>(m_radar, "NoticeBar").isHidden());
    std::filesystem::remove(m_folder.Path() / "world.map");
    std::filesystem::remove(m_folder.Path() / "world_terrain.db");
    StartOverInRadar();
    auto& text = In<QLabel>(m_radar, "Label11");
    EXPECT_TRUE(text.isVisible());
    EXPECT_THAT(text.text().toStdString(), testing::StartsWith("No coastlines: there is no world.map."));
    Click(m_radar, "Command8");
    EXPECT_THAT(text.text().toStdString(), testing::HasSubstr("world_terrain.db"));
    Click(m_radar, "Command8");
    EXPECT_FALSE(text.isVisible());
    StartOverInRadar();
    EXPECT_TRUE(In<QFrame>(m_radar, "NoticeBar").isHidden()) << "for good";
}
} // namespace
} // namespace corvane
