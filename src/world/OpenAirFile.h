#pragma once

#include "core/Records.h"
#include "core/Result.h"
#include "world/ImportLog.h"
#include "world/RowFile.h"
#include "world/TextLines.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
/// What an OpenAir file's airspaces are to the database.
struct AirspacesLeftOut {
    std::map<std::string, std::int64_t> ByClass; ///< such that the scope has no look for; UTF-8 name of the class
    std::int64_t Unreadable = 0;
};

/// The kind of an airspace of a class and a type, both in capitals; type is empty where there is none. Nothing where
/// the scope has no look for it.
std::optional<std::string_view> OpenAirKind(std::string_view airspaceClass, std::string_view type);

/// What the file's first lines of comment say, its licence for one; UTF-8.
using OpenAirRemarks = std::vector<std::string>;

/// Reads the airspaces of an OpenAir file, in its original or its extended form, and hands them on in its order.
///
/// An airspace of which a command cannot be read, or that lacks a name, a limit or an outline, is left out and noted
/// with its first line. Errors: a file that cannot be read, or without any airspace.
Result<void> ReadOpenAirFile(TextLines& lines, ImportLog& log, AirspacesLeftOut& leftOut, OpenAirRemarks& remarks,
                             const std::function<void(const AirspaceRecord&)>& sink, const PartCallback& progress);
} // namespace corvane
