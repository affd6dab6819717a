#include "radar/ColourSchemes.h"
#include "tests/app/windows/RadarWindowFixture.h"

#include <QMenu>

// What the radar's window does with single targets in the modern display.

namespace corvane {
namespace {
constexpr ScopePoint First{300, 300};
constexpr ScopePoint Second{560, 360};
constexpr QRgb White = qRgb(255, 255, 255);

class TargetControlsTest : public RadarWindowTest {
protected:
    void SetUp() override
    {
        RadarWindowTest::SetUp();
        m_view = WithTrueProportions(m_view);
        for (const std::size_t number : {0U, 1U}) {
            Pilot(number).AltitudeFt = number == 0 ? 3000 : 9000;
            Pilot(number).MagHeading = 90;
            Pilot(number).GroundSpeedKt = 200;
        }
        PutPilotAt(First, 0);
        PutPilotAt(Second, 1);
        Choose(m_radar, "modern_display_op1");
        Refresh();
    }
    void Refresh() { Fire(m_radar, "Timer2"); }
    void Drag(ScopePoint from, ScopePoint to)
    {
        QTest::mousePress(&Scope(m_radar), Qt::LeftButton, {}, {from.X, from.Y});
        MovePointerTo({to.X, to.Y}, Qt::LeftButton);
        QTest::mouseRelease(&Scope(m_radar), Qt::LeftButton, {}, {to.X, to.Y});
    }
    void Click(ScopePoint at) { QTest::mouseClick(&Scope(m_radar), Qt::LeftButton, {}, {at.X, at.Y}); }
    bool IsSelected(ScopePoint target) { return PixelAt(target) == Selected; }
    /// Whether text stands in the place of a target's block, its lower left corner so far from the target.
    bool HasBlockAt(ScopePoint target, ScopePoint corner)
    {
        const QRect box(target.X + corner.X, target.Y + corner.Y - 26, 40, 26);
        return ShowsIn(box, Green) || ShowsIn(box, Selected);
    }
    /// Opens the menu of what is at a pixel; null where there is none.
    QMenu* OpenMenu(ScopePoint at)
    {
        QTest::mouseClick(&Scope(m_radar), Qt::RightButton, {}, {at.X, at.Y});
        return qobject_cast<QMenu*>(Find("TargetMenu"));
    }
    void ChooseInMenu(ScopePoint at, const char* entry)
    {
        QMenu* const menu = OpenMenu(at);
        ASSERT_NE(menu, nullptr) << entry;
        for (QAction* const action : menu->actions())
            if (action->text() == entry)
                action->trigger();
        menu->close();
    }

