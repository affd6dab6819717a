#pragma once

#include "area/EarlyEnds.h"
#include "core/ByteSource.h"
#include "core/RecordCodec.h"

#include <cstdint>
#include <functional>

namespace corvane {
/// Where a record lies in its file, in bytes from the start.
struct RecordExtent {
    std::uint64_t Offset = 0;
    std::uint64_t Size = 0;
};

/// Sees one airport's head (its texts are borrowed until the call returns) and where its record lies.
using AirportVisit = std::function<void(const AirportHead& head, const RecordExtent& extent)>;

/// Walks the records of an airports file from the first, head by head, without decoding the rest of them. The walk ends
/// at the end of the file and at the first record whose name or ICAO code is empty.
///
/// A record that the file's end cuts off is the last one: it is noted in earlyEnds, and visited with zeros for what it
/// lacks if it has a name and an ICAO code. An Error names the file where a record's NextPos does not lead forward; the
/// records before have been visited then.
Result<void> WalkAirports(ByteSource& airports, const AirportVisit& visit, EarlyEnds* earlyEnds = nullptr);

/// Decodes the whole record of a visited airport; what its extent lacks reads as blank.
Result<AirportRecord> ReadAirportAt(ByteSource& airports, const RecordExtent& extent);
} // namespace corvane
