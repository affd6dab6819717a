#pragma once

#include "core/Result.h"
#include "tracks/HistoryPlay.h"

#include <functional>
#include <string>
#include <string_view>

namespace corvane {
/// One line of a history: {"Time": seconds, "Players": [PlayerRecord, ...]}; missing members are 0 or empty.
/// what names the line in errors.
Result<HistoryLine> HistoryLineFromJson(std::string_view text, std::string_view what);

/// Hands the lines of a history file to a taker, one after another; blank lines are passed over. Fails at the first
/// line that cannot be read or whose time is before the one before; those before it have been handed over.
Result<void> ReadHistoryFile(const std::string& fileName, const std::function<void(HistoryLine)>& take);
/// The same of a text that is held in memory.
Result<void> ReadHistory(std::string_view text, std::string_view what, const std::function<void(HistoryLine)>& take);
} // namespace corvane
