#include "radar/paint/QtRaster.h"

#include "core/Rounding.h"
#include "core/Text.h"

#include <QFontMetrics>
#include <QPainter>

namespace corvane {
QFont ScopeQFont(double scale)
{
    return ScopeQFont({}, 0, scale);
}

QFont ScopeQFont(const QString& family, std::int32_t sizePx, double scale)
{
    constexpr int UsualSizePx = 11; // 8 points at 96 dots per inch
    QFont font(family.isEmpty() ? QStringLiteral("DejaVu Sans") : family);
    font.setPixelSize(RoundTo<std::int32_t>((sizePx == 0 ? UsualSizePx : sizePx) * scale));
    font.setStyleHint(QFont::SansSerif);
    font.setHintingPreference(QFont::PreferFullHinting);
    font.setKerning(false);
    // no ligatures and no coloured fringes: a text is its characters side by side
    font.setStyleStrategy(QFont::StyleStrategy(QFont::PreferNoShaping | QFont::NoSubpixelAntialias));
    return font;
}

static QImage CharacterPicture(const QFont& font, const QString& character, int margin)
{
    const QFontMetrics metrics(font);
    QImage picture(2 * margin + metrics.maxWidth(), 2 * margin + metrics.height(), QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(margin, margin + metrics.ascent(), character);
    return picture;
}

static QRect InkedPart(const QImage& picture)
{
    QRect inked;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (qAlpha(picture.pixel(x, y)) != 0)
                inked |= QRect(x, y, 1, 1);
    return inked;
}

static void AddGlyph(ScopeFont& scopeFont, ScopeFont::Glyph& glyph, const QFont& font, const QString& character)
{
    const QFontMetrics metrics(font);
    const int margin = metrics.height();
    const QImage picture = CharacterPicture(font, character, margin);
    const QRect inked = InkedPart(picture);
    glyph.Advance = metrics.horizontalAdvance(character);
    glyph.Left = inked.left() - margin;
    glyph.Top = inked.top() - margin;
    glyph.Width = inked.width();
    glyph.Height = inked.height();
    glyph.Start = static_cast<std::uint32_t>(scopeFont.Inked.size());
    for (int y = inked.top(); y <= inked.bottom(); ++y)
        for (int x = inked.left(); x <= inked.right(); ++x)
            if (const int coverage = qAlpha(picture.pixel(x, y)); coverage != 0)
                scopeFont.Inked.push_back({static_cast<std::uint16_t>(x - inked.left()),
                                           static_cast<std::uint16_t>(y - inked.top()),
                                           static_cast<std::uint8_t>(coverage)});
    glyph.Count = static_cast<std::uint32_t>(scopeFont.Inked.size()) - glyph.Start;
}

ScopeFont MakeScopeFont(const QFont& font)
{
    constexpr int FirstPrintable = 32;
    ScopeFont scopeFont;
    scopeFont.LineHeight = QFontMetrics(font).height();
    for (int code = FirstPrintable; code < 256; ++code) {
        const std::string byte(1, static_cast<char>(code));
        AddGlyph(scopeFont, scopeFont.Glyphs[static_cast<std::size_t>(code)], font,
                 QString::fromStdString(Windows1252ToUtf8(byte)));
    }
    return scopeFont;
}

ScopeFont MakeScopeFont(const Appearance& look, double scale)
{
    return MakeScopeFont(ScopeQFont(QString::fromStdString(look.ScopeFont), look.ScopeTextPx, scale));
}

QImage BorrowAsQImage(const PixelImage& image)
{
    constexpr qsizetype BytesPerPixel = 4;
    return {reinterpret_cast<const uchar*>(image.Row(0)), image.Width(), image.Height(), image.Width() * BytesPerPixel,
            QImage::Format_RGB32};
}
} // namespace corvane
