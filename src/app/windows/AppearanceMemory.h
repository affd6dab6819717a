#pragma once

#include "radar/Appearance.h"

namespace corvane {
class DeskSettings;

/// The appearance that the user chose; what is missing or makes no sense is as delivered.
Appearance ReadAppearance(const DeskSettings& desk);
void KeepAppearance(DeskSettings& desk, const Appearance& look);

/// Gives the windows their font, or the desktop's.
void ApplyWindowFont(const Appearance& look);
/// Gives the whole interface the scale that the user chose, unless the environment has one (QT_SCALE_FACTOR). To be
/// called before there is an application.
void ApplyInterfaceScale();
} // namespace corvane
