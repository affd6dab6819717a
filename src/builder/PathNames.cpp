#include "builder/PathNames.h"

#include "core/NumberText.h"

#include <charconv>
#include <optional>
#include <string_view>
#include <utility>

namespace corvane {
static constexpr std::int32_t TaxiwayKind = 0;

/// The number below limit whose decimal text this is: no sign, no zeros in front.
static std::optional<std::size_t> NumberOfText(std::string_view text, std::size_t limit)
{
    std::size_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number >= limit)
        return std::nullopt;
    if (text.size() > 1 && text.front() == '0')
        return std::nullopt;
    return number;
}

PathNames::PathNames(std::vector<TaxiPath>& paths, std::int64_t taxiways)
    : m_paths(paths), m_nextPath(paths.size(), None), m_groups(static_cast<std::size_t>(taxiways))
{
    for (std::size_t i = 0; i < paths.size(); ++i) {
        if (paths[i].Kind != TaxiwayKind)
            continue;
        const auto path = static_cast<Index>(i);
        if (const auto number = NumberOfText(paths[i].Name, m_groups.size()))
            Join(*number, {path, path, false});
    }
}

void PathNames::Join(std::size_t taxiway, const Group& group)
{
    if (group.First == None)
        return;
    Group& joined = m_groups[taxiway];
    if (joined.First == None)
        joined.First = group.First;
    else
        m_nextPath[static_cast<std::size_t>(joined.Last)] = group.First;
    joined.Last = group.Last;
    joined.Renamed = joined.Renamed || group.Renamed;
}

void PathNames::WriteName(const Group& group, const std::string& name)
{
    for (Index path = group.First; path != None; path = m_nextPath[static_cast<std::size_t>(path)])
        m_paths[static_cast<std::size_t>(path)].Name = name;
}

void PathNames::NameNext(const std::string& name)
{
    const std::size_t taxiway = m_next++;
    Group group = std::exchange(m_groups[taxiway], Group{});
    const auto number = NumberOfText(name, m_groups.size());
    if (number && *number > taxiway) {
        group.Renamed = true;
        Join(*number, group);
    } else {
        WriteName(group, name);
    }
}

void PathNames::Finish()
{
    for (std::size_t taxiway = m_next; taxiway < m_groups.size(); ++taxiway) {
        if (m_groups[taxiway].Renamed)
            WriteName(m_groups[taxiway], NumberText(static_cast<std::int64_t>(taxiway)));
    }
}
} // namespace corvane
