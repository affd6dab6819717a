#include "radar/windows/ScopeWidget.h"
#include "tests/app/windows/ProgramFixture.h"

#include <QApplication>
#include <QCheckBox>
#include <QEventLoop>

#include <algorithm>

// Windows that work in the radar's place: what they take, and that every way out of them gives it back.

namespace corvane {
namespace {
using testing::HasSubstr;
using testing::StartsWith;

class TakeOverTest : public ProgramTest {
protected:
    void SetUp() override
    {
        ProgramTest::SetUp();
        m_radar = StartInRadar();
    }
    /// The eight things: the window, the scope, four buttons and two timers.
    void ExpectTaken(bool taken, const std::string& by)
    {
        EXPECT_EQ(m_radar->isEnabled(), !taken) << by;
        EXPECT_EQ(Scope(m_radar).isEnabled(), !taken) << by;
        for (const char* button : {"Command2", "Command3", "Command5", "Command6"})
            EXPECT_EQ(In<QPushButton>(m_radar, button).isEnabled(), !taken) << by << ' ' << button;
        for (const char* timer : {"Timer2", "Timer4"})
            EXPECT_EQ(In<QTimer>(m_radar, timer).isActive(), !taken) << by << ' ' << timer;
        for (const char* timer : {"Timer1", "Timer3"})
            EXPECT_TRUE(In<QTimer>(m_radar, timer).isActive()) << by << ": the session goes on";
    }
    /// A shortcut of the window. X may give the keyboard to the radar late, when the window before this one is gone.
    static void PressEscape(QWidget* window)
    {
        EXPECT_TRUE(WaitUntil([&] {
            window->activateWindow();
            return QApplication::activeWindow() == window;
        }));
        QTest::keyClick(window, Qt::Key_Escape);
    }
    /// Picks the first pilot whose position has arrived; the practice pilots report within seconds.
    PlayerRecord& PickPilot(QWidget* editor)
    {
        auto& pilots = In<QComboBox>(editor, "Combo1");
        pilots.setFocus();
        QTest::keyClick(&pilots, Qt::Key_Down);
        const std::string name = pilots.currentText().toStdString();
        for (PlayerRecord& player : m_state.Players.Players())
            if (player.Name == name)
                return player;
        ADD_FAILURE() << "no pilot is listed";
        return m_state.Players.Players().front();
    }
    bool PilotsHaveReported()
    {
        return WaitUntil([&] {
            const auto players = m_state.Players.Players();
            return players.size() > 3 &&
                   std::all_of(players.begin() + 1, players.end(), [](const PlayerRecord& player) {
                       return player.Role != PilotRole || player.Latitude != 0;
                   });
        });
    }

