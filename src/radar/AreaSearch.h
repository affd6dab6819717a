#pragma once

#include "area/AreaModel.h"
#include "core/Geodesy.h"
#include "session/PlayerTable.h"
#include "tracks/Track.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
struct FoundPlace {
    std::string Label; ///< "Airport KSEA - Seattle", 8-bit text
    LatLon Place;
    std::optional<MemberKey> Pilot; ///< nothing for a place of the map
};

/// Finds what an area holds, and its pilots, by a part of a name or code in any letter case.
class AreaSearch {
public:
    static constexpr std::size_t Limit = 50; ///< as many are found at most

    /// Copies what is searched: an area that is loaded later needs a new search.
    explicit AreaSearch(const AreaModel& area);

    /// Those whose code it is first, then those whose code or name begins so, then the others; each in table order, the
    /// pilots before the map. Nothing for an empty text. One pass over the entries.
    [[nodiscard]] std::vector<FoundPlace> Find(std::string_view part, std::span<const PlayerRecord> pilots) const;

private:
    struct Entry {
        std::string Code; ///< in small letters, as Name is
        std::string Name;
        FoundPlace Found;
    };

    void Add(std::string_view kind, std::string_view code, std::string_view name, LatLon place);

    std::vector<Entry> m_entries;
};
} // namespace corvane
