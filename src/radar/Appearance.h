#pragma once

#include "radar/DisplayOptions.h"

#include <cstdint>
#include <string>

namespace corvane {
/// How scope and windows look, beside what the scope shows. A new one is the look that they have always had.
struct Appearance {
    ColourScheme Colours = ColourScheme::Classic; ///< of a display that has no colours of its own
    std::string ScopeFont;                        ///< a family's name, UTF-8; empty: the scope's own
    std::int32_t ScopeTextPx = 11;                ///< ScopeTextSizes
    std::int32_t LineWidth = 1;                   ///< LineWidths; times as wide
    std::string WindowFont;                       ///< a family's name, UTF-8; empty: the desktop's
    std::int32_t WindowTextPt = 0;                ///< WindowTextSizes; 0: the desktop's
    std::int32_t InterfacePercent = 100;          ///< InterfaceScales; from the next start on
    bool operator==(const Appearance&) const = default;
};

/// The values that something takes, both ends included.
struct AppearanceRange {
    std::int32_t Lowest = 0;
    std::int32_t Highest = 0;

    /// The value, or the nearest that is taken.
    [[nodiscard]] std::int32_t Hold(double value) const noexcept;
};
inline constexpr AppearanceRange ScopeTextSizes{8, 40};
inline constexpr AppearanceRange LineWidths{1, 6};
inline constexpr AppearanceRange WindowTextSizes{6, 40};
inline constexpr AppearanceRange InterfaceScales{100, 400};

/// The display as it is drawn: colours of its own count before the appearance's.
DisplayOptions InAppearance(DisplayOptions display, const Appearance& appearance) noexcept;
} // namespace corvane
