#pragma once

#include "core/Geodesy.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
/// The values of OpenAir commands. Each is nothing where the text is not of its form.

/// Takes a place off the front of a text, with a comma behind it: "48:12:30 N 016:30:00 E", with decimal seconds or
/// minutes; digits run together ("481230N 0163000E"); decimal degrees, with letters or signs.
std::optional<LatLon> TakePlace(std::string_view& text);
/// A text that is one place and nothing more.
std::optional<LatLon> OnePlace(std::string_view text);

/// The numbers of a text, which stand between blanks or commas.
std::optional<std::vector<double>> NumberList(std::string_view text);

/// A limit in feet: a flight level of up to four digits, feet or metres up to 999,999 ft with or without their
/// reference (heights above ground keep their number), 0 for the ground, 99999 for unlimited.
std::optional<std::int32_t> LimitFt(std::string_view text);

/// A frequency in MHz, with or without its unit, as the database keeps an airspace's: "124.355 Mhz"; empty for none.
std::optional<std::string> AirspaceFrequency(std::string_view text);
} // namespace corvane
