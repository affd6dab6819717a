#pragma once

#include "core/Records.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
/// How the window of the area's airports lists them.
enum class AirportListMode : std::uint8_t {
    Name,       ///< "Seattle Tacoma Intl - KSEA"
    Identifier, ///< "KSEA - Seattle Tacoma Intl"
};

std::string AirportEntryText(const AirportRecord& airport, AirportListMode mode);
/// One entry for each airport, in table order.
std::vector<std::string> AirportEntries(std::span<const AirportRecord> airports, AirportListMode mode);
/// Every airport with this entry, in table order; there may be several.
std::vector<const AirportRecord*> FindAirports(std::span<const AirportRecord> airports, std::string_view entry,
                                               AirportListMode mode);
/// The lines that "Show Airport's Info" shows, joined by CR LF.
std::string AirportInfoText(const AirportRecord& airport);
} // namespace corvane
