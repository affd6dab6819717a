#pragma once

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
/// An Error names the file where a head is cut off by its end, or where a record's NextPos does not lead forward to a
/// position inside the file or right behind it; the records before have been visited then.
Result<void> WalkAirports(ByteSource& airports, const AirportVisit& visit);

/// Decodes the whole record of a visited airport, which must fit its extent.
Result<AirportRecord> ReadAirportAt(ByteSource& airports, const RecordExtent& extent);
} // namespace corvane
