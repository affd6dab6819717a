#pragma once

#include "core/Bytes.h"
#include "core/Geodesy.h"
#include "core/Records.h"
#include "core/Result.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace corvane {
/// The encoding of the database files: fields back to back, little-endian, texts and lists behind their lengths, no
/// header and no padding. Field order and examples: docs/formats.md.

/// Append one record to out. Texts beyond 65535 characters are cut off, which the format cannot hold.
void EncodeNavaid(Bytes& out, const NavaidRecord& record);
/// position is the 1-based file position at which the record will stand; the NextPos written is the position after it,
/// whatever record.NextPos holds. Returns where in out that NextPos stands, or nothing when it does not fit 32 bits
/// (then nothing is appended).
std::optional<std::size_t> EncodeAirport(Bytes& out, const AirportRecord& record, std::int64_t position);
std::optional<std::size_t> EncodeAirspace(Bytes& out, const AirspaceRecord& record, std::int64_t position);

/// Decode the record at the reader's position. Where the bytes end inside it, the rest of it reads as empty texts,
/// zeros and empty lists, and the reader has failed: a database that was cut off can still be used. An Error with
/// What = fileName and the byte position in Why where a list is not one that the encoding makes; list sizes are checked
/// against the bytes left.
Result<NavaidRecord> DecodeNavaid(ByteReader& reader, std::string_view fileName);
/// firstByte is where in the file the reader's bytes begin, for the message.
Result<AirportRecord> DecodeAirport(ByteReader& reader, std::string_view fileName, std::uint64_t firstByte = 0);
Result<AirspaceRecord> DecodeAirspace(ByteReader& reader, std::string_view fileName);

/// Reads past one navaid, keeping only its position: most of a file's navaids lie outside an area. reader fails where
/// the record is cut off.
LatLon SkipNavaid(ByteReader& reader) noexcept;

/// The fields by which the airports file is walked without decoding whole records, borrowed from the file's bytes.
struct AirportHead {
    std::string_view Name;
    std::string_view Icao;
    std::int32_t NextPos = 0;
    double Lat = 0;
    double Lon = 0;
    bool CutOff = false; ///< the bytes end inside the head: what they lack is empty and 0
};

/// Reads the head of the record at a 1-based position. What lies past the end of the file reads as empty and 0; at the
/// end itself there is no record, which reads as an empty head that is not cut off.
AirportHead ReadAirportHead(ByteSpan airportsFile, std::int64_t position) noexcept;
} // namespace corvane
