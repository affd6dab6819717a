#pragma once

#include <Qt>

class QWidget;

namespace corvane {
class DeskSettings;

/// The radar in the middle of the screen, with the chat beside it, or, where the screen has no room for both, in its
/// lower right corner.
void PlaceRadar(QWidget& radar, QWidget& chat);

/// Puts both where they stood last, as far as that is known. Returns whether the chat was hidden.
bool RestorePlaces(const DeskSettings& desk, QWidget& radar, QWidget& chat);
void KeepPlaces(DeskSettings& desk, const QWidget& radar, const QWidget& chat);

/// A window that is used beside the radar: where it stood when it was closed last, or in a corner of the radar, so that
/// what the radar is centred on can be seen. Where it is closed is remembered, also of one that is made later.
/// key  of the settings, a literal
void PlaceInCorner(DeskSettings& desk, const char* key, const QWidget& radar, QWidget& window, Qt::Corner corner);

/// A window that works in the radar's place: above its middle, or beside that where the chat would be under it.
void PlaceOver(const QWidget& radar, const QWidget& chat, QWidget& window);
} // namespace corvane
