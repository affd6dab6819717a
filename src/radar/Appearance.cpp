#include "radar/Appearance.h"

#include "core/Rounding.h"

#include <algorithm>
#include <cmath>

namespace corvane {
std::int32_t AppearanceRange::Hold(double value) const noexcept
{
    if (std::isnan(value))
        return Lowest;
    return RoundTo<std::int32_t>(std::clamp(value, static_cast<double>(Lowest), static_cast<double>(Highest)));
}

DisplayOptions InAppearance(DisplayOptions display, const Appearance& appearance) noexcept
{
    if (display.Colours == ColourScheme::Classic)
        display.Colours = appearance.Colours;
    return display;
}
} // namespace corvane
