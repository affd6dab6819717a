#include "tests/app/windows/RadarWindowFixture.h"

#include <QApplication>
#include <QDialog>
#include <QTextEdit>
#include <QWheelEvent>

#include <algorithm>
#include <functional>

// The radar window as a person works it, down to the pixels that the scope shows.

namespace corvane {
namespace {
constexpr QRgb White = qRgb(255, 255, 255);
constexpr QRgb Yellow = qRgb(255, 255, 0);

TEST_F(RadarWindowTest, ATargetHasItsColourAtItsPlace)
{
    const ScopePoint at{600, 300};
    PutPilotAt(at);
    Fire(m_radar, "Timer2");
    for (const ScopePoint offset : {ScopePoint{0, 0}, {-4, 0}, {0, 5}, {10, -10}, {21, -21}}) // dot and leader line
        EXPECT_EQ(PixelAt({at.X + offset.X, at.Y + offset.Y}), Green) << offset.X << ' ' << offset.Y;
    EXPECT_NE(PixelAt({at.X - 7, at.Y - 7}), Green);
    EXPECT_TRUE(ShowsIn({at.X + 21, at.Y - 47, 150, 26}, Green)) << "the data block";
    PutPilotAt({200, 500});
    Fire(m_radar, "Timer2");
    EXPECT_NE(PixelAt(at), Green) << "the map's snapshot is back";
}

TEST_F(RadarWindowTest, DraggingMeasures)
{
    ScopeWidget& scope = Scope(m_radar);
    const QPoint from(300, 300);
    const QPoint to(420, 300);
    const auto dots = [&] { // three pixels, three pixels' gap
        const QImage picture = Picture(m_radar);
        int lit = 0;
        for (int step = 0; step <= to.x() - from.x(); ++step)
            lit += step % 6 < 3 && ColorAt(picture, from.x() + step, from.y()) == Green ? 1 : 0;
        return lit;
    };
    const QRect readout(360, 300, 200, 20);
    MovePointerTo(from);
    QTest::mousePress(&scope, Qt::LeftButton, {}, from);
    EXPECT_FALSE(In<QTimer>(m_radar, "Timer2").isActive()) << "the refresh would wipe the line";
    MovePointerTo(to, Qt::LeftButton);
    EXPECT_EQ(dots(), 61);
    EXPECT_TRUE(ShowsIn(readout, White));
    QTest::mouseRelease(&scope, Qt::LeftButton, {}, to);
    EXPECT_TRUE(In<QTimer>(m_radar, "Timer2").isActive());
    EXPECT_EQ(dots(), 61) << "until the next refresh";
    Fire(m_radar, "Timer2");
    EXPECT_LT(dots(), 10);
    EXPECT_FALSE(ShowsIn(readout, White));

    QTest::mousePress(&scope, Qt::LeftButton, {}, from);
    MovePointerTo(to, Qt::LeftButton);
    scope.setFocus();
    Press(Qt::Key_Escape);
    EXPECT_TRUE(In<QTimer>(m_radar, "Timer2").isActive());
    Fire(m_radar, "Timer2");
    EXPECT_FALSE(ShowsIn(readout, White));
    QTest::mouseRelease(&scope, Qt::LeftButton, {}, to);

    QTest::mousePress(&scope, Qt::LeftButton, {}, from);
    Choose(m_radar, "preferences_op1"); // by its key, with the button still down
    Find("Form10")->close();
    MovePointerTo(to + QPoint(5, 5), Qt::LeftButton);
    EXPECT_FALSE(ShowsIn(readout, White)) << "the release was never heard, and yet nothing is being measured";
}

TEST_F(RadarWindowTest, MeasuringEndsWhereTheReleaseIsNotHeard)
{
    const QPoint from(300, 300);
    const QPoint to(420, 300);
    QDialog box(m_radar);
    box.setWindowModality(Qt::ApplicationModal);
    struct Way {
        const char* Name;
        std::function<void()> Happens;
    };
    for (const Way& way : {Way{"a box blocks the window", [&] { box.show(); }},
                           {"the window is hidden", [&] { m_radar->hide(); }},
                           {"the pointer moves without the button", [&] { MovePointerTo(to); }}}) {
        QTest::mousePress(&Scope(m_radar), Qt::LeftButton, {}, from);
        MovePointerTo(to, Qt::LeftButton);
        EXPECT_FALSE(In<QTimer>(m_radar, "Timer2").isActive()) << way.Name;
        way.Happens();
        QCoreApplication::processEvents();
        EXPECT_TRUE(In<QTimer>(m_radar, "Timer2").isActive()) << way.Name << ": targets move again";
        box.hide();
        m_radar->show();
        Fire(m_radar, "Timer2");
        MovePointerTo(to + QPoint(5, 5), Qt::LeftButton);
        EXPECT_FALSE(ShowsIn({360, 300, 200, 20}, White)) << way.Name;
    }
}

TEST_F(RadarWindowTest, TheAirspaceUnderThePointerIsHighlighted)
{
    const auto& airspaces = m_state.Area.AreaAirspaces;
    const auto tracon = std::find_if(airspaces.rbegin(), airspaces.rend(), [&](const AirspaceRecord& airspace) {
        return airspace.Kind == TraconKind && VisiblePixel(m_view, {airspace.CenterLat, airspace.CenterLon});
    });
    ASSERT_NE(tracon, airspaces.rend());
    const ScopePoint center = ProjectToScope(m_view, {tracon->CenterLat, tracon->CenterLon});
    EXPECT_NE(PixelAt(center), Yellow);
    MovePointerTo({center.X + 3, center.Y});
    Fire(m_radar, "Timer4");
    const auto& panel = In<QLabel>(m_radar, "Label1");
    EXPECT_TRUE(panel.isVisible());
    EXPECT_TRUE(panel.text().startsWith("AIRSPACE FULLNAME: ")) << panel.text().toStdString();
    Fire(m_radar, "Timer2");
    EXPECT_EQ(PixelAt(center), Yellow);
    MovePointerTo({center.X + 40, center.Y + 60});
    EXPECT_FALSE(panel.isVisible());
    Fire(m_radar, "Timer2");
    EXPECT_NE(PixelAt(center), Yellow);
}

TEST_F(RadarWindowTest, ThePanelStaysOnTheScope)
{
    const QRect scope = Scope(m_radar).rect();
    for (const ScopePoint corner : {ScopePoint{4, 300},
                                    {scope.right() - 3, 60},
                                    {scope.right() - 3, scope.bottom() - 3},
                                    {500, scope.bottom() - 3}}) {
        PutPilotAt(corner);
        MovePointerTo({corner.X, corner.Y});
        Fire(m_radar, "Timer4");
        const auto& panel = In<QLabel>(m_radar, "Label1");
        ASSERT_TRUE(panel.isVisible()) << corner.X << ' ' << corner.Y;
        EXPECT_TRUE(panel.text().startsWith("PLAYER: "));
        EXPECT_TRUE(scope.contains(panel.geometry())) << corner.X << ' ' << corner.Y;
    }
}

TEST_F(RadarWindowTest, KeysButtonsAndWheelMoveTheView)
{
    Scope(m_radar).setFocus();
    Press(Qt::Key_Plus);
    Press(Qt::Key_Equal); // the same key without Shift
    Press(Qt::Key_Minus);
    EXPECT_EQ(Zoom(), "x15");
    Click(m_radar, "Command5");
    EXPECT_EQ(Zoom(), "x16");
    Click(m_radar, "Command6");
    const auto turn = [&](int eighthsOfADegree) {
        QWheelEvent event({200, 200}, {200, 200}, {}, {0, eighthsOfADegree}, Qt::NoButton, {}, Qt::NoScrollPhase,
                          false);
        QCoreApplication::sendEvent(&Scope(m_radar), &event);
    };
    turn(240);
    EXPECT_EQ(Zoom(), "x17");
    turn(-60); // half a notch, as fine wheels turn
    EXPECT_EQ(Zoom(), "x17");
    turn(-60);
    turn(-240);
    EXPECT_EQ(Zoom(), "x14");
    const QImage start = Picture(m_radar);

    Click(m_radar, "Command5"); // and the keys go on reaching the scope
    Press(Qt::Key_Minus);
    EXPECT_EQ(Picture(m_radar), start) << "zoomed at the view's centre";
    for (const auto& [there, back] : {std::pair(Qt::Key_Left, Qt::Key_Right), {Qt::Key_Up, Qt::Key_Down}}) {
        Press(there);
        const QImage moved = Picture(m_radar);
        EXPECT_NE(moved, start);
        Press(back);
        Press(back);
        EXPECT_NE(Picture(m_radar), moved);
        Press(Qt::Key_C);
        EXPECT_EQ(Picture(m_radar), start);
    }
    QTest::mouseClick(&Scope(m_radar), Qt::RightButton, {}, {700, 200});
    EXPECT_NE(Picture(m_radar), start);
    Click(m_radar, "Command2");
    EXPECT_EQ(Picture(m_radar), start);
}

TEST_F(RadarWindowTest, TheScopeFollowsTheWindow)
{
    m_radar->resize(700, 500);
    QCoreApplication::processEvents();
    EXPECT_EQ(Scope(m_radar).width(), 700);
    m_view = OpeningView(m_radar); // the same degrees over fewer pixels
    PutPilotAt({500, 250});
    Fire(m_radar, "Timer2");
    EXPECT_EQ(PixelAt({500, 250}), Green);
    m_radar->showMinimized();
    EXPECT_FALSE(In<QTimer>(m_radar, "Timer2").isActive());
    m_radar->showNormal();
    EXPECT_TRUE(In<QTimer>(m_radar, "Timer2").isActive());
}

TEST_F(RadarWindowTest, TheChatStaysAboveUntilItIsHidden)
{
    QWidget* const chat = Find("Form6");
    ASSERT_NE(chat, nullptr);
    EXPECT_EQ(In<QTimer>(chat, "Timer1").interval(), 3000);
    EXPECT_EQ(static_cast<std::size_t>(In<QListWidget>(chat, "List1").count()), m_state.Players.PlayerCount());
    auto& history = In<QTextEdit>(chat, "RichTextBox1");
    auto& line = In<QLineEdit>(chat, "Text1");
    EXPECT_EQ(history.toPlainText(), "[Corvane v3.0]");
    EXPECT_EQ(history.font().pointSizeF(), 8.5);
    EXPECT_EQ(line.text(), "[Write your message here]");
    line.setText("hello");
    QTest::keyClick(&line, Qt::Key_Return);
    line.setText("<b>again</b>");
    Click(chat, "Command1");
    EXPECT_EQ(line.text(), "");
    EXPECT_EQ(history.toPlainText(), "**ATC Controller: <b>again</b>\n**ATC Controller: hello\n[Corvane v3.0]");
    for (const bool byFrame : {false, true}) {
        byFrame ? static_cast<void>(chat->close()) : Click(chat, "Command2");
        EXPECT_FALSE(chat->isVisible());
        Fire(chat, "Timer1");
        EXPECT_FALSE(chat->isVisible()) << "only the menu brings it back";
        Choose(m_radar, "show_chat_win_op1");
        EXPECT_TRUE(chat->isVisible());
        EXPECT_TRUE(m_radar->isEnabled()) << "the chat takes nothing over";
    }
    EXPECT_TRUE(history.toPlainText().startsWith("**ATC Controller: <b>again"));
}
} // namespace
} // namespace corvane
