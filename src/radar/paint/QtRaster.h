#pragma once

#include "radar/Appearance.h"
#include "radar/PixelImage.h"
#include "radar/ScopeFont.h"

#include <QFont>
#include <QImage>

namespace corvane {
/// The scope's typeface: small, hinted, with characters at whole pixels, the same size on every display.
/// scale  of the screen: pixels to one of the scope
QFont ScopeQFont(double scale = 1);
/// Another family, or the same where it is empty, in another size: pixels of the scope, 0 for the usual one.
QFont ScopeQFont(const QString& family, std::int32_t sizePx, double scale);

/// Draws the characters of a font once. Needs a running QGuiApplication.
ScopeFont MakeScopeFont(const QFont& font);
/// The scope's font as the user chose it, on a screen of a scale.
ScopeFont MakeScopeFont(const Appearance& look, double scale);

/// An image's pixels as a QImage that borrows them: valid until the image is resized or destroyed.
QImage BorrowAsQImage(const PixelImage& image);
} // namespace corvane