    static constexpr QRgb Selected = qRgb(160, 255, 160);
};

TEST_F(TargetControlsTest, AClickAndTabSelectAndEscLetsGo)
{
    EXPECT_FALSE(IsSelected(First));
    Click(First);
    EXPECT_TRUE(IsSelected(First));
    Scope(m_radar).setFocus();
    Press(Qt::Key_Tab);
    EXPECT_TRUE(IsSelected(Second));
    EXPECT_FALSE(IsSelected(First));
    Press(Qt::Key_Tab);
    EXPECT_TRUE(IsSelected(First)) << "after the last the first";
    Press(Qt::Key_Escape);
    EXPECT_FALSE(IsSelected(First));
    Click({Second.X + 25, Second.Y - 30}); // its block
    EXPECT_TRUE(IsSelected(Second));

    Choose(m_radar, "modern_display_op1");
    Refresh();
    Click(First);
    EXPECT_FALSE(IsSelected(First)) << "the classic display selects nothing";
}

TEST_F(TargetControlsTest, ABlockGoesWhereTheHandPutsItAndBack)
{
    const ScopePoint usual{21, -21};
    const ScopePoint away{21 + 60, -21 + 120};
    const ScopePoint block{First.X + 30, First.Y - 30};
    ASSERT_TRUE(HasBlockAt(First, usual));
    Drag(block, {block.X + 60, block.Y + 120});
    EXPECT_FALSE(HasBlockAt(First, usual));
    EXPECT_TRUE(HasBlockAt(First, away));
    Refresh();
    EXPECT_TRUE(HasBlockAt(First, away)) << "it stays";
    QTest::mouseDClick(&Scope(m_radar), Qt::LeftButton, {}, {block.X + 60, block.Y + 120});
    EXPECT_TRUE(HasBlockAt(First, usual));

    Click(First);
    Scope(m_radar).setFocus();
    QTest::keyClick(m_radar->focusWidget(), Qt::Key_1);
    EXPECT_TRUE(HasBlockAt(First, usual)) << "a digit of the key pad only";
    QTest::keyClick(m_radar->focusWidget(), Qt::Key_2, Qt::KeypadModifier);
    EXPECT_FALSE(HasBlockAt(First, usual));
    EXPECT_TRUE(HasBlockAt(First, {-20, 30 + 26})) << "below the target";
    QTest::keyClick(m_radar->focusWidget(), Qt::Key_5, Qt::KeypadModifier);
    EXPECT_TRUE(HasBlockAt(First, usual));
}

TEST_F(TargetControlsTest, ADragBetweenTargetsLeavesALineAndOneElsewhereMeasures)
{
    const auto whiteOnTheWay = [&] {
        const QImage picture = Picture(m_radar);
        int lit = 0;
        for (int step = 40; step < 100; ++step)
            lit += ColorAt(picture, First.X + step * (Second.X - First.X) / 200,
                           First.Y + step * (Second.Y - First.Y) / 200) == White
                       ? 1
                       : 0;
        return lit;
    };
    Drag(First, {200, 500});
    Refresh();
    EXPECT_EQ(whiteOnTheWay(), 0);
    Drag(First, Second);
    EXPECT_TRUE(In<QTimer>(m_radar, "Timer2").isActive()) << "targets move on meanwhile";
    Refresh();
    EXPECT_GT(whiteOnTheWay(), 10) << "the line is dotted";
    EXPECT_FALSE(IsSelected(First)) << "a drag selects nobody";
    Scope(m_radar).setFocus();
    Press(Qt::Key_Escape);
    EXPECT_EQ(whiteOnTheWay(), 0);
}

TEST_F(TargetControlsTest, TheMenuOfATargetCentresFollowsWritesAndOpensItsProperties)
{
    const ScopePoint middle{m_view.ScopeWidthPx / 2, m_view.ScopeHeightPx / 2};
    const QString name = QString::fromStdString(Pilot(0).Name);
    const auto isAt = [&](ScopePoint at) { return PixelAt(at) == Green && PixelAt({at.X - 4, at.Y}) == Green; };

    ChooseInMenu(First, "&Write to it...");
    EXPECT_EQ(In<QLineEdit>(Find("Form6"), "Text1").text(), name + ' ');
    ChooseInMenu(First, "&Player properties...");
    QWidget* const properties = WaitFor("Form11");
    ASSERT_NE(properties, nullptr);
    EXPECT_EQ(In<QComboBox>(properties, "Combo1").currentText(), name);
    properties->close();
    EXPECT_TRUE(WaitUntil([&] { return m_radar->isEnabled(); }));

    ChooseInMenu(First, "&Centre on it");
    EXPECT_TRUE(isAt(middle));
    ChooseInMenu(middle, "&Follow it");
    Pilot(0).Longitude += 0.5;
    Refresh();
    EXPECT_TRUE(isAt(middle)) << "wherever it goes";
    ChooseInMenu(middle, "&Follow it");
    Pilot(0).Longitude += 0.5;
    Refresh();
    EXPECT_FALSE(isAt(middle));
    const QImage before = Picture(m_radar);
    EXPECT_EQ(OpenMenu({middle.X + 200, middle.Y + 200}), nullptr);
    EXPECT_NE(Picture(m_radar), before) << "elsewhere a right click centres as ever";
}

TEST_F(TargetControlsTest, TheNoteTellsTheLatestUntilPointerOrTargetGo)
{
    const auto& note = In<QLabel>(m_radar, "Label1");
    const auto pointAt = [&](ScopePoint at) {
        MovePointerTo({at.X, at.Y});
        Fire(m_radar, "Timer4");
    };
    pointAt(First);
    ASSERT_TRUE(note.isVisible());
    EXPECT_TRUE(note.text().contains("3000")) << note.text().toStdString();
    EXPECT_FALSE(note.geometry().intersects({First.X + 21, First.Y - 21 - 26, 60, 26})) << "covers its own block";
    Pilot(0).AltitudeFt = 3400;
    Refresh();
    EXPECT_TRUE(note.text().contains("3400")) << "anew each second";
    PutPilotAt({First.X + 40, First.Y}, 0);
    Refresh();
    EXPECT_FALSE(note.isVisible()) << "the target has moved away";
    pointAt(Second);
    ASSERT_TRUE(note.isVisible());
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(&Scope(m_radar), &leave);
    EXPECT_FALSE(note.isVisible()) << "the pointer has left the scope";
}

TEST_F(TargetControlsTest, SpaceAndAClickAcknowledgeAnAlert)
{
    const QRect corner(600, 0, 400, 30); // of the list, and later its second line
    const auto list = [&] { return Picture(m_radar).copy(); };
    PutPilotAt({First.X + 2, First.Y}, 1);
    Pilot(1).AltitudeFt = Pilot(0).AltitudeFt;
    Choose(m_radar, "modern_display_op1");
    Choose(m_radar, "modern_display_op1"); // reported where they are now
    for (int refresh = 0; refresh < 2; ++refresh)
        Refresh();
    const QRgb violation = qRgb(255, 80, 64);
    ASSERT_TRUE(ShowsIn(corner, violation)) << "true at two refreshes";
    const QImage unread = list();
    Scope(m_radar).setFocus();
    Press(Qt::Key_Space);
    const QImage read = list();
    EXPECT_NE(read, unread) << "the ! has gone";
    EXPECT_TRUE(ShowsIn(corner, violation)) << "but not the alert";
    Press(Qt::Key_Space);
    EXPECT_EQ(list(), read) << "there is no other";
}
} // namespace
} // namespace corvane
