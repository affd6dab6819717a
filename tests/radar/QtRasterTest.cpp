#include "radar/paint/QtRaster.h"

#include "core/Text.h"
#include "radar/RasterSurface.h"
#include "radar/RecordingSurface.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QPainter>
#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <string>

namespace corvane {
namespace {
/// The application that fonts need; each case is a process of its own.
struct ScopeText : testing::Test {
    std::string Name = "scope";
    std::array<char*, 2> Arguments{Name.data(), nullptr};
    int ArgumentCount = 1;
    QGuiApplication Application{ArgumentCount, Arguments.data()};
    ScopeFont Font = MakeScopeFont(ScopeQFont());

    /// What Qt's own painter makes of a text.
    static QImage PaintedByQt(QSize size, ScopePoint topLeft, std::string_view text, QColor color, QRgb background)
    {
        QImage image(size, QImage::Format_RGB32);
        image.fill(background);
        QPainter painter(&image);
        painter.setFont(ScopeQFont());
        painter.setPen(color);
        painter.drawText(topLeft.X, topLeft.Y + QFontMetrics(ScopeQFont()).ascent(),
                         QString::fromStdString(Windows1252ToUtf8(text)));
        return image;
    }
};

TEST_F(ScopeText, IsWhatQtPaintsPixelForPixel)
{
    struct {
        std::string_view Text;
        ScopePoint TopLeft;
        Color Ink;
        QRgb Background;
    } const cases[] = {{"Seattle-Tacoma Intl - KSEA", {10, 5}, {255, 255, 255}, 0xff000000},
                       {"N123  Hdg: 90*  Alt: 4500ft", {3, 20}, {0, 192, 0}, 0xff305070},
                       {"Z\xfcrich \xc5ngstr\xf6m \x80 5", {0, 0}, {255, 255, 0}, 0xffffffff},
                       {"fi ffl AVAWA To, joy", {40, 3}, {1, 2, 3}, 0xff808080}, // no ligature, no kerning
                       {"across the left edge", {-31, 9}, {255, 255, 255}, 0xff000000},
                       {"across the right edge", {180, 33}, {255, 255, 255}, 0xff000000},
                       {"above", {5, -6}, {255, 255, 255}, 0xff000000}};
    for (const auto& c : cases) {
        PixelImage image(240, 40);
        image.Fill(c.Background);
        RasterSurface surface(image, Font);
        surface.State.PenColor = c.Ink;
        surface.TextOut(c.TopLeft, c.Text);
        EXPECT_EQ(BorrowAsQImage(image),
                  PaintedByQt({240, 40}, c.TopLeft, c.Text, QColor(c.Ink.R, c.Ink.G, c.Ink.B), c.Background))
            << c.Text;
    }
}

TEST_F(ScopeText, IsAsWideAsItIsLaidOutWithoutAFont)
{
    PixelImage image(10, 10);
    const RasterSurface painted(image, Font);
    const RecordingSurface recorded;
    for (int code = 32; code < 256; ++code) {
        const std::string text(1, static_cast<char>(code));
        EXPECT_EQ(painted.TextWidth(text), recorded.TextWidth(text)) << code;
    }
    EXPECT_EQ(painted.TextHeight(), recorded.TextHeight());
}

TEST_F(ScopeText, StandsRightOfAndBelowItsPixel)
{
    PixelImage image(100, 60);
    RasterSurface surface(image, Font);
    surface.TextOut({20, 30}, "HIH");
    std::int32_t left = 100, top = 60, right = 0, bottom = 0;
    for (std::int32_t y = 0; y < 60; ++y)
        for (std::int32_t x = 0; x < 100; ++x)
            if (image.At(x, y) != PixelImage::Black) {
                left = std::min(left, x);
                top = std::min(top, y);
                right = std::max(right, x);
                bottom = std::max(bottom, y);
            }
    EXPECT_GE(left, 20);
    EXPECT_LE(left, 22);
    EXPECT_GE(top, 30);
    EXPECT_LT(bottom, 30 + surface.TextHeight());
    EXPECT_GT(right, 30);
}

TEST_F(ScopeText, FarOffTheImageIsLeftOut)
{
    constexpr std::int32_t Highest = std::numeric_limits<std::int32_t>::max();
    constexpr std::int32_t Lowest = std::numeric_limits<std::int32_t>::min();
    PixelImage image(50, 20);
    RasterSurface surface(image, Font);
    const std::string text(70000, 'W');
    for (const ScopePoint at : {ScopePoint{Lowest, 5}, {Highest, 5}, {5, Lowest}, {5, Highest}, {51, 5}, {5, 20}})
        surface.TextOut(at, text);
    surface.TextOut({5, 5}, std::string("\0\n\x7f", 3)); // no pictures for control characters
    EXPECT_EQ(image, PixelImage(50, 20));
}
} // namespace
} // namespace corvane
