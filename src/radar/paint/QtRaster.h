#pragma once

#include "radar/PixelImage.h"
#include "radar/ScopeFont.h"

#include <QFont>
#include <QImage>

namespace corvane {
/// The scope's typeface: small, hinted, with characters at whole pixels, the same size on every display.
/// scale  of the screen: pixels to one of the scope
QFont ScopeQFont(double scale = 1);

/// Draws the characters of a font once. Needs a running QGuiApplication.
ScopeFont MakeScopeFont(const QFont& font);

/// An image's pixels as a QImage that borrows them: valid until the image is resized or destroyed.
QImage BorrowAsQImage(const PixelImage& image);
} // namespace corvane
