#include "builder/EncodedRecords.h"

#include "core/RecordCodec.h"

#include <cassert>
#include <limits>

namespace corvane {
static std::int64_t EndPosition(const Bytes& bytes)
{
    return static_cast<std::int64_t>(bytes.size()) + 1;
}

void EncodedRecords::AddAirport(const AirportRecord& record)
{
    EncodeAirport(Airports, record, EndPosition(Airports));
    ++Counts.Airports;
}

void EncodedRecords::AddVor(const NavaidRecord& record)
{
    EncodeNavaid(Vors, record);
    ++Counts.Vors;
}

void EncodedRecords::AddNdb(const NavaidRecord& record)
{
    EncodeNavaid(Ndbs, record);
    ++Counts.Ndbs;
}

void EncodedRecords::AddAirspace(const AirspaceRecord& record)
{
    EncodeAirspace(Airspaces, record, EndPosition(Airspaces));
    ++Counts.Airspaces;
}

bool MoveRecords(Bytes& bytes, std::int64_t offset)
{
    if (offset + EndPosition(bytes) > std::numeric_limits<std::int32_t>::max())
        return false;
    if (offset == 0)
        return true;
    std::size_t start = 0;
    while (start < bytes.size()) {
        ByteReader head(ByteSpan(bytes).subspan(start)); // both record types begin with two texts and NextPos
        head.ReadText16();
        head.ReadText16();
        const std::size_t nextPosAt = start + head.Position();
        const std::int32_t nextPos = head.ReadI32();
        assert(!head.Failed() && nextPos > static_cast<std::int64_t>(start));
        ByteWriter(bytes).PatchI32(nextPosAt, static_cast<std::int32_t>(nextPos + offset));
        start = static_cast<std::size_t>(nextPos) - 1;
    }
    return true;
}
} // namespace corvane
