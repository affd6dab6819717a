#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace corvane {
/// What a person may mean among a list's entries by what they typed.
struct EntryMatch {
    std::size_t Count = 0;            ///< entries that hold the text, in any letter case
    std::optional<std::size_t> Meant; ///< the entry that is taken for it, if it is clear which
};

/// Meant is the entry that the text is, letter by letter, else the only one that it is in other letters, else the only
/// one whose code it is ("KSEA" of "KSEA - Seattle"), else the only one that holds it. One pass over the entries.
EntryMatch MatchEntries(std::span<const std::string> entries, std::string_view typed);
} // namespace corvane
