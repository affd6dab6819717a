#include "radar/DisplayOptions.h"
#include "radar/TrafficTable.h"
#include "radar/windows/ScopeFlash.h"
#include "radar/windows/ScopeWidget.h"
#include "tests/app/windows/DeskFixture.h"
#include "tests/session/Member.h"

#include <QAccessible>
#include <QClipboard>
#include <QFrame>
#include <QTableView>

#include <algorithm>
#include <vector>

// What stands beside the scope: the search, kept views, the list of members, a second scope, a forgiving session.

namespace corvane {
namespace {
TEST_F(DeskTest, WhatIsFoundIsCentredAndFlashed)
{
    const QImage before = Picture(m_radar);
    Choose(m_radar, "find1");
    QWidget* const find = WaitFor("Find");
    EXPECT_TRUE(m_radar->isEnabled()) << "nothing is taken over";
    auto& part = In<QLineEdit>(find, "Part");
    const QString wanted = QString::fromStdString(m_state.Area.AreaVors.back().Ident);
    QTest::keyClicks(&part, wanted.toLower());
    EXPECT_TRUE(In<QListWidget>(find, "Results").item(0)->text().contains(wanted));
    QTest::keyClick(&part, Qt::Key_Return);
    EXPECT_NE(Scope(m_radar).findChild<ScopeFlash*>(), nullptr);
    EXPECT_TRUE(WaitUntil([&] { return Scope(m_radar).findChild<ScopeFlash*>() == nullptr; }));
    EXPECT_NE(Picture(m_radar), before);
    Choose(m_radar, "preferences_op1");
    EXPECT_EQ(Find("Find"), nullptr);
    Find("Form10")->close();
}

TEST_F(DeskTest, ViewsAreKeptForEachAreaAcrossStarts)
{
    const auto zoom = [&] { return In<QLabel>(m_radar, "Label7").text(); };
    const auto press = [&](Qt::Key key, Qt::KeyboardModifiers held) {
        BringUp(m_radar);
        QTest::keyClick(m_radar, key, held);
    };
    Click(m_radar, "Command5");
    const QString kept = zoom();
    press(Qt::Key_3, Qt::ControlModifier | Qt::ShiftModifier);
    Click(m_radar, "Command5");
    Click(m_radar, "Command5");
    press(Qt::Key_3, Qt::ControlModifier);
    EXPECT_EQ(zoom(), kept);
    Click(m_radar, "Command5");
    StartOverInRadar();
    press(Qt::Key_4, Qt::ControlModifier);
    EXPECT_NE(zoom(), kept) << "none is kept there";
    press(Qt::Key_3, Qt::ControlModifier);
    EXPECT_EQ(zoom(), kept);
}

TEST_F(DeskTest, TheTrafficListIsTheScopeInWords)
{
    ASSERT_TRUE(WaitUntil([&] {
        const auto players = m_state.Players.Players();
        return players.size() > 4 && players[1].Latitude != 0 && players[2].Latitude != 0;
    }));
    for (const char* timer : {"Timer1", "Timer2"})
        In<QTimer>(m_radar, timer).stop();
    const auto pilot = [&]() -> PlayerRecord& { return m_state.Players.Players()[1]; };
    Choose(m_radar, "show_traffic1");
    QWidget* const list = WaitFor("Traffic");
    auto& table = In<QTableView>(list, "Members");
    EXPECT_EQ(static_cast<std::size_t>(table.model()->rowCount()), m_state.Players.PlayerCount() - 1);
    const QString name = QString::fromStdString(pilot().Name);
    QTest::keyClicks(&In<QLineEdit>(list, "Filter"), name.toLower());
    ASSERT_EQ(table.model()->rowCount(), 1);
    EXPECT_TRUE(table.model()->index(0, 0).data(Qt::AccessibleTextRole).toString().startsWith(name + ", "));
    auto* const row = QAccessible::queryAccessibleInterface(&table)->tableInterface()->cellAt(0, 0);
    EXPECT_TRUE(row->text(QAccessible::Name).contains("altitude")) << row->text(QAccessible::Name).toStdString();

    BringUp(list);
    table.setFocus();
    table.setCurrentIndex(table.model()->index(0, 0));
    QTest::keyClick(&table, Qt::Key_F2); // the destination, as the callsign cannot be edited
    auto* const editor = table.findChild<QLineEdit*>();
    ASSERT_NE(editor, nullptr);
    QTest::keyClicks(editor, "KP");
    m_state.Players.Append("Newcomer", 4711, PilotRole);
    ++pilot().AltitudeFt;
    Fire(m_radar, "TrafficTimer");
    QTest::keyClicks(editor, "DX");
    QTest::keyClick(editor, Qt::Key_Return);
    EXPECT_TRUE(WaitUntil([&] { return pilot().DestinationIcao == "KPDX"; })) << "what is typed outlives refreshes";
    EXPECT_EQ(In<QLabel>(list, "Status").text(), name + ": saved");
    EXPECT_EQ(table.currentIndex().data().toString(), "KPDX");
    const QImage before = Picture(m_radar);
    QTest::keyClick(&table, Qt::Key_Return);
    EXPECT_NE(Picture(m_radar), before) << "centred";
    In<QPushButton>(list, "Copy").click();
    EXPECT_TRUE(QApplication::clipboard()->text().startsWith("Callsign,Type,"));
    EXPECT_TRUE(QApplication::clipboard()->text().contains("\n\"" + name + "\","));
    Choose(m_radar, "preferences_op1");
    EXPECT_FALSE(list->isEnabled()) << "as little as the radar";
    Find("Form10")->close();
    BringUp(list);
    QTest::keyClick(list, Qt::Key_Escape);
    EXPECT_FALSE(list->isVisible());
}

TEST_F(DeskTest, TheSecondScopeHasAViewOfItsOwnOverTheSameTargets)
{
    ASSERT_TRUE(WaitUntil([&] {
        const auto players = m_state.Players.Players();
        return players.size() > 1 && players[1].Latitude != 0;
    }));
    for (const char* timer : {"Timer1", "Timer2"})
        In<QTimer>(m_radar, timer).stop();
    Scope(m_radar).repaint();
    const QImage first = Picture(m_radar);
    const std::vector<PlayerRecord> players(m_state.Players.Players().begin(), m_state.Players.Players().end());
    Choose(m_radar, "second_scope1");
    QWidget* const second = WaitFor("SecondScope");
    const auto shown = [&] { return In<ScopeWidget>(second, "Picture2").grab().toImage(); };
    EXPECT_EQ(In<QLabel>(second, "Zoom2").text(), In<QLabel>(m_radar, "Label7").text()) << "begins where the first is";
    const QImage opened = shown();
    Click(second, "ZoomIn2");
    QTest::keyClick(second, Qt::Key_Left);
    Fire(second, "SecondTimer");
    EXPECT_NE(shown(), opened);
    EXPECT_EQ(Picture(m_radar), first) << "nothing happens to the first";
    EXPECT_TRUE(std::ranges::equal(m_state.Players.Players(), players));

    const QImage before = shown();
    m_state.Flags.ShowVors = !m_state.Flags.ShowVors;
    for (PlayerRecord& player : m_state.Players.Players())
        player.Latitude = 0;
    Fire(second, "SecondTimer");
    const QImage followed = shown();
    EXPECT_NE(followed, before) << "follows targets and preferences";
    Choose(m_radar, "appearance_op1");
    In<QComboBox>(WaitFor("AppearanceForm"), "Colours").setCurrentIndex(static_cast<int>(ColourScheme::Safe));
    Fire(second, "SecondTimer");
    EXPECT_NE(shown(), followed) << "and the appearance";
    Find("AppearanceForm")->close();
    Choose(m_radar, "preferences_op1");
    EXPECT_FALSE(second->isEnabled());
    Find("Form10")->close();
    EXPECT_TRUE(second->isEnabled());
    Click(m_radar, "Command3");
    EXPECT_TRUE(WaitUntilGone("SecondScope")) << "closes with the radar";
}

TEST_F(DeskTest, MalformedMessagesEndTheSessionUnlessTheyAreForgiven)
{
    const auto send = [&] {
        Member other(m_network);
        other.Join(m_state.Session.SessionGuid, "Other");
        other.SendBytes(m_state.Session.OwnPlayerId, Bytes{1, 2, 3});
    };
    Choose(m_radar, "forgive_op1");
    send();
    auto& text = In<QLabel>(m_radar, "Label10");
    EXPECT_TRUE(WaitUntil([&] { return text.text().contains("1 malformed message passed over"); }));
    EXPECT_FALSE(In<QFrame>(m_radar, "HealthBar").isHidden());
    StartOverInRadar();
    EXPECT_TRUE(In<QAction>(m_radar, "forgive_op1").isChecked()) << "remembered";
    Choose(m_radar, "forgive_op1");
    send();
    EXPECT_TRUE(WaitUntilGone("Form1"));
}
} // namespace
} // namespace corvane
