#include "area/DatabaseLists.h"

#include "area/AirportWalk.h"
#include "core/DatabaseFiles.h"
#include "core/NumberText.h"
#include "core/RecordCodec.h"

#include <algorithm>
#include <unordered_set>

namespace corvane {
std::string AirportListEntry(std::string_view icao, std::string_view name)
{
    std::string entry(icao);
    entry += " - ";
    entry += name;
    return entry;
}

Result<std::vector<std::string>> ReadAirportList(ByteSource& airports)
{
    std::vector<std::string> entries;
    const Result<void> walked = WalkAirports(airports, [&](const AirportHead& head, const RecordExtent&) {
        entries.push_back(AirportListEntry(head.Icao, head.Name));
    });
    if (!walked)
        return walked.error();
    return entries;
}

Result<std::vector<std::string>> ReadAirportList(const std::filesystem::path& appFolder)
{
    const auto airports = OpenFileSource(appFolder / AirportsFileName);
    if (!airports)
        return airports.error();
    return ReadAirportList(**airports);
}

/// The whole of a file whose number of records the settings give.
static Result<ByteSpan> CountedRecords(ByteSource& file, std::int32_t count)
{
    if (count < 0)
        return Fail(file.Name(), "should hold " + NumberText(count) + " records by the settings");
    return file.View(0, static_cast<std::size_t>(file.Size()));
}

static Error TooFewRecords(const ByteSource& file, std::int32_t found, std::int32_t count)
{
    return Fail(file.Name(), "ends after " + NumberText(found) + " of " + NumberText(count) + " records");
}

Result<std::vector<AirspaceRecord>> ReadAllAirspaces(ByteSource& airspaces, std::int32_t count)
{
    const Result<ByteSpan> bytes = CountedRecords(airspaces, count);
    if (!bytes)
        return bytes.error();
    ByteReader reader(*bytes);
    std::vector<AirspaceRecord> records;
    for (std::int32_t i = 0; i < count; ++i) {
        if (reader.Left() == 0)
            return TooFewRecords(airspaces, i, count);
        Result<AirspaceRecord> record = DecodeAirspace(reader, airspaces.Name());
        if (!record)
            return record.error();
        records.push_back(*std::move(record));
    }
    return records;
}

Result<std::vector<AirspaceRecord>> ReadAllAirspaces(const std::filesystem::path& appFolder, std::int32_t count)
{
    const auto airspaces = OpenFileSource(appFolder / AirspacesFileName);
    if (!airspaces)
        return airspaces.error();
    return ReadAllAirspaces(**airspaces, count);
}

std::vector<std::string> SectorNames(std::span<const AirspaceRecord> airspaces)
{
    std::vector<std::string> names;
    std::unordered_set<std::string_view> known;
    for (const AirspaceRecord& airspace : airspaces) {
        if (airspace.Kind == HighSectorKind && known.insert(airspace.ComName).second)
            names.push_back(airspace.ComName);
    }
    return names;
}

Result<std::vector<NavaidRecord>> ReadNavaids(ByteSource& navaids, std::int32_t count,
                                              const std::function<bool(double lat, double lon)>& inside)
{
    const Result<ByteSpan> bytes = CountedRecords(navaids, count);
    if (!bytes)
        return bytes.error();
    ByteReader reader(*bytes);
    std::vector<NavaidRecord> records;
    for (std::int32_t i = 0; i < count; ++i) {
        const ByteSpan rest = bytes->subspan(reader.Position());
        const LatLon position = SkipNavaid(reader);
        if (reader.Failed())
            return TooFewRecords(navaids, i, count);
        if (!inside(position.Lat, position.Lon))
            continue;
        ByteReader again(rest);
        Result<NavaidRecord> record = DecodeNavaid(again, navaids.Name());
        if (!record)
            return record.error();
        records.push_back(*std::move(record));
    }
    return records;
}
} // namespace corvane
