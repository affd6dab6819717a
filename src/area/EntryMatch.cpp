#include "area/EntryMatch.h"

#include "core/Text.h"

#include <array>

namespace corvane {
namespace {
/// The only entry of some kind.
struct OnlyOne {
    std::size_t Count = 0;
    std::size_t First = 0;

    void Add(std::size_t index) noexcept
    {
        if (Count++ == 0)
            First = index;
    }
};
} // namespace

EntryMatch MatchEntries(std::span<const std::string> entries, std::string_view typed)
{
    if (typed.empty())
        return {entries.size(), std::nullopt};
    const std::string wanted = ToLower(typed);
    const std::string code = wanted + " - ";
    OnlyOne whole;
    OnlyOne coded;
    OnlyOne holding;
    std::optional<std::size_t> meant;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const std::string entry = ToLower(entries[i]);
        if (entry.find(wanted) == std::string::npos)
            continue;
        holding.Add(i);
        if (entry == wanted)
            whole.Add(i);
        if (entry.starts_with(code))
            coded.Add(i);
        if (!meant && entries[i] == typed)
            meant = i;
    }
    for (const OnlyOne& found : std::array{whole, coded, holding})
        if (!meant && found.Count == 1)
            meant = found.First;
    return {holding.Count, meant};
}
} // namespace corvane
