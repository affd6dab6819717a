// What the pointer and the keys do in the modern display, through the display that the window works with.

#include "radar/InformationPanel.h"
#include "radar/LiveLines.h"
#include "radar/RadarDisplay.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace corvane {
namespace {
/// Three pilots at 120 kt on the scope of an empty area: N1 in the middle, N2 east and N3 west of it.
class TargetHandTest : public testing::Test {
protected:
    void SetUp() override
    {
        for (ScopeFont::Glyph& glyph : m_font.Glyphs) // blocks have a size, and no ink
            glyph.Advance = 7;
        m_font.LineHeight = 13;
        m_area.AreaCenter = {47.5, -122.5};
        m_display.Load(800, 600);
        m_display.SetDisplay(ModernDisplay(), 0);
        for (const double east : {0.0, 3.0, -3.0})
            AddPilot(east);
        Refresh(0);
    }
    void AddPilot(double east)
    {
        const auto id = static_cast<std::int32_t>(m_players.PlayerCount()) + 7;
        m_players.Append("N" + std::to_string(m_players.PlayerCount() + 1), id, PilotRole);
        PlayerRecord& pilot = m_players.Players().back();
        pilot.Latitude = 47.5;
        pilot.Longitude = -122.5 + east;
        pilot.AltitudeFt = 9000;
        pilot.GroundSpeedKt = 120;
    }
    void Refresh(double now)
    {
        for (const PlayerRecord& player : m_players.Players())
            m_display.Report(player, now);
        m_display.RefreshTargets(now);
        m_display.Draw();
    }
    [[nodiscard]] ScopePoint DotOf(std::size_t slot) const
    {
        const PlayerRecord& player = m_players.Players()[slot];
        return ProjectToScope(m_display.View(), {player.Latitude, player.Longitude});
    }
    [[nodiscard]] const TargetMark& MarkOf(std::size_t slot) { return m_display.Targets().Marks().Targets.at(slot); }
    [[nodiscard]] ScopePoint BlockOf(std::size_t slot)
    {
        const PixelBox& box = MarkOf(slot).Place.Box;
        return {box.Left + 2, box.Top + 2};
    }
    void Drag(ScopePoint from, ScopePoint to)
    {
        m_display.PressLeft(from);
        m_display.MovePointerTo(to);
        m_display.Draw();
        m_display.ReleaseLeft(to);
        m_display.Draw();
    }
    void Click(ScopePoint at) { Drag(at, {at.X + 2, at.Y - 1}); } // as hands click
    [[nodiscard]] std::string Selected() const { return m_display.Selected() ? m_display.Selected()->Name : ""; }

