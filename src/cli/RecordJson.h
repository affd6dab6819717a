#pragma once

#include "cli/Json.h"
#include "core/Records.h"
#include "core/Result.h"
#include "core/Settings.h"
#include "session/PlayerTable.h"

#include <string_view>
#include <vector>

namespace corvane {
/// Records as JSON objects with the field names of the records; lists hold the elements in use, with their "...Count"
/// beside them. Texts become UTF-8.
Json ToJson(const SettingsRecord& settings);
Json ToJson(const NavaidRecord& navaid);
Json ToJson(const AirportRecord& airport);
Json ToJson(const AirspaceRecord& airspace);
Json ToJson(const PlayerRecord& player);

/// An 8-bit text as a JSON string.
Json TextJson(std::string_view text);

/// An array of player objects; missing members are 0 or empty. what names the source in errors.
Result<std::vector<PlayerRecord>> PlayersFromJson(const Json& array, std::string_view what);
/// The same from a text.
Result<std::vector<PlayerRecord>> PlayersFromText(std::string_view text, std::string_view what);
} // namespace corvane
