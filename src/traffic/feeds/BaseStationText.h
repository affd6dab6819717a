#pragma once

#include "traffic/feeds/FeedReport.h"

#include <optional>
#include <string>
#include <string_view>

namespace corvane {
/// The port on which receivers offer BaseStation text.
inline constexpr std::uint16_t BaseStationPort = 30003;

/// Reads one line of BaseStation text, with or without its line end: a transmission (MSG, or MLAT for a computed
/// position) by its fields, whatever its type, or the news that an aircraft was given up (STA with RM or AD). Nothing
/// for any other record and where the address cannot be read. Fewer fields than 22 are as good as empty ones; more are
/// passed over. Dates and times are not read: producers' clocks are often wrong.
/// Layout: docs/formats/traffic-feeds.md
std::optional<FeedReport> DecodeBaseStationLine(std::string_view line);

/// The line, with CR LF, that tells in one MSG,3 all that a report holds. The caller's clock gives its times:
/// time  "2026/11/23,08:59:16.493"
std::string EncodeBaseStationLine(const FeedReport& report, std::string_view time);
} // namespace corvane
