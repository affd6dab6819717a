#include "radar/RedrawCycle.h"

#include "radar/MapLayers.h"
#include "radar/RecordingSurface.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {
TEST(PixelImage, HoldsItsSizes)
{
    const PixelImage image(-5, 1 << 30);
    EXPECT_EQ(image.Width(), 0);
    EXPECT_EQ(image.Height(), PixelImage::LargestSide);
}

struct PaintedScope : testing::Test {
    AreaModel Area;
    MagVarGrid Grid;
    DisplayFlags Flags;
    ScopeView View = StartUpView(300, 200, {5, 5});
    ScopeFont Font; // without characters: nothing here depends on texts

    PaintedScope()
    {
        Area.AreaVors = {{"", "", 5, 5, "", 0}};
        Area.OutlinePoints = {{4, 4}, {6, 6}, {6, 4}, {0, 0}, {3, 3}};
        View.OutlineStep = 1;
    }
    [[nodiscard]] MapScene Scene() const { return {Area, Grid, View, Flags}; }
};

TEST_F(PaintedScope, TargetsComeAndGoOverTheMap)
{
    RedrawCycle painter(Font);
    painter.DrawMap(Scene());
    const PixelImage map = painter.Picture();
    EXPECT_EQ(map.At(150, 100), PixelImage::PixelOf({0, 0, 255}));
    painter.Scope().Circle({100, 100}, 5);
    EXPECT_NE(painter.Picture(), map);
    painter.RestoreMap();
    EXPECT_EQ(painter.Picture(), map);
    painter.Scope().Circle({100, 100}, 5);
    View = StartUpView(120, 90, {5, 5}); // the window was resized
    Area = {};
    Flags.ShowRangeRings = false;
    painter.DrawMap(Scene());
    EXPECT_EQ(painter.Picture(), PixelImage(120, 90));
}

TEST_F(PaintedScope, HasTheScreensPixels)
{
    RedrawCycle painter(Font);
    painter.SetScale(1.5);
    painter.DrawMap(Scene());
    EXPECT_EQ(painter.Picture().Width(), 450);
    EXPECT_EQ(painter.Picture().Height(), 300);
    EXPECT_EQ(painter.Picture().At(225, 150), PixelImage::PixelOf({0, 0, 255})) << "the station in the middle";
}

TEST_F(PaintedScope, ReplayPaintsTheSamePicture)
{
    RedrawCycle painter(Font);
    painter.DrawMap(Scene());
    RecordingSurface recorder;
    DrawMapLayers(recorder, Scene());
    PixelImage image(300, 200);
    RasterSurface surface(image, Font);
    recorder.Replay(surface);
    EXPECT_EQ(image, painter.Picture());
    EXPECT_NE(image, PixelImage(300, 200));
}
} // namespace
} // namespace corvane