    AreaModel m_area;
    std::unique_ptr<MagVarGrid> m_variation = std::make_unique<MagVarGrid>();
    DisplayFlags m_flags;
    SessionState m_session;
    PlayerTable m_players;
    ScopeFont m_font;
    RadarDisplay m_display{{m_area, *m_variation, m_flags, m_session, m_players}, m_font};
};

TEST_F(TargetHandTest, AClickSelectsTargetOrBlockAndTabGoesOn)
{
    Click({5, 5});
    EXPECT_EQ(Selected(), "") << "there is nothing";
    Click(DotOf(1));
    EXPECT_EQ(Selected(), "N2");
    EXPECT_TRUE(MarkOf(1).Selected);
    EXPECT_FALSE(m_display.Measuring());
    Click(BlockOf(0));
    EXPECT_EQ(Selected(), "N1");
    for (const char* name : {"N2", "N3", "N1"}) {
        m_display.SelectNext();
        m_display.Draw();
        EXPECT_EQ(Selected(), name);
    }
    m_display.LetGo();
    EXPECT_EQ(Selected(), "");
    m_players.Empty();
    Click(DotOf(0).X > 0 ? ScopePoint{400, 300} : ScopePoint{});
    EXPECT_EQ(Selected(), "") << "who has left is not selected";
}

TEST_F(TargetHandTest, ADragMeasuresFromTheTargetsMiddleWhileTheRefreshGoesOn)
{
    const ScopePoint dot = DotOf(0);
    m_display.PressLeft({dot.X + 3, dot.Y});
    m_display.MovePointerTo({dot.X + 5, dot.Y});
    EXPECT_FALSE(m_display.Measuring()) << "a trembling hand";
    m_display.MovePointerTo({dot.X + 60, dot.Y + 60});
    EXPECT_TRUE(m_display.Measuring());
    m_players.Players()[1].Longitude += 0.2;
    Refresh(1);
    EXPECT_EQ(MarkOf(1).At, DotOf(1)) << "alerts do not wait for a measurement";
    EXPECT_TRUE(m_display.Measuring());
    m_display.ReleaseLeft({dot.X + 60, dot.Y + 60});
    EXPECT_FALSE(m_display.Measuring());
    EXPECT_EQ(Selected(), "");
    m_display.PressLeft(dot);
    m_display.CancelLeft();
    m_display.MovePointerTo({dot.X + 60, dot.Y + 60});
    EXPECT_FALSE(m_display.Measuring()) << "a button that was let go unheard";
}

TEST_F(TargetHandTest, ABlockStaysWhereItIsDraggedOrTurnedUntilGivenBack)
{
    const PixelBox usual = MarkOf(0).Place.Box;
    const ScopePoint grip = BlockOf(0);
    Drag(grip, {grip.X - 90, grip.Y + 70});
    EXPECT_EQ(MarkOf(0).Place.Box.Left, usual.Left - 90);
    EXPECT_EQ(MarkOf(0).Place.Box.Top, usual.Top + 70);
    EXPECT_FALSE(m_display.Measuring());
    m_display.DoubleClick(BlockOf(0));
    m_display.Draw();
    EXPECT_EQ(MarkOf(0).Place.Box, usual);
    Click(DotOf(0));
    m_display.TurnBlock(1); // down to the left
    m_display.Draw();
    EXPECT_LE(MarkOf(0).Place.Box.Right, DotOf(0).X);
    EXPECT_GE(MarkOf(0).Place.Box.Top, DotOf(0).Y);
    m_display.TurnBlock(5);
    m_display.Draw();
    EXPECT_EQ(MarkOf(0).Place.Box, usual);
}

TEST_F(TargetHandTest, ADragFromTargetToTargetLeavesOneLineUntilEscape)
{
    const auto lit = [&] { // of the line's pixels between N1 and N2, beyond dot and vector
        int count = 0;
        for (std::int32_t x = DotOf(0).X + 20; x < DotOf(1).X - 20; ++x)
            count += m_display.Picture().At(x, DotOf(0).Y) == 0xffffffff ? 1 : 0;
        return count;
    };
    Drag(DotOf(0), DotOf(1));
    Refresh(1);
    const int once = lit();
    EXPECT_GT(once, (DotOf(1).X - DotOf(0).X) / 4);
    Drag(DotOf(1), DotOf(0)); // the other way: the same line
    Drag(DotOf(0), {DotOf(0).X + 6, DotOf(0).Y});
    Drag(BlockOf(2), DotOf(1));
    Refresh(2);
    EXPECT_NEAR(lit(), once, 3) << "its dots begin at the other end";
    m_display.LetGo();
    Refresh(3);
    EXPECT_EQ(lit(), 0);
}

TEST_F(TargetHandTest, AClickInTheListOrAKeyAcknowledgesAlerts)
{
    for (PlayerRecord& player : m_players.Players())
        player.Longitude = -122.5; // three pairs at one place
    Refresh(1);
    Refresh(2);
    const auto open = [&] {
        const auto alerts = m_display.Targets().Monitor().Alerts();
        return std::ranges::count(alerts, false, &Alert::Acknowledged);
    };
    ASSERT_EQ(open(), 3);
    const PixelBox line = m_display.Targets().Marks().Alerts.at(1).Box;
    m_display.PressLeft({line.Left + 2, line.Top + 2});
    m_display.MovePointerTo({line.Left + 80, line.Top + 80});
    EXPECT_FALSE(m_display.Measuring());
    m_display.ReleaseLeft({line.Left + 80, line.Top + 80});
    EXPECT_EQ(open(), 2);
    m_display.AcknowledgeNext();
    m_display.AcknowledgeNext();
    m_display.AcknowledgeNext();
    EXPECT_EQ(open(), 0);
}

TEST_F(TargetHandTest, FollowingKeepsTheMemberInTheMiddleUntilTheViewIsMoved)
{
    m_display.Follow(MemberKey{8, "N2"});
    const auto offCentre = [&] { return std::abs(DotOf(1).X - 400); };
    EXPECT_LE(offCentre(), 8);
    m_players.Players()[1].Longitude += 0.3;
    Refresh(1);
    EXPECT_LE(offCentre(), 8);
    m_display.ZoomIn();
    EXPECT_TRUE(m_display.Followed());
    m_display.Pan(1, 0);
    EXPECT_FALSE(m_display.Followed());
    m_display.Follow(MemberKey{8, "gone"});
    EXPECT_FALSE(m_display.Followed());
}

TEST_F(TargetHandTest, TheInformationPanelKeepsUpWithItsTarget)
{
    m_display.MovePointerTo(DotOf(0));
    ASSERT_TRUE(m_display.TickPanel());
    EXPECT_THAT(m_display.PanelText(), testing::HasSubstr("9000 ft"));
    m_players.Players()[0].AltitudeFt = 9100;
    Refresh(1);
    EXPECT_THAT(m_display.PanelText(), testing::HasSubstr("9100 ft"));
    const PixelBox place = m_display.PanelPlace(150, 100);
    EXPECT_EQ(SharedArea(place, MarkOf(0).Place.Box), 0) << "it keeps off the block of its target";
    m_players.Players()[0].Longitude += 0.3;
    Refresh(2);
    EXPECT_EQ(m_display.PanelText(), "") << "its target has moved away";
    m_display.MovePointerTo(DotOf(0));
    ASSERT_TRUE(m_display.TickPanel());
    m_display.PointerLeaves();
    EXPECT_EQ(m_display.PanelText(), "");
    EXPECT_FALSE(m_display.TickPanel()) << "the pointer is elsewhere";
}

TEST_F(TargetHandTest, TheClassicDisplayKnowsNothingOfIt)
{
    m_display.SetDisplay(ClassicDisplay(), 1);
    Refresh(1);
    EXPECT_FALSE(m_display.MemberAt(DotOf(0)));
    m_display.SelectNext();
    m_display.PressLeft(DotOf(0));
    EXPECT_TRUE(m_display.Measuring()) << "a press measures";
    m_display.ReleaseLeft(DotOf(0));
    EXPECT_EQ(Selected(), "");
    m_display.MovePointerTo(DotOf(0));
    ASSERT_TRUE(m_display.TickPanel());
    m_players.Players()[0].AltitudeFt = 9100;
    Refresh(2);
    EXPECT_THAT(m_display.PanelText(), testing::HasSubstr("9000 ft")) << "frozen until the pointer moves";
}

TrackState StateAt(double eastNm, double northNm, double course, std::int16_t kt)
{
    TrackState state;
    state.Last.Position = {northNm / 60, eastNm / 60};
    state.Last.GroundSpeedKt = kt;
    state.Course = course;
    return state;
}

TEST(LiveLine, TellsTheClosestPointWhileTheTwoClose)
{
    const auto grid = std::make_unique<MagVarGrid>();
    const TrackState eastbound = StateAt(0, 0, 90, 360);
    // 13 nm at 720 kt: 65 seconds. 1 nm to the left of it they pass.
    EXPECT_EQ(LiveLineText(eastbound, StateAt(13, 0, 270, 360), *grid), "13.0 nm  090*  closest 0.0 nm in 1:05");
    EXPECT_EQ(LiveLineText(eastbound, StateAt(0, 2, 270, 360), *grid), "2.0 nm  360*") << "abeam: it was closest";
    EXPECT_EQ(LiveLineText(eastbound, StateAt(10, 0, 90, 360), *grid), "10.0 nm  090*") << "the same way";
}

struct PanelCase {
    const char* Name;
    ScopePoint Pointer;
    PixelBox KeepOff;
    ScopePoint Corner;
};
class PanelPlacement : public testing::TestWithParam<PanelCase> {};
TEST_P(PanelPlacement, KeepsOffTheBlockAndInsideTheScope)
{
    const PixelBox place = PlacePanel(GetParam().Pointer, {100, 60}, {0, 0, 800, 600}, GetParam().KeepOff);
    EXPECT_EQ((ScopePoint{place.Left, place.Top}), GetParam().Corner);
    EXPECT_EQ((BlockSize{place.Width(), place.Height()}.Width), 100);
}
INSTANTIATE_TEST_SUITE_P(Panel, PanelPlacement,
                         testing::Values(PanelCase{"Free", {400, 300}, {}, {400, 300}},
                                         PanelCase{"AtTheEdge", {790, 590}, {}, {700, 540}},
                                         PanelCase{"BlockElsewhere", {400, 300}, {421, 250, 500, 280}, {400, 300}},
                                         PanelCase{"BlockBelow", {400, 300}, {421, 320, 500, 350}, {300, 300}},
                                         PanelCase{"BlockAllBelow", {400, 300}, {350, 320, 450, 350}, {400, 240}},
                                         PanelCase{"BlockAllAround", {400, 300}, {395, 280, 480, 350}, {300, 240}}),
                         [](const auto& row) { return std::string(row.param.Name); });
} // namespace
} // namespace corvane
