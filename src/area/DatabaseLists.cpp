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

Result<std::vector<std::string>> ReadAirportList(ByteSource& airports, EarlyEnds* earlyEnds)
{
    std::vector<std::string> entries;
    const Result<void> walked = WalkAirports(
        airports,
        [&](const AirportHead& head, const RecordExtent&) {
            entries.push_back(AirportListEntry(head.Icao, head.Name));
        },
        earlyEnds);
    if (!walked)
        return walked.error();
    return entries;
}

Result<std::vector<std::string>> ReadAirportList(const std::filesystem::path& appFolder, EarlyEnds* earlyEnds)
{
    const auto airports = OpenFileSource(appFolder / AirportsFileName);
    if (!airports)
        return airports.error();
    return ReadAirportList(**airports, earlyEnds);
}

static constexpr std::size_t SmallestNavaid = 3 * 2 + 2 * 8 + 1; // with empty texts

/// The whole of a file whose number of records the settings give.
static Result<ByteSpan> CountedRecords(ByteSource& file, std::int32_t count)
{
    if (count < 0)
        return Fail(file.Name(), "should hold " + NumberText(count) + " records by the settings");
    return file.View(0, static_cast<std::size_t>(file.Size()));
}

Result<std::vector<AirspaceRecord>> ReadAllAirspaces(ByteSource& airspaces, std::int32_t count, EarlyEnds* earlyEnds)
{
    const Result<ByteSpan> bytes = CountedRecords(airspaces, count);
    if (!bytes)
        return bytes.error();
    ByteReader reader(*bytes);
    std::vector<AirspaceRecord> records;
    for (std::int32_t i = 0; i < count && !reader.Failed() && reader.Left() > 0; ++i) {
        Result<AirspaceRecord> record = DecodeAirspace(reader, airspaces.Name());
        if (!record)
            return record.error();
        records.push_back(*std::move(record));
    }
    if (reader.Failed() || records.size() < static_cast<std::size_t>(count))
        NoteEarlyEnd(earlyEnds, airspaces);
    return records;
}

Result<std::vector<AirspaceRecord>> ReadAllAirspaces(const std::filesystem::path& appFolder, std::int32_t count,
                                                     EarlyEnds* earlyEnds)
{
    const auto airspaces = OpenFileSource(appFolder / AirspacesFileName);
    if (!airspaces)
        return airspaces.error();
    return ReadAllAirspaces(**airspaces, count, earlyEnds);
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

/// The records that the file lacks: they lie at 0, 0.
static void AddBlanks(std::vector<NavaidRecord>& records, std::size_t count, const std::function<bool(LatLon)>& inside)
{
    if (inside({0, 0}))
        records.resize(records.size() + count);
}

Result<std::vector<NavaidRecord>> ReadNavaids(ByteSource& navaids, std::int32_t count,
                                              const std::function<bool(LatLon)>& inside, EarlyEnds* earlyEnds)
{
    const Result<ByteSpan> bytes = CountedRecords(navaids, count);
    if (!bytes)
        return bytes.error();
    ByteReader reader(*bytes);
    std::vector<NavaidRecord> records;
    for (std::int32_t i = 0; i < count; ++i) {
        const ByteSpan rest = bytes->subspan(reader.Position());
        const LatLon position = SkipNavaid(reader);
        const bool cutOff = reader.Failed();
        if (!(cutOff && rest.empty()) && inside(position)) {
            ByteReader again(rest);
            records.push_back(*DecodeNavaid(again, navaids.Name()));
        }
        if (cutOff) {
            NoteEarlyEnd(earlyEnds, navaids);
            const std::int32_t blanks = count - i - (rest.empty() ? 0 : 1);
            AddBlanks(records, std::min(static_cast<std::size_t>(blanks), bytes->size() / SmallestNavaid), inside);
            break;
        }
    }
    return records;
}
} // namespace corvane
