#include "radar/RadarDisplay.h"

#include "core/Geodesy.h"
#include "radar/MapLayers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <utility>

namespace corvane {
namespace {
/// A display over an area with one airport and one pilot, without a session behind it.
class RadarDisplayTest : public testing::Test {
protected:
    void SetUp() override
    {
        m_area.AreaCenter = {47.5, -122.5};
        AirspaceRecord sector;
        sector.Kind = HighSectorKind;
        sector.ComName = "SEATTLE FIR";
        sector.CenterLat = 47.5;
        sector.CenterLon = -122.5;
        m_area.AreaAirspaces.push_back(sector);
        m_players.Append("N1", 7, PilotRole);
        m_players.Players()[0].Latitude = 48.5;
        m_players.Players()[0].Longitude = -120;
        m_display.Load(400, 300);
        m_display.Draw();
    }

    [[nodiscard]] std::uint32_t PixelAt(double lat, double lon) const
    {
        const ScopePoint at = ProjectToScope(m_display.View(), {lat, lon});
        return m_display.Picture().At(at.X, at.Y);
    }

    static constexpr std::uint32_t Green = 0xff00c000;
    static constexpr std::uint32_t Yellow = 0xffffff00;
    static constexpr ScopePoint Center{200, 150};

    AreaModel m_area;
    std::unique_ptr<MagVarGrid> m_variation = std::make_unique<MagVarGrid>();
    DisplayFlags m_flags;
    SessionState m_session;
    PlayerTable m_players;
    ScopeFont m_font;
    RadarDisplay m_display{{m_area, *m_variation, m_flags, m_session, m_players}, m_font};
};

TEST_F(RadarDisplayTest, StartsAtLevel14OverTheArea)
{
    EXPECT_EQ(m_display.View().ZoomLevel, 14);
    EXPECT_EQ(m_display.View().ViewCenter.Lon, -122.5);
    EXPECT_EQ(PixelAt(48.5, -120), Green);
}

TEST_F(RadarDisplayTest, RefreshMovesTargetsOverTheSameMap)
{
    m_players.Players()[0].Longitude = -121;
    EXPECT_EQ(PixelAt(48.5, -121), PixelImage::Black) << "nothing moves before the refresh";
    m_display.RefreshTargets();
    EXPECT_TRUE(m_display.IsStale());
    m_display.Draw();
    EXPECT_FALSE(m_display.IsStale());
    EXPECT_EQ(PixelAt(48.5, -121), Green);
    EXPECT_NE(PixelAt(48.5, -120), Green);
}

TEST_F(RadarDisplayTest, MeasuringIsNotWipedByTheRefresh)
{
    m_display.PressLeft(Center);
    m_display.MovePointerTo({300, 150});
    m_display.Draw();
    const auto isLine = [this] {
        for (std::int32_t x = 240; x < 260; ++x)
            if (m_display.Picture().At(x, 150) == Green)
                return true;
        return false;
    };
    EXPECT_TRUE(isLine());
    m_display.RefreshTargets();
    EXPECT_FALSE(m_display.IsStale());
    m_display.ReleaseLeft({300, 150});
    EXPECT_TRUE(isLine()) << "the last line stays until the next refresh";
    m_display.RefreshTargets();
    m_display.Draw();
    EXPECT_FALSE(isLine());
}

TEST_F(RadarDisplayTest, RestingPointerSelectsAndTheRefreshHighlights)
{
    m_display.MovePointerTo(Center);
    ASSERT_TRUE(m_display.TickPanel());
    EXPECT_EQ(m_display.PanelText().substr(0, 30), "AIRSPACE FULLNAME: SEATTLE FIR");
    EXPECT_EQ(m_display.PanelPlace(50, 20), (PixelBox{Center.X, Center.Y, Center.X + 50, Center.Y + 20}));
    EXPECT_FALSE(m_display.TickPanel()) << "frozen until the pointer moves";
    m_display.RefreshTargets();
    m_display.Draw();
    EXPECT_EQ(PixelAt(47.5, -122.5), Yellow);
    m_display.MovePointerTo({10, 10});
    EXPECT_EQ(m_display.PanelText(), "");
    m_display.RefreshTargets();
    m_display.Draw();
    EXPECT_NE(PixelAt(47.5, -122.5), Yellow);
}

TEST_F(RadarDisplayTest, ManyRequestsCostOneDrawingOfTheNewestView)
{
    const ScopeView before = m_display.View();
    for (int i = 0; i < 10; ++i)
        m_display.ZoomIn();
    for (int i = 0; i < 10; ++i)
        m_display.ZoomOut();
    m_display.Pan(3, 0);
    EXPECT_TRUE(m_display.IsStale());
    m_display.Draw();
    EXPECT_FALSE(m_display.IsStale());
    const double width = before.ViewEast - before.ViewWest;
    EXPECT_NEAR(m_display.View().ViewCenter.Lon, -122.5 + 0.3 * width, 1e-9);
    m_display.CenterOnArea();
    EXPECT_NEAR(m_display.View().ViewWest, before.ViewWest, 1e-9);
}

TEST_F(RadarDisplayTest, PanningStopsAtThePolesAndGoesOnAcross180)
{
    for (int i = 0; i < 400; ++i)
        m_display.Pan(-10, 10);
    EXPECT_EQ(m_display.View().ViewCenter.Lat, 90);
    EXPECT_GT(m_display.View().ViewCenter.Lon, -180);
    EXPECT_LE(m_display.View().ViewCenter.Lon, 180);
    m_display.Draw();
}

TEST_F(RadarDisplayTest, ShowsTheNearestPlaceAndLevelThatThereAre)
{
    struct Case {
        LatLon Wanted;
        double WantedLevel;
        LatLon Shown;
        int Level;
    };
    constexpr double Endless = std::numeric_limits<double>::infinity();
    for (const Case& c : {Case{{47, -122}, 20, {47, -122}, 20}, Case{{47, 190}, 14.5, {47, -170}, 14},
                          Case{{91, 0}, 1e300, {90, 0}, 55}, Case{{-Endless, 0}, -Endless, {-90, 0}, 1}}) {
        m_display.Show(c.Wanted, c.WantedLevel);
        EXPECT_EQ(m_display.View().ViewCenter, c.Shown) << c.WantedLevel;
        EXPECT_EQ(m_display.View().ZoomLevel, c.Level) << c.WantedLevel;
    }
}

TEST_F(RadarDisplayTest, AnotherAreaAndAnotherSizeAreFollowed)
{
    m_area.AreaCenter = {-33.9, 179.5};
    m_display.AreaChanged();
    EXPECT_GT(m_display.View().ViewWest, m_display.View().ViewEast) << "a view across 180 degrees";
    m_display.Resize(500, 200);
    m_display.Draw();
    EXPECT_EQ(m_display.Picture().Width(), 500);
    EXPECT_EQ(m_display.View().ViewCenter.Lon, 179.5);
    m_display.Resize(0, 0);
    m_display.Draw(); // a minimised window
}

TEST_F(RadarDisplayTest, TheClassicDisplayIsUntouchedByTheOthers)
{
    const auto refreshed = [this](double now) {
        m_display.RefreshTargets(now);
        m_display.Draw();
        return m_display.Picture();
    };
    const PixelImage classic = refreshed(0);
    const ScopeView view = m_display.View();
    DisplayOptions options = ModernDisplay();
    options.Colours = ColourScheme::Contrast;
    m_display.SetDisplay(options, 1);
    m_display.Report(m_players.Players()[0], 1);
    EXPECT_NE(refreshed(2), classic);
    EXPECT_NE(m_display.View(), view);
    m_display.ZoomIn();
    m_display.ZoomOut();
    m_display.SetDisplay(ClassicDisplay(), 3);
    m_display.RedrawAll();
    m_display.Draw();
    EXPECT_EQ(refreshed(4), classic);
    EXPECT_EQ(m_display.View().ZoomLevel, view.ZoomLevel);
    EXPECT_NEAR(m_display.View().ViewNorth, view.ViewNorth, 1e-9);

    const MapScene scene{m_area, *m_variation, m_display.View(), m_flags};
    PixelImage image(400, 300); // the classic layers alone, in their order
    RasterSurface onto(image, m_font);
    image.Fill(PixelImage::Black);
    DrawMapLayers(onto, scene);
    TargetMemory memory;
    DrawTargets(onto, scene, {m_players.Players(), m_session.OwnPlayerId, ""}, false, memory);
    EXPECT_EQ(image, m_display.Picture());
}

TEST_F(RadarDisplayTest, TrueProportionsMakeAMileAsLongUpAsAcross)
{
    DisplayOptions options;
    options.TrueProportions = true;
    const double span = m_display.View().ViewEast - m_display.View().ViewWest;
    m_display.SetDisplay(options, 0);
    for (const auto& [width, height] : {std::pair{400, 300}, std::pair{1000, 200}, std::pair{300, 900}}) {
        m_display.Resize(width, height);
        const ScopeView& view = m_display.View();
        EXPECT_NEAR(view.ViewEast - view.ViewWest, span, 1e-9) << "the level keeps its meaning east to west";
        const double across = width / (span * 60 * std::cos(47.5 * RadiansPerDegree));
        EXPECT_NEAR(height / ((view.ViewNorth - view.ViewSouth) * 60), across, 1e-9);
        EXPECT_NEAR((view.ViewNorth + view.ViewSouth) / 2, 47.5, 1e-9);
    }
    for (int i = 0; i < 400; ++i)
        m_display.Pan(0, 10);
    m_display.Draw(); // at the pole
    EXPECT_GT(m_display.View().ViewNorth, m_display.View().ViewSouth);
}
} // namespace
} // namespace corvane
