#include "area/AreaLoad.h"
#include "area/DatabaseLists.h"

#include <array>

using namespace corvane;

// Six files behind their 16-bit lengths (airports, VORs, NDBs, airspaces, terrain, map), then both loads of the first
// airport and the first sector that the lists offer.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    ByteReader input(ByteSpan(data, size));
    SettingsRecord counts;
    counts.VorCount = input.ReadU8();
    counts.NdbCount = input.ReadU8();
    counts.AirspaceCount = input.ReadU8();
    std::array<std::unique_ptr<ByteSource>, 6> sources;
    for (auto& source : sources) {
        const std::size_t length = std::min<std::size_t>(input.ReadU16(), input.Left());
        source = std::make_unique<MemorySource>("file", input.ReadBytes(length));
    }
    auto& [airports, vors, ndbs, airspaces, terrain, map] = sources;
    const auto entries = ReadAirportList(*airports);
    auto allAirspaces = ReadAllAirspaces(*airspaces, counts.AirspaceCount);
    if (!allAirspaces)
        allAirspaces = std::vector<AirspaceRecord>();
    const std::vector<std::string> sectors = SectorNames(*allAirspaces);
    AreaFiles files{std::move(airports), std::move(vors), std::move(ndbs), std::move(terrain), std::move(map)};
    UnwatchedProgress progress;
    AreaModel area;
    std::vector<AirspaceRecord> copy = *allAirspaces;
    static_cast<void>(LoadSectorArea(files, counts, sectors.empty() ? "" : sectors.front(), copy, area, progress));
    static_cast<void>(LoadAirportArea(files, counts, entries && !entries->empty() ? entries->front() : "",
                                      *allAirspaces, area, progress));
    return 0;
}
