#pragma once

#include "core/Records.h"

#include <cstdint>
#include <string>
#include <vector>

namespace corvane {
/// Gives taxi paths their taxiways' names: for taxiway 0, 1, 2, ... in turn, every path of kind 0 whose Name is that
/// number's decimal text takes the taxiway's name. A taxiway whose name is a later taxiway's number is thus found
/// again. Takes time in proportion to paths and taxiways together, where asking every path for every taxiway would not.
class PathNames {
public:
    /// taxiways  how many there are to be named; paths of higher numbers keep their texts
    PathNames(std::vector<TaxiPath>& paths, std::int64_t taxiways);

    /// Names the paths of the next taxiway.
    void NameNext(const std::string& name);
    /// Writes the texts of paths that were passed on to a taxiway whose turn has not come; to be called at the end,
    /// early or not.
    void Finish();

private:
    using Index = std::int32_t;
    static constexpr Index None = -1;
    /// The paths whose Name is one taxiway's number, as a list through m_nextPath.
    struct Group {
        Index First = None;
        Index Last = None;
        bool Renamed = false; ///< some of the paths have it as a taxiway's name, not written to them yet
    };

    void Join(std::size_t taxiway, const Group& group);
    void WriteName(const Group& group, const std::string& name);

    std::vector<TaxiPath>& m_paths;
    std::vector<Index> m_nextPath;
    std::vector<Group> m_groups;
    std::size_t m_next = 0;
};
} // namespace corvane