    QWidget* m_radar = nullptr;
};

TEST_F(TakeOverTest, EveryWayOutGivesTheRadarBack)
{
    struct Way {
        const char* MenuEntry;
        const char* Window;
        const char* Out; ///< a button; "frame" or "Esc"
    };
    for (const Way& way : {Way{"about_program1", "Form7", "Command1"},
                           {"about_program1", "Form7", "frame"},
                           {"about_program1", "Form7", "Esc"},
                           {"preferences_op1", "Form10", "Command1"},
                           {"preferences_op1", "Form10", "frame"},
                           {"preferences_op1", "Form10", "Esc"},
                           {"show_airpts_list1", "Form9", "frame"},
                           {"show_airpts_list1", "Form9", "Esc"},
                           {"edit_players1", "Form11", "frame"},
                           {"edit_players1", "Form11", "Esc"},
                           {"load_all_db_files", "Form5", "Command2"},
                           {"load_all_db_files", "Form5", "frame"}}) {
        const std::string name = std::string(way.Window) + " by " + way.Out;
        Choose(m_radar, way.MenuEntry);
        QWidget* const window = Find(way.Window);
        ASSERT_NE(window, nullptr) << name;
        EXPECT_TRUE(QTest::qWaitForWindowActive(window)) << name << ": in front, with the keyboard";
        ExpectTaken(true, name);
        m_radar->close();
        EXPECT_TRUE(m_radar->isVisible()) << name << ": the radar cannot be closed under it";
        if (window->objectName() == "Form5")
            WaitForLists();
        if (std::string_view(way.Out) == "frame")
            window->close();
        else if (std::string_view(way.Out) == "Esc")
            PressEscape(window);
        else
            Click(window, way.Out);
        EXPECT_EQ(Find(way.Window), nullptr) << name;
        ExpectTaken(false, name);
    }
}

/// As from a menu bar that the desktop shows outside of the window.
TEST_F(TakeOverTest, MenuActionsOfATakenRadarDoNothing)
{
    m_dialogs.File = m_folder.Path() / "taken.cvr";
    m_shown.ConfirmAnswer = true;
    Choose(m_radar, "about_program1");
    QWidget* const about = Find("Form7");
    Click(Find("Form6"), "Command2");
    for (QAction* action : m_radar->findChildren<QAction*>())
        action->trigger();
    EXPECT_TRUE(about->isVisible());
    for (const char* window : {"Form5", "Form6", "Form9", "Form10", "Form11"})
        EXPECT_EQ(Find(window), nullptr) << window;
    EXPECT_FALSE(m_recorder.IsRecording());
    EXPECT_TRUE(m_state.Session.RadarOpen);
    WaitUntil([&] { return m_state.Players.PlayerCount() > 3; }); // ticks of the pump show what can be recorded
    Choose(m_radar, "record_session1");
    EXPECT_FALSE(m_recorder.IsRecording());
    about->close();
    Choose(m_radar, "record_session1");
    EXPECT_TRUE(m_recorder.IsRecording()) << "given back";
}

TEST_F(TakeOverTest, CenteringOnAnAirportGivesBackAndMovesTheView)
{
    QTest::keyClick(&Scope(m_radar), Qt::Key_Left);
    const QImage away = Picture(m_radar);
    Choose(m_radar, "show_airpts_list1");
    QWidget* const list = Find("Form9");
    Click(list, "Command1");
    EXPECT_TRUE(list->isVisible()) << "nothing picked";
    auto& airports = In<QComboBox>(list, "Combo1");
    airports.setCurrentIndex(airports.findText("KSEA", Qt::MatchStartsWith));
    Click(list, "Command1");
    ExpectTaken(false, "centred");
    EXPECT_NE(Picture(m_radar), away);
}

TEST_F(TakeOverTest, AnAirportsInfoIsShownByNameAndByIdentifier)
{
    Choose(m_radar, "show_airpts_list1");
    QWidget* const list = Find("Form9");
    auto& airports = In<QComboBox>(list, "Combo1");
    const auto show = [&](const char* entry, Qt::MatchFlag match) {
        airports.setCurrentIndex(airports.findText(entry, match));
        Click(list, "Command2");
        EXPECT_THAT(m_shown.Last(), StartsWith("Airport Name: "));
        EXPECT_THAT(m_shown.Last(), HasSubstr("\r\nICAO_ID: KSEA\r\n"));
        EXPECT_THAT(m_shown.Last(), HasSubstr(" ft\r\nClearance Name: "));
    };
    show("KSEA - ", Qt::MatchStartsWith);
    QTest::mouseClick(&In<QAbstractButton>(list, "Option1"), Qt::LeftButton);
    EXPECT_EQ(airports.currentIndex(), -1) << "another list, nothing selected";
    show(" - KSEA", Qt::MatchEndsWith);
    const std::size_t boxes = m_shown.Texts.size();
    airports.setEditText("KSEA");
    Click(list, "Command2");
    airports.setFocus();
    airports.lineEdit()->selectAll();
    QTest::keyClicks(&airports, airports.itemText(0).toLower());
    QTest::keyClick(QApplication::activePopupWidget(), Qt::Key_Escape);
    for (const Qt::Key left : {Qt::Key_Return, Qt::Key_Tab}) {
        QTest::keyClick(&airports, left);
        Click(list, "Command2");
    }
    EXPECT_EQ(m_shown.Texts.size(), boxes) << "typed text is no selection, not even an entry's in other letters";
    EXPECT_TRUE(list->isVisible());
}

TEST_F(TakeOverTest, AFlightPlanIsSavedAndShownAgain)
{
    ASSERT_TRUE(PilotsHaveReported());
    Choose(m_radar, "edit_players1");
    QWidget* editor = Find("Form11");
    EXPECT_EQ(In<QLineEdit>(editor, "Text1").text(), "-None-");
    const PlayerRecord& pilot = PickPilot(editor);
    EXPECT_EQ(In<QLineEdit>(editor, "Text1").text().toStdString(), pilot.Name);
    In<QLineEdit>(editor, "Text4").setText(" KPDX ");
    In<QLineEdit>(editor, "Text5").setText("KSEA");
    In<QComboBox>(editor, "Combo2").setCurrentText("IFR");
    In<QLineEdit>(editor, "Text6").setText("900 ft");
    Click(editor, "Command1");
    EXPECT_EQ(pilot.DepartureIcao, "KPDX");
    EXPECT_EQ(pilot.DestinationIcao, "KSEA");
    EXPECT_EQ(pilot.FlightRules, 1);
    EXPECT_EQ(pilot.CruiseAltitude, 900);
    EXPECT_EQ(In<QLineEdit>(editor, "Text4").text(), "-None-");
    editor->close();

    Choose(m_radar, "edit_players1");
    editor = Find("Form11");
    PickPilot(editor);
    EXPECT_EQ(In<QLineEdit>(editor, "Text4").text(), "KPDX");
    EXPECT_EQ(In<QComboBox>(editor, "Combo2").currentText(), "IFR");
    EXPECT_EQ(In<QLineEdit>(editor, "Text6").text(), "900");
    In<QLineEdit>(editor, "Text4").setText("EDDF");
    Click(editor, "Command2");
    EXPECT_EQ(pilot.DepartureIcao, "KPDX") << "not saved";
    Click(editor, "Command3");
    ExpectTaken(false, "centred on the pilot");
}

TEST_F(TakeOverTest, HiddenLayersLeaveThePictureWhenThePreferencesClose)
{
    const auto ringPixels = [&] {
        const QImage picture = Picture(m_radar);
        int count = 0;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                count += picture.pixel(x, y) == qRgb(128, 128, 128) ? 1 : 0;
        return count;
    };
    EXPECT_GT(ringPixels(), 100);
    Choose(m_radar, "preferences_op1");
    QWidget* const preferences = Find("Form10");
    for (const char* box : {"Check7", "Check6"}) // rings and outlines, which share the colour
        QTest::keyClick(&In<QCheckBox>(preferences, box), Qt::Key_Space);
    EXPECT_FALSE(m_state.Flags.ShowRangeRings);
    EXPECT_FALSE(m_state.Flags.ShowWorldMap);
    EXPECT_GT(ringPixels(), 100) << "not before the window closes";
    preferences->close();
    EXPECT_LT(ringPixels(), 5) << "at most an edge of a button's text";
    Click(m_radar, "Command3");
    ASSERT_TRUE(Locate(WaitFor("Form2"), "Practice"));
    Click(Find("Form2"), "Command2");
    WaitFor("Form1");
    EXPECT_TRUE(m_state.Flags.ShowRangeRings) << "a new radar shows everything";
}

TEST_F(TakeOverTest, AnotherAreaIsLoadedWhileTheSessionGoesOn)
{
    const PlayerId own = m_state.Session.OwnPlayerId;
    const QImage before = Picture(m_radar);
    Choose(m_radar, "load_all_db_files");
    QWidget* const chooser = WaitForLists();
    const QString entry = AnotherAirport(chooser);
    PickAirport(chooser, entry);
    ASSERT_TRUE(WaitUntilGone("Form5"));
    ExpectTaken(false, "loaded");
    EXPECT_EQ(m_radar->windowTitle(), "Corvane v3.0 - " + entry);
    EXPECT_NE(Picture(m_radar), before);
    EXPECT_EQ(m_state.Session.OwnPlayerId, own);
    EXPECT_TRUE(m_state.Session.RadarOpen);
}

TEST_F(TakeOverTest, ALoadThatIsLeftKeepsTheArea)
{
    const std::string area = m_state.Area.AreaName;
    Choose(m_radar, "load_all_db_files");
    QWidget* const chooser = WaitForLists();
    QObject::connect(&In<QLineEdit>(chooser, "Text2"), &QLineEdit::textChanged, chooser,
                     [&] { QTimer::singleShot(0, chooser, [&] { chooser->close(); }); });
    PickAirport(chooser, AnotherAirport(chooser));
    ASSERT_TRUE(WaitUntilGone("Form5"));
    EXPECT_EQ(m_state.Area.AreaName, area);
    EXPECT_THAT(m_shown.Texts, testing::Not(testing::Contains(HasSubstr("not loaded"))));
    ExpectTaken(false, "left");
}

/// Loses the session while a message box of another window stands.
TEST_F(TakeOverTest, TheSessionMayEndUnderAnyWindow)
{
    const auto loseTheSession = [&] {
        QEventLoop behindTheBox;
        m_state.Session.SessionPeer = *m_provider.DirectPlayCreate(); // one that is in no session
        QTimer watch;
        QObject::connect(&watch, &QTimer::timeout, &behindTheBox, [&] {
            if (Find("Form2") != nullptr)
                QTimer::singleShot(200, &behindTheBox, &QEventLoop::quit); // long enough to delete what is closed
        });
        watch.start(20);
        behindTheBox.exec();
    };
    const auto rejoin = [&] {
        QWidget* const connection = WaitFor("Form2");
        EXPECT_EQ(Find("Form1"), nullptr);
        ASSERT_TRUE(Locate(connection, "Practice"));
        Click(connection, "Command2");
        m_radar = WaitFor("Form1");
        ASSERT_NE(m_radar, nullptr);
        ASSERT_TRUE(PilotsHaveReported());
        ExpectTaken(false, "rejoined");
    };
    ASSERT_TRUE(PilotsHaveReported());

    Choose(m_radar, "edit_players1");
    QWidget* const editor = Find("Form11");
    PickPilot(editor);
    In<QLineEdit>(editor, "Text6").setText("99999");
    m_shown.WhileOpen = loseTheSession;
    Click(editor, "Command1"); // out of range: refused in a box
    rejoin();

    Choose(m_radar, "show_airpts_list1");
    QWidget* const list = Find("Form9");
    In<QComboBox>(list, "Combo1").setCurrentIndex(0);
    m_shown.WhileOpen = loseTheSession;
    Click(list, "Command2");
    rejoin();

    m_shown.WhileOpen = loseTheSession;
    Choose(m_radar, "create_new_db1"); // and cancelled
    rejoin();

    Choose(m_radar, "load_all_db_files");
    loseTheSession();
    EXPECT_EQ(Find("Form5"), nullptr);
    rejoin();
}
} // namespace
} // namespace corvane
