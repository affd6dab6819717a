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
    if (const auto nextPosAt = EncodeAirport(Airports, record, EndPosition(Airports)))
        m_airportNextPosAt.push_back(*nextPosAt);
    ++Counts.Airports;
    SpillWhenLarge();
}

void EncodedRecords::AddVor(const NavaidRecord& record)
{
    EncodeNavaid(Vors, record);
    ++Counts.Vors;
    SpillWhenLarge();
}

void EncodedRecords::AddNdb(const NavaidRecord& record)
{
    EncodeNavaid(Ndbs, record);
    ++Counts.Ndbs;
    SpillWhenLarge();
}

void EncodedRecords::AddAirspace(const AirspaceRecord& record)
{
    if (const auto nextPosAt = EncodeAirspace(Airspaces, record, EndPosition(Airspaces)))
        m_airspaceNextPosAt.push_back(*nextPosAt);
    ++Counts.Airspaces;
    SpillWhenLarge();
}

void EncodedRecords::SpillWhenLarge()
{
    if (m_spill && ByteCount() >= SpillBytes) {
        m_spill(*this);
        assert(ByteCount() == 0);
    }
}

void EncodedRecords::Clear() noexcept
{
    for (Bytes* bytes : {&Airports, &Vors, &Ndbs, &Airspaces})
        bytes->clear();
    m_airportNextPosAt.clear();
    m_airspaceNextPosAt.clear();
    Counts = {};
}

bool EncodedRecords::Move(Bytes& bytes, const std::vector<std::size_t>& nextPosAt, std::int64_t offset)
{
    if (offset + EndPosition(bytes) > std::numeric_limits<std::int32_t>::max())
        return false;
    for (const std::size_t at : nextPosAt) {
        assert(at + 4 <= bytes.size());
        const auto nextPos = static_cast<std::int32_t>(LittleEndian<4>(bytes.data() + at));
        assert(nextPos > static_cast<std::int64_t>(at) + 4); // it leads behind the record
        ByteWriter(bytes).PatchI32(at, static_cast<std::int32_t>(nextPos + offset));
    }
    return true;
}
} // namespace corvane
