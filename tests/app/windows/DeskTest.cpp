#include "app/windows/RadarMemory.h"
#include "radar/windows/ScopeWidget.h"
#include "tests/app/windows/DeskFixture.h"

#include <QCheckBox>
#include <QFile>
#include <QFrame>
#include <QRegularExpression>
#include <QRubberBand>
#include <QWindow>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <numeric>
#include <random>
#include <vector>

// The desk around the scope: how windows stand to one another, and what is as it was yesterday.

namespace corvane {
namespace {
TEST_F(DeskTest, WindowsOverTheRadarBelongToItAndItPointsThemOut)
{
    EXPECT_EQ(m_chat->windowHandle()->transientParent(), m_radar->windowHandle());
    EXPECT_FALSE(m_chat->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_EQ(m_chat->windowType(), Qt::Dialog) << "as X11 has it";
    for (const auto& [entry, name] : InTheRadarsPlace) {
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

TEST_F(DeskTest, PlacesAreRememberedAndTheViewOnRequest)
{
    for (const bool remember : {false, true}) {
        m_radar->setGeometry(30, 60, 700, 500);
        m_chat->setGeometry(200, 220, 400, 260);
        EXPECT_TRUE(WaitUntil([&] { return m_radar->size() == QSize(700, 500); }));
        if (remember)
            Choose(m_radar, "remember_op1");
        Click(m_radar, "Command5");
        QTest::keyClick(&Scope(m_radar), Qt::Key_Up);
        const QString zoom = In<QLabel>(m_radar, "Label7").text();
        m_state.Flags.ShowVors = false;
        Click(m_chat, "Command2");
        StartOverInRadar();
        EXPECT_TRUE(WaitUntil([&] { return m_radar->size() == QSize(700, 500); }));
        EXPECT_TRUE(WaitUntil([&] { return m_chat->size() == QSize(400, 260); }));
        EXPECT_EQ(m_state.Flags.ShowVors, !remember);
        EXPECT_EQ(In<QLabel>(m_radar, "Label7").text() == zoom, remember);
        EXPECT_EQ(m_chat->isVisible(), !remember) << "a radar that opens opens the chat, too, by itself";
    }
}

TEST_F(DeskTest, WindowsBesideTheRadarKeepTheirPlaceWhenItCloses)
{
    constexpr int FramePx = 8; // which some desktops add to a window that comes again
    std::vector<QPoint> places;
    for (const auto& [entry, name] : BesideTheRadar) {
        Choose(m_radar, entry);
        places.push_back(QPoint(41, 41) + QPoint(10, 10) * static_cast<int>(places.size()));
        QWidget* const window = WaitFor(name);
        window->resize(window->size().boundedTo({600, 500})); // which fits on every screen
        window->move(places.back());
    }
    Click(m_radar, "Command3"); // the debrief stays, until the program ends
    WaitFor("Form2");
    StartOverInRadar();
    auto place = places.begin();
    for (const auto& [entry, name] : BesideTheRadar) {
        Choose(m_radar, entry);
        QWidget* const window = WaitFor(name);
        EXPECT_TRUE(WaitUntil([&] { return (window->pos() - *place).manhattanLength() <= FramePx; })) << name;
        ++place;
    }
}

TEST_F(DeskTest, ADamagedFileGivesTheDefaultsAndIsKept)
{
    m_radar->resize(700, 500);
    m_program.reset();
    m_desk.reset();
    std::vector<std::string> damages{"\x01\x02 nonsense\n[[[\n", std::string(2 << 20, 'x'), "[places]\nradar=\xC3",
                                     "[places]\nradar\n", std::string("a=b\0c", 5)};
    std::mt19937 random(18);
    for (int i = 0; i < 40; ++i) {
        std::string noise(512, '\0');
        std::generate(noise.begin(), noise.end(), [&] { return static_cast<char>(random()); });
        damages.push_back(noise);
    }
    for (const std::string& damage : damages) {
        std::ofstream(DeskFile().toStdString(), std::ios::binary) << damage;
        const DeskSettings desk(DeskFile());
        EXPECT_FALSE(desk.Note().isEmpty()) << ::testing::PrintToString(damage.substr(0, 512));
        EXPECT_TRUE(QFile::exists(DeskFile() + ".damaged"));
        EXPECT_FALSE(desk.Flag(RememberKey, false));
    }
    EXPECT_TRUE(DeskSettings(DeskFile()).Note().isEmpty()) << "once";
}

TEST_F(DeskTest, WhateverIsKeptCanBeReadAgain)
{
    const QString file = DeskFile() + ".own";
    const QStringList texts{QString::fromUtf8("M\xC3\xBCnchen \xE2\x9C\x88"),
                            "two\nlines = [x]\r\n",
                            "",
                            "@ByteArray(",
                            ";#\"\\%1",
                            QString(QChar(0x85)) + QChar(0x1B)};
    for (qsizetype i = 0; i < texts.size(); ++i)
        DeskSettings(file).Keep(QString("some key/%1").arg(i) + texts[1].left(3), texts[i] + "=");
    for (qsizetype i = 0; i < texts.size(); ++i) {
        const DeskSettings desk(file);
        EXPECT_TRUE(desk.Note().isEmpty()) << desk.Note().toStdString();
        QString oneLine = texts[i] + "=";
        oneLine.replace(QRegularExpression("[\\x00-\\x1F\\x80-\\x9F]"), " ");
        EXPECT_EQ(desk.Text(QString("some key/%1").arg(i) + texts[1].left(3)), oneLine);
    }
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
