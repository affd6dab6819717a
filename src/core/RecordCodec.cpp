#include "core/RecordCodec.h"

#include "core/FieldCodec.h"
#include "core/NumberText.h"

#include <cassert>
#include <limits>
#include <string>

namespace corvane {
template <class Record>
static Result<Record> Decode(ByteReader& reader, std::string_view fileName, std::uint64_t firstByte)
{
    const std::uint64_t start = firstByte + reader.Position();
    Record record;
    FieldReader fields(reader);
    VisitFields(record, fields);
    if (!fields.Why.empty())
        return Fail(std::string(fileName),
                    "the record at byte " + NumberText(static_cast<std::int64_t>(start)) + " " + fields.Why);
    return record;
}

/// Encodes a record that will stand at a 1-based position, and the position after it in its NextPos.
template <class Record>
static std::optional<std::size_t> EncodeAt(Bytes& out, const Record& record, std::int64_t position)
{
    const std::size_t start = out.size();
    FieldWriter fields(out);
    VisitFields(record, fields);
    assert(fields.NextPosAt() > start); // the record has one, behind its first text
    const std::int64_t next = position + static_cast<std::int64_t>(out.size() - start);
    if (next > std::numeric_limits<std::int32_t>::max()) {
        out.resize(start);
        return std::nullopt;
    }
    ByteWriter(out).PatchI32(fields.NextPosAt(), static_cast<std::int32_t>(next));
    return fields.NextPosAt();
}

void EncodeNavaid(Bytes& out, const NavaidRecord& record)
{
    FieldWriter fields(out);
    VisitFields(record, fields);
}

Result<NavaidRecord> DecodeNavaid(ByteReader& reader, std::string_view fileName)
{
    return Decode<NavaidRecord>(reader, fileName, 0);
}

LatLon SkipNavaid(ByteReader& reader) noexcept
{
    static_cast<void>(reader.ReadText16());
    static_cast<void>(reader.ReadText16());
    LatLon position;
    position.Lat = reader.ReadF64();
    position.Lon = reader.ReadF64();
    static_cast<void>(reader.ReadText16());
    static_cast<void>(reader.ReadU8());
    return position;
}

std::optional<std::size_t> EncodeAirport(Bytes& out, const AirportRecord& record, std::int64_t position)
{
    return EncodeAt(out, record, position);
}

Result<AirportRecord> DecodeAirport(ByteReader& reader, std::string_view fileName, std::uint64_t firstByte)
{
    return Decode<AirportRecord>(reader, fileName, firstByte);
}

std::optional<std::size_t> EncodeAirspace(Bytes& out, const AirspaceRecord& record, std::int64_t position)
{
    return EncodeAt(out, record, position);
}

Result<AirspaceRecord> DecodeAirspace(ByteReader& reader, std::string_view fileName)
{
    return Decode<AirspaceRecord>(reader, fileName, 0);
}

AirportHead ReadAirportHead(ByteSpan airportsFile, std::int64_t position) noexcept
{
    if (position < 1 || position > static_cast<std::int64_t>(airportsFile.size()))
        return {};
    ByteReader reader(airportsFile.subspan(static_cast<std::size_t>(position - 1)));
    AirportHead head;
    head.Name = reader.ReadText16();
    head.Icao = reader.ReadText16();
    head.NextPos = reader.ReadI32();
    head.Lat = reader.ReadF64();
    head.Lon = reader.ReadF64();
    head.CutOff = reader.Failed();
    return head;
}
} // namespace corvane
