#include "tests/app/windows/DeskFixture.h"

#include <QDialog>
#include <QElapsedTimer>
#include <QTextBlock>
#include <QTextEdit>

#include <functional>

// The chat beside the radar, and its line.

namespace corvane {
namespace {
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
    QTest::keyClick(&In<QListWidget>(m_chat, "List1"), Qt::Key_F4);
    EXPECT_EQ(Line().text(), ", radar contact") << "no pilot is selected in the list, which has the keyboard";
    EXPECT_TRUE(In<QAction>(m_chat, "show_times1").isChecked());
}
} // namespace
} // namespace corvane
