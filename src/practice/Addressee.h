#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace corvane {
/// Who a chat line speaks to.
struct Addressee {
    bool Ambiguous = false; ///< several callsigns may be meant
    std::size_t Index = 0;  ///< of the callsign; of the first of them when ambiguous
    std::string Rest;       ///< the line's words without the callsign, in capitals
};

/// Finds the callsign that a line names. A whole callsign may stand anywhere, in one word or several (Lantern 412,
/// N-348-UC, November three four eight). At the line's beginning it may be a part: the first three characters or more,
/// the last with a figure among them (8UC, 412), the first and the last three (N8UC), with or without the type of
/// aircraft before it; or the whole with one character wrong, too many, too few or two exchanged. Nothing when it names
/// none.
std::optional<Addressee> FindAddressee(std::string_view line, std::span<const std::string> callsigns);
} // namespace corvane
