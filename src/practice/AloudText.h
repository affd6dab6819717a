#pragma once

#include <string>
#include <string_view>

namespace corvane {
/// A pilot's line as it is spoken on the radio: callsigns, runways and taxiways spelled ("November three two Delta
/// Bravo", "one six right"), headings, speeds and codes digit by digit with "niner", altitudes in thousands and
/// hundreds. Words stay as they are. Windows-1252 in and out; control characters are left out. The work is in
/// proportion to the text.
///
/// speaker  the pilot's name, which it says of itself
std::string AloudText(std::string_view line, std::string_view speaker);
} // namespace corvane
